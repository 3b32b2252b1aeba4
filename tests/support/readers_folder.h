#pragma once

#include <fpdfview.h>

#include <string>

// Files for other readers to look at. With QUILLMERE_READERS_FOLDER set, scripts/check-readers
// compares what is left there.
namespace quillmere::test {

void keepForReaders(const std::string& name, const std::string& bytes);

// The document as the program writes it to a file; empty when that failed.
std::string writtenCopy(FPDF_DOCUMENT document);

// Rows of red, green and blue from the top left corner, at 144 DPI.
struct PagePicture {
  int width = 0;
  int height = 0;
  std::string pixels;
};

// What PDFium draws of the page.
PagePicture pictureOf(FPDF_PAGE page);

// A binary PPM file.
std::string ppmOf(const PagePicture& picture);
std::string ppmOf(FPDF_PAGE page);

}  // namespace quillmere::test
