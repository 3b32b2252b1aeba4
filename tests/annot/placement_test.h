#pragma once

#include <string>
#include <vector>

#include "annot/annot_test.h"
#include "annot/placements.h"
#include "annot/write_placements.h"
#include "support/png_file.h"

namespace quillmere::test {

// An annotation of a page, as any reader finds it.
struct FoundAnnotation {
  int subtype = 0;
  int flags = 0;
  FS_RECTF rect{};
  std::u16string record;
  int objectType = 0;  // of its first object
};

// Placements in documents with pages of 600 by 800 points, shown as AnnotTest says, with the stamp
// panel open and 180 pixels wide.
class PlacementTest : public AnnotTest {
 protected:
  PlacementTest();

  // A picture of four quarters: red and green above blue and white.
  static platform::SharedPicture quarters(int side = 8);
  static Placement stampOf(const platform::SharedPicture& picture, double x, double y, double width,
                           double height, double rotation = 0);
  static Placement textOf(const std::u16string& text, double x, double y, double width = 100,
                          double height = 20);

  // Opens a document of plain pages and loads its placements.
  FPDF_DOCUMENT openPlain(int pages = 1, const PdfPage& like = plainPage());
  static PdfPage plainPage();
  // Adds a placement to a page of the owner, as pending.
  static Placement& add(std::int32_t page, Placement placement);
  // Writes everything that is pending and loads the placements again.
  static void writeAll(FPDF_DOCUMENT document);

  static std::vector<FoundAnnotation> annotationsOf(FPDF_DOCUMENT document, int page);
  static Placement& placement(std::int32_t page, std::size_t index);
};

// A stamp annotation with this record and further entries.
std::string stampAnnotation(const std::u16string& record, const std::string& entries = "");

}  // namespace quillmere::test
