#pragma once

#include <string>

// What a file has besides its bytes and its name. Paths may have any length.
namespace quillmere::platform {

// Gives a file the attributes (except read-only), creation time and access list of another one, as
// far as the system allows. False when some of it could not be copied.
bool copyFileProperties(const std::u16string& from, const std::u16string& to);

// Copies the alternate streams of a file, as far as the file system has any. False when some of
// them could not be copied.
bool copyAlternateStreams(const std::u16string& from, const std::u16string& to);

}  // namespace quillmere::platform
