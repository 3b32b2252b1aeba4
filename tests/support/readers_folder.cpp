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

platform::Picture pictureOf(FPDF_PAGE page) {
  platform::Picture picture;
  picture.width = static_cast<int>(2 * FPDF_GetPageWidthF(page) + 0.5);
  picture.height = static_cast<int>(2 * FPDF_GetPageHeightF(page) + 0.5);
  picture.pixels.resize(static_cast<std::size_t>(picture.width) *
                        static_cast<std::size_t>(picture.height));
  const FPDF_BITMAP bitmap = FPDFBitmap_CreateEx(picture.width, picture.height, FPDFBitmap_BGRx,
                                                 picture.pixels.data(), 4 * picture.width);
  FPDFBitmap_FillRect(bitmap, 0, 0, picture.width, picture.height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap, page, 0, 0, picture.width, picture.height, 0, FPDF_ANNOT);
  FPDFBitmap_Destroy(bitmap);
  return picture;
}

std::string ppmOf(const platform::Picture& picture) {
  std::string bytes =
      "P6\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) + "\n255\n";
  for (const std::uint32_t pixel : picture.pixels) {
    for (const int shift : {16, 8, 0}) bytes += static_cast<char>(pixel >> shift & 0xFF);
  }
  return bytes;
}

std::string ppmOf(FPDF_PAGE page) {
  return ppmOf(pictureOf(page));
}

}  // namespace quillmere::test
