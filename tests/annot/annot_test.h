#pragma once

#include <fpdf_annot.h>

#include <cstdint>
#include <string>
#include <vector>

#include "view/view_test.h"

namespace quillmere::test {

struct ClientPoint {
  int x = 0;
  int y = 0;
};

// A markup as any reader finds it in the document.
struct FoundMark {
  int subtype = 0;
  std::uint32_t color = 0;  // 0xRRGGBB, the fill of its appearance
  int alpha = 0;
  int flags = 0;
  FS_RECTF rect{};
  std::vector<FS_QUADPOINTSF> quads;
  std::u16string note;  // as stored
};

// Marks in documents with pages of 600 by 800 points, shown at 100% with the page's top left corner
// 40 and 20 pixels from the pane's.
class AnnotTest : public ViewTest {
 protected:
  // A page with a line of 24 points at 72 points from the left for each of `lines`; the first
  // baseline is at 700, each further one 50 lower.
  static PdfPage linedPage(const std::vector<std::string>& lines);
  // Opens a document of `pages` such pages with these lines.
  void openLines(const std::vector<std::string>& lines, int pages = 2);
  void openPages(const std::vector<PdfPage>& pages);

  // Selects the characters of the pane's page from one to the other.
  static void selectCharacters(std::int32_t anchor, std::int32_t end, int inPane = 0);
  // Selects a piece of the pane's text, which must occur.
  static void selectText(const std::u16string& text, int inPane = 0);

  // The highlights and strikethroughs of a page, read through a handle of its own.
  static std::vector<FoundMark> marksOn(FPDF_DOCUMENT document, int page);
  static int annotationsOn(FPDF_DOCUMENT document, int page);
  // All marks of the document.
  static int countMarks(FPDF_DOCUMENT document);
  // The document as a save would write it.
  static std::string savedCopy(FPDF_DOCUMENT document);

  // The client pixel that shows a point of the pane's page, given in page points.
  static ClientPoint placeOf(double x, double y, int inPane = 0);
  // A point on the mark.
  static ClientPoint middleOf(const FoundMark& mark, int inPane = 0);
  // The colour at a client place in the bitmap of the pane's page: 0xRRGGBB.
  static std::uint32_t pictureAt(const ClientPoint& place, int inPane = 0);

  // Makes the markup at a place the one that commands act on, as a right click does.
  static void pick(const ClientPoint& place, int inPane = 0);
};

// A highlight's dictionary. `quads` and `entries` are PDF text.
std::string highlightAnnotation(const std::string& quads, const std::string& entries = "");
// One whose quad is an upright box.
std::string highlightBox(int left, int bottom, int right, int top, const std::string& entries = "");

}  // namespace quillmere::test
