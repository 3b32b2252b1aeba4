// Times collecting a document's markups, and making their summary, against the PDFium calls that
// this needs at least.
//
// Usage: bench_marks DOCUMENT

#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <quillmere_engine.h>

#include <cstdint>
#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/markup_summary.h"
#include "annot/summary_text.h"
#include "reader_window.h"
#include "samples.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "view/text_rects.h"

namespace quillmere::bench {
namespace {

constexpr int kMarks = 1000;
constexpr int kMarkedCharacters = 40;
constexpr int kRepetitions = 6;
constexpr int kSummaryLinesOnAPage = 50;
constexpr const char16_t* kNote = u"A note of some words on what is marked here.";

FS_QUADPOINTSF quadOf(const PageBox& box) {
  const auto left = static_cast<float>(box.left);
  const auto top = static_cast<float>(box.top);
  const auto right = static_cast<float>(box.right);
  const auto bottom = static_cast<float>(box.bottom);
  return {left, top, right, top, left, bottom, right, bottom};
}

void addMark(FPDF_DOCUMENT document, int index) {
  const PageHandle page(FPDF_LoadPage(document, index));
  const TextPageHandle text(FPDFText_LoadPage(page.get()));
  const std::vector<PageBox> boxes = textRects(text.get(), 0, kMarkedCharacters);
  if (boxes.empty()) return;
  const AnnotationHandle mark(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_HIGHLIGHT));
  FPDFAnnot_SetColor(mark.get(), FPDFANNOT_COLORTYPE_Color, 255, 235, 60, 255);
  for (const PageBox& box : boxes) {
    const FS_QUADPOINTSF quad = quadOf(box);
    FPDFAnnot_AppendAttachmentPoints(mark.get(), &quad);
  }
  FPDFAnnot_SetStringValue(mark.get(), "Contents", reinterpret_cast<FPDF_WIDESTRING>(kNote));
  QuillmereEngine_WriteMarkAppearance(mark.get(), 0);
}

// Over all of the document, as many on each page.
std::vector<int> addMarks(FPDF_DOCUMENT document, int pageCount) {
  std::vector<int> pages;
  for (int i = 0; i < kMarks; ++i) {
    const int page = static_cast<int>(static_cast<std::int64_t>(i) * pageCount / kMarks);
    addMark(document, page);
    if (pages.empty() || pages.back() != page) pages.push_back(page);
  }
  markEdited(session.active);
  return pages;
}

void readText(FPDF_TEXTPAGE text, const FS_QUADPOINTSF& quad) {
  const double left = static_cast<double>(quad.x1);
  const double top = static_cast<double>(quad.y1);
  const double right = static_cast<double>(quad.x4);
  const double bottom = static_cast<double>(quad.y4);
  const int size = FPDFText_GetBoundedText(text, left, top, right, bottom, nullptr, 0);
  std::vector<unsigned short> units(static_cast<std::size_t>(size) + 1);
  FPDFText_GetBoundedText(text, left, top, right, bottom, units.data(), size + 1);
}

void readMark(FPDF_ANNOTATION mark, FPDF_TEXTPAGE text) {
  FPDFAnnot_GetSubtype(mark);
  unsigned color[4] = {};
  FPDFPageObj_GetFillColor(FPDFAnnot_GetObject(mark, 0), &color[0], &color[1], &color[2],
                           &color[3]);
  FS_RECTF rect{};
  FPDFAnnot_GetRect(mark, &rect);
  const std::size_t quads = FPDFAnnot_CountAttachmentPoints(mark);
  for (std::size_t i = 0; i < quads; ++i) {
    FS_QUADPOINTSF quad{};
    FPDFAnnot_GetAttachmentPoints(mark, i, &quad);
    readText(text, quad);
  }
  const unsigned long size = FPDFAnnot_GetStringValue(mark, "Contents", nullptr, 0);
  std::vector<FPDF_WCHAR> note(size / sizeof(FPDF_WCHAR));
  FPDFAnnot_GetStringValue(mark, "Contents", note.data(), size);
}

void readPlain(FPDF_DOCUMENT document, const std::vector<int>& pages) {
  for (const int index : pages) {
    const PageHandle page(FPDF_LoadPage(document, index));
    const TextPageHandle text(FPDFText_LoadPage(page.get()));
    const int count = FPDFPage_GetAnnotCount(page.get());
    for (int i = 0; i < count; ++i) {
      const AnnotationHandle annotation(FPDFPage_GetAnnot(page.get(), i));
      if (FPDFAnnot_GetSubtype(annotation.get()) == FPDF_ANNOT_HIGHLIGHT) {
        readMark(annotation.get(), text.get());
      }
    }
  }
}

// The lines of the report, broken as the reader breaks them.
std::vector<std::u16string> summaryLines(const std::vector<MarkupSummaryItem>& items) {
  std::vector<std::u16string> lines;
  for (const MarkupSummaryItem& item : items) {
    lines.emplace_back(u"Page 1");
    for (const std::u16string& text :
         {u"Highlight: \"" + item.text + u"\"", u"Note: " + item.note}) {
      for (const std::u16string& line : WrapSummaryText(text, false, 10, 476)) {
        lines.push_back(line);
      }
    }
  }
  return lines;
}

void writePlain(const std::vector<std::u16string>& lines) {
  const DocumentHandle document(FPDF_CreateNewDocument());
  PageHandle page;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i % kSummaryLinesOnAPage == 0) {
      if (page) FPDFPage_GenerateContent(page.get());
      page.reset(FPDFPage_New(document.get(), FPDF_GetPageCount(document.get()), 612, 792));
    }
    const FPDF_PAGEOBJECT object = FPDFPageObj_NewTextObj(document.get(), "Helvetica", 10);
    FPDFText_SetText(object, reinterpret_cast<FPDF_WIDESTRING>(lines[i].c_str()));
    FPDFPageObj_SetFillColor(object, 70, 70, 70, 255);
    FPDFPageObj_Transform(object, 1, 0, 0, 1, 68, 700 - 13.4 * (i % kSummaryLinesOnAPage));
    FPDFPage_InsertObject(page.get(), object);
  }
  if (page) FPDFPage_GenerateContent(page.get());
}

// The two take turns at coming first.
template <typename Ours, typename Theirs>
void compare(const std::string& row, const std::string& name, Ours ours, Theirs theirs) {
  for (int i = 0; i < kRepetitions; ++i) {
    double theirTime = i % 2 != 0 ? timed(theirs) : 0;
    const double ourTime = timed(ours);
    if (i % 2 == 0) theirTime = timed(theirs);
    reportPair(row, name, ourTime, theirTime);
  }
}

bool measure(const std::string& path) {
  if (!openAndPaint(path)) return false;
  const FPDF_DOCUMENT document = session.active.document.get();
  const std::vector<int> pages = addMarks(document, session.active.pageCount);
  const std::string name = documentName(path);

  std::vector<MarkupEntry> list;
  compare(
      "collect-marks", name, [&] { CollectMarkups(document, list); },
      [&] { readPlain(document, pages); });
  const std::vector<std::u16string> lines = summaryLines(collectSummaryItems(document));
  compare(
      "mark-summary", name, [&] { buildMarkupSummary(collectSummaryItems(document), u"a.pdf"); },
      [&] {
        readPlain(document, pages);
        writePlain(lines);
      });
  return list.size() > kMarks / 2;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return argc == 2 ? runInReader([&] { return measure(argv[1]); }) : 2;
}
