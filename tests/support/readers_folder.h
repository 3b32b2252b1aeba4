#pragma once

#include <fpdfview.h>

#include <string>

#include "platform/pictures.h"

// Files for other readers to look at. With QUILLMERE_READERS_FOLDER set, scripts/check-readers
// compares what is left there.
namespace quillmere::test {

void keepForReaders(const std::string& name, const std::string& bytes);

// The document as the program writes it to a file; empty when that failed.
std::string writtenCopy(FPDF_DOCUMENT document);

// What PDFium draws of the page at 144 DPI.
platform::Picture pictureOf(FPDF_PAGE page);

// A binary PPM file.
std::string ppmOf(const platform::Picture& picture);
std::string ppmOf(FPDF_PAGE page);

}  // namespace quillmere::test
