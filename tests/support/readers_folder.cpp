#include "support/readers_folder.h"

#include <fpdf_annot.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/stand_in.h"
#include "store/write_document_copy.h"

namespace quillmere::test {

void keepForReaders(const std::string& name, const std::string& bytes) {
  const char* folder = std::getenv("QUILLMERE_READERS_FOLDER");
  if (folder == nullptr) return;
  std::ofstream file(std::filesystem::path(folder) / name, std::ios::binary);
  file << bytes;
  EXPECT_TRUE(file.good()) << name;
}

std::string writtenCopy(FPDF_DOCUMENT document) {
  platform::putFolder(u"C:\\out");
  if (!WriteDocumentCopy(document, u"C:\\out\\file.pdf")) return {};
  return *platform::fileBytes(u"C:\\out\\file.pdf");
}

PagePicture pictureOf(FPDF_PAGE page) {
  PagePicture picture;
  picture.width = static_cast<int>(2 * FPDF_GetPageWidthF(page) + 0.5);
  picture.height = static_cast<int>(2 * FPDF_GetPageHeightF(page) + 0.5);
  const FPDF_BITMAP bitmap = FPDFBitmap_Create(picture.width, picture.height, 0);
  FPDFBitmap_FillRect(bitmap, 0, 0, picture.width, picture.height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap, page, 0, 0, picture.width, picture.height, 0, FPDF_ANNOT);
  const auto* pixels = static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
  const int stride = FPDFBitmap_GetStride(bitmap);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const unsigned char* pixel = pixels + y * stride + 4 * x;
      for (const int channel : {2, 1, 0}) picture.pixels += static_cast<char>(pixel[channel]);
    }
  }
  FPDFBitmap_Destroy(bitmap);
  return picture;
}

std::string ppmOf(const PagePicture& picture) {
  return "P6\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) + "\n255\n" +
         picture.pixels;
}

std::string ppmOf(FPDF_PAGE page) {
  return ppmOf(pictureOf(page));
}

}  // namespace quillmere::test
