#include "support/page_edit_test.h"

#include <fpdf_annot.h>
#include <fpdf_text.h>

#include <algorithm>

#include "annot/placements.h"
#include "documents/page_operations.h"
#include "support/session_invariants.h"
#include "view/navigation.h"

namespace quillmere::test {

PageEditTest::~PageEditTest() {
  EXPECT_EQ(brokenInvariant(), "");
}

void PageEditTest::deletePage() {
  platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
  DeleteCurrentPage();
}

void PageEditTest::deletePage(std::int32_t page) {
  goToPage(session.activePane, page, false);
  deletePage();
}

void PageEditTest::insert(bool below, const std::string& bytes) {
  platform::standIn().openDialogAnswers = {{putPdf(u"source.pdf", bytes)}};
  InsertDocument(below);
}

std::string PageEditTest::textOf(FPDF_DOCUMENT document, int page) {
  const PageHandle handle(FPDF_LoadPage(document, page));
  const TextPageHandle text(FPDFText_LoadPage(handle.get()));
  std::vector<unsigned short> units(64);
  const int count = FPDFText_GetText(text.get(), 0, 60, units.data());
  return std::string(units.begin(), units.begin() + std::max(count - 1, 0));
}

std::vector<std::string> PageEditTest::textsOf(FPDF_DOCUMENT document) {
  std::vector<std::string> texts;
  for (int i = 0; i < FPDF_GetPageCount(document); ++i) texts.push_back(textOf(document, i));
  return texts;
}

int PageEditTest::annotationsOn(FPDF_DOCUMENT document, int page) {
  const PageHandle handle(FPDF_LoadPage(document, page));
  return FPDFPage_GetAnnotCount(handle.get());
}

std::string PageEditTest::stampAnnotation() {
  return "<< /Type /Annot /Subtype /Stamp /Rect [100 100 200 200] /QMR (QMR1;S;0;100;100;100;100;) "
         "/AP << /N 99 0 R >> >>";
}

std::string PageEditTest::highlight() {
  return "<< /Type /Annot /Subtype /Highlight /Rect [100 600 200 620] /C [1 1 0] "
         "/QuadPoints [100 620 200 620 100 600 200 600] >>";
}

void PageEditTest::addText(std::int32_t page, const std::u16string& text) {
  readWaitingPlacements();
  Placement placement;
  placement.kind = PlacementKind::TextDrop;
  placement.text = text;
  placement.x = 100;
  placement.y = 100;
  placement.width = 100;
  placement.height = 20;
  session.placements[page].push_back(placement);
}

std::vector<std::int32_t> PageEditTest::pagesWithPlacements() {
  std::vector<std::int32_t> pages;
  for (const auto& [page, list] : session.placements) pages.push_back(page);
  return pages;
}

}  // namespace quillmere::test
