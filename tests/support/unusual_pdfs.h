#pragma once

#include <string>

// Sound documents whose files are put together in uncommon ways. Unless said otherwise they have
// two pages with "Page 1" and "Page 2", and the catalog is object 1.
namespace quillmere::test {

// The objects that are no streams lie packed in one, found by a cross-reference stream.
std::string packedPdf();

// The same objects are packed, but found by a stream beside a table that knows the others only.
std::string hybridPdf();

// The first page's objects and their table come first, as for reading over a slow line.
std::string linearisedPdf();

// The page tree names one page twice, both times "Page 1".
std::string sharedPagePdf();

// The page tree names one node with two pages twice: "Page 1", "Page 2", "Page 1", "Page 2".
std::string sharedNodePdf();

// One page with "Page 1" and the field of a signature.
std::string signedPdf();

// One page of 600 by 800 points with "Quill and page"; the empty password opens it.
std::string aes128Pdf();
std::string aes256Pdf();

}  // namespace quillmere::test
