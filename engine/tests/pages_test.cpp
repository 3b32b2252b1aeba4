// Opening, text, drawing and saving; the page tree and what is found by it.

#include <stdio.h>
#include <string.h>

#include <numeric>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "fpdf_doc.h"
#include "fpdf_edit.h"
#include "fpdf_ppo.h"
#include "fpdf_save.h"
#include "fpdf_text.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

std::vector<int> PagesWith(const std::vector<FPDF_ANNOTATION_SUBTYPE>& subtypes,
                           const std::string& pdf) {
  ScopedFPDFDocument document = Load(pdf);
  Check(document != nullptr, "opening a document with annotations");
  const int count = FindPages(document.get(), subtypes, nullptr, 0);
  std::vector<int> pages(count, -1);
  Check(FindPages(document.get(), subtypes, pages.data(), count) == count,
        "the same number of pages twice");
  return pages;
}

std::vector<int> StampPages(const std::string& pdf) {
  return PagesWith({FPDF_ANNOT_STAMP}, pdf);
}

// Each node lists the next level twice: without a page they double for every level.
std::string DoubledNodes(const std::string& count) {
  std::vector<std::string> objects = {kCatalog};
  for (int i = 2; i < 62; ++i) {
    const std::string next = std::to_string(i + 1) + " 0 R ";
    objects.push_back("<< /Type /Pages " + count + " /Kids [" + next + next + "] >>");
  }
  objects.push_back("<< /Type /Pages /Count 0 /Kids [] >>");
  return MakePdf(objects);
}

// A page with 10,000 links and a stamp that a tree of twenty levels of doubled nodes names a
// million times.
std::string DoubledPage() {
  std::vector<std::string> objects = {kCatalog};
  for (int i = 2; i < 22; ++i) {
    const std::string next = std::to_string(i + 1) + " 0 R ";
    objects.push_back("<< /Type /Pages /Count 1048574 /Kids [" + next + next + "] >>");
  }
  std::string annotations;
  for (int i = 0; i < 10000; ++i) {
    annotations += "23 0 R ";
  }
  objects.push_back(Page("/Annots [" + annotations + kStamp + "]"));
  objects.push_back("<< /Subtype /Link >>");
  return MakePdf(objects);
}

std::vector<int> FirstIndexes(int count) {
  std::vector<int> indexes(static_cast<size_t>(count));
  std::iota(indexes.begin(), indexes.end(), 0);
  return indexes;
}

// 200 pages, each with an annotation of its own.
std::string ManyPages() {
  std::vector<std::string> objects = {kCatalog, ""};
  std::string kids;
  for (int i = 0; i < 200; ++i) {
    objects.push_back(Page(std::string("/Annots [") + kNote + "]"));
    kids += std::to_string(objects.size()) + " 0 R ";
  }
  objects[1] = "<< /Type /Pages /Count 200 /Kids [" + kids + "] >>";
  return MakePackedPdf(objects);
}

// The target of each bookmark of |document|, in order.
std::vector<int> BookmarkPages(FPDF_DOCUMENT document) {
  std::vector<int> pages;
  for (FPDF_BOOKMARK next = FPDFBookmark_GetFirstChild(document, nullptr); next;
       next = FPDFBookmark_GetNextSibling(document, next)) {
    pages.push_back(
        QuillmereEngine_PageIndexOfDest(document, FPDFBookmark_GetDest(document, next)));
  }
  return pages;
}

// A document of four pages, two of them below a node of their own, and a bookmark for each
// of |targets|.
std::string PdfWithBookmarks(const std::vector<std::string>& targets) {
  std::vector<std::string> objects = {
      "<< /Type /Catalog /Pages 2 0 R /Outlines 8 0 R >>",
      "<< /Type /Pages /Kids [3 0 R 4 0 R 7 0 R] /Count 4 >>",
      Page(""),
      "<< /Type /Pages /Parent 2 0 R /Kids [5 0 R 6 0 R] /Count 2 >>",
      Page(""),
      Page(""),
      Page(""),
      "<< /Type /Outlines /First 9 0 R >>"};
  for (const std::string& target : targets) {
    const std::string next = std::to_string(objects.size() + 2) + " 0 R";
    objects.push_back("<< /Title (A) /Parent 8 0 R /Dest [" + target + " /Fit] " +
                      (objects.size() + 1 < 8 + targets.size() ? "/Next " + next : "") + " >>");
  }
  return MakePdf(objects);
}

}  // namespace

void TestPageAndText(const std::string& folder) {
  const std::string pdf = MakePdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
       Page("/Contents 4 0 R /Resources << /Font << /F << /Type /Font /Subtype /Type1 "
            "/BaseFont /Helvetica >> >> >>"),
       Stream("BT /F 24 Tf 10 40 Td (Tide tables) Tj ET")});
  ScopedFPDFDocument document = Load(pdf);
  Check(FPDF_GetPageCount(document.get()) == 1, "one page");
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  ScopedFPDFTextPage text(FPDFText_LoadPage(page.get()));
  unsigned short buffer[32] = {};
  FPDFText_GetText(text.get(), 0, 31, buffer);
  std::string ascii;
  for (int i = 0; buffer[i]; ++i) {
    ascii += static_cast<char>(buffer[i]);
  }
  Check(ascii == "Tide tables", "text of the page, got: " + ascii);

  ScopedFPDFBitmap bitmap(FPDFBitmap_Create(200, 100, 0));
  FPDFBitmap_FillRect(bitmap.get(), 0, 0, 200, 100, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap.get(), page.get(), 0, 0, 200, 100, 0, 0);
  const unsigned char* bytes = static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap.get()));
  int dark = 0;
  for (int i = 0; i < 200 * 100; ++i) {
    dark += bytes[4 * i] < 128;
  }
  Check(dark > 200 && dark < 5000, "drawn letters, dark pixels: " + std::to_string(dark));

  struct File : FPDF_FILEWRITE {
    FILE* file;
  } writer = {};
  writer.version = 1;
  const std::string path = folder + "/saved.pdf";
  writer.file = fopen(path.c_str(), "wb");
  writer.WriteBlock = [](FPDF_FILEWRITE* self, const void* data, unsigned long size) {
    return fwrite(data, 1, size, static_cast<File*>(self)->file) == size ? 1 : 0;
  };
  Check(FPDF_SaveAsCopy(document.get(), &writer, FPDF_NO_INCREMENTAL), "saving");
  fclose(writer.file);
  ScopedFPDFDocument saved(FPDF_LoadDocument(path.c_str(), nullptr));
  Check(FPDF_GetPageCount(saved.get()) == 1, "one page in the saved copy");
#ifdef _WIN32
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  SelectObject(memory, CreateCompatibleBitmap(screen, 200, 100));
  Check(FPDF_RenderPage(memory, page.get(), 0, 0, 200, 100, 0, 0), "drawing to a device context");
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
#endif
}

void TestStamps() {
  const std::string stamp = kStamp;
  const std::string note = kNote;
  // Pages: a stamp in place, none, an indirect stamp behind a note in an
  // indirect array, entries that are no annotations, a subtype given indirectly.
  Check(StampPages(MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R 6 0 R 7 0 R] /Count 5 >>",
                            Page("/Annots [" + stamp + "]"), Page(""), Page("/Annots 8 0 R"),
                            Page("/Annots [null 17 99 0 R (Stamp) /Stamp []]"),
                            Page("/Annots [<< /Subtype 10 0 R >>]"), "[" + note + " 9 0 R]", stamp,
                            "/Stamp"})) == std::vector<int>({0, 2, 4}),
        "stamps in place, indirect and absent");
  Check(FindPages(nullptr, {FPDF_ANNOT_STAMP}, nullptr, 0) == 0, "no document, no stamps");

  const std::string two = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>",
                                   Page("/Annots [" + stamp + "]"), Page("/Annots [" + stamp + "]")});
  ScopedFPDFDocument document = Load(two);
  int pages[2] = {-1, -1};
  Check(FindPages(document.get(), {FPDF_ANNOT_STAMP}, pages, 1) == 2 && pages[0] == 0 && pages[1] == -1,
        "a full array is not written past its end");
}

// A page that is loaded for its annotations alone tells the same of them as any.
void TestPagesForAnnotations() {
  const std::string record = "<< /Type /Annot /Subtype /Stamp /Rect [10 10 50 50] /QMR (kept) >>";
  const std::string pdf = MakePdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R 9 0 R] /Count 3 >>",
       Page("/Contents 5 0 R /Annots [null " + std::string(kNote) + " 6 0 R]"), Page(""),
       Stream("1 0 0 rg 0 0 50 50 re f"), record});
  ScopedFPDFDocument document = Load(pdf);
  const auto load_for_annots = [&](int index) {
    return ScopedFPDFPage(QuillmereEngine_LoadPageForAnnots(document.get(), index));
  };
  for (int index = -1; index <= 3; ++index) {
    ScopedFPDFPage whole(FPDF_LoadPage(document.get(), index));
    ScopedFPDFPage page = load_for_annots(index);
    Check(!page == !whole, "pages are loaded for their annotations where others are");
    Check(FPDFPage_GetAnnotCount(page.get()) == FPDFPage_GetAnnotCount(whole.get()),
          "a page for its annotations counts them all");
  }
  ScopedFPDFPage page = load_for_annots(0);
  Check(FPDFPage_CountObjects(page.get()) == 0, "its content is not parsed");
  Check(!ScopedFPDFAnnotation(FPDFPage_GetAnnot(page.get(), 0)), "an entry that is no annotation");
  ScopedFPDFAnnotation stamp(FPDFPage_GetAnnot(page.get(), 2));
  unsigned short units[8] = {};
  FPDFAnnot_GetStringValue(stamp.get(), "QMR", units, sizeof units);
  Check(FPDFAnnot_GetSubtype(stamp.get()) == FPDF_ANNOT_STAMP && units[0] == 'k' && units[3] == 't',
        "an annotation behind one that is none");
  stamp.reset();
  Check(FPDFPage_RemoveAnnot(page.get(), 1), "annotations are removed through it");
  ScopedFPDFPage whole(FPDF_LoadPage(document.get(), 0));
  Check(FPDFPage_GetAnnotCount(whole.get()) == 2, "and are gone from the page");
  Check(!QuillmereEngine_LoadPageForAnnots(nullptr, 0), "no document, no page");
}

void TestDamagedTrees() {
  const std::string stamp_page = Page(std::string("/Annots [") + kStamp + "]");
  // A node that lists itself and its parent, with a page between.
  Check(StampPages(MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 2 >>",
                            "<< /Type /Pages /Kids [3 0 R 4 0 R 2 0 R] /Count 2 >>", stamp_page})) ==
            std::vector<int>({0, 1}),
        "a page tree that leads back to its root");
  Check(StampPages(MakePdf({kCatalog, "<< /Type /Pages /Kids [null (x) 3 0 R 9 0 R] /Count 4 >>",
                            stamp_page})) == std::vector<int>({2}),
        "children that are no pages");
  Check(StampPages(DoubledNodes("/Count 1000")).empty(), "a tree of doubled empty nodes");
  Check(StampPages(DoubledPage()) == FirstIndexes(16), "a page that is named a million times");
}


// What is read for the search is forgotten, but not what changed before it or is in use.
void TestFindingForgetsNoChange() {
  const std::string pdf = ManyPages();
  ScopedFPDFDocument document = Load(pdf);
  {
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 150));
    ScopedFPDFAnnotation annotation(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
  }
  ScopedFPDFPage open(FPDF_LoadPage(document.get(), 100));
  int pages[2] = {-1, -1};
  for (int i = 0; i < 2; ++i) {
    Check(FindPages(document.get(), {FPDF_ANNOT_STAMP}, pages, 2) == 1 && pages[0] == 150,
          "a stamp put on a page before");
    Check(FindPages(document.get(), {FPDF_ANNOT_TEXT}, nullptr, 0) == 200, "all pages with notes");
  }
  Check(FPDFPage_GetAnnotCount(open.get()) == 1, "the note of an open page");
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 150));
  Check(FPDFPage_GetAnnotCount(page.get()) == 2, "both annotations of a changed page");
}

void TestSearchInSlices() {
  const FPDF_ANNOTATION_SUBTYPE stamp = FPDF_ANNOT_STAMP;
  const std::string pdf = ManyPages();
  ScopedFPDFDocument document = Load(pdf);
  PageSearch search(QuillmereEngine_StartPageSearch(document.get(), &stamp, 1));
  Check(QuillmereEngine_ContinuePageSearch(search.get(), 50), "the first slice of a search");
  {
    // Made between two slices, the stamp is in no file that it could be read from again.
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 150));
    ScopedFPDFAnnotation annotation(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
    QuillmereEngine_MakeAnnotIndirect(page.get(), 1);
  }
  int slices = 1;
  while (QuillmereEngine_ContinuePageSearch(search.get(), 10)) {
    ++slices;
  }
  int page = -1;
  Check(QuillmereEngine_FoundPages(search.get(), &stamp, 1, &page, 1) == 1 && page == 150,
        "a stamp made between the slices of a search");
  Check(slices >= 15 && slices <= 17, "slices of ten pages");
  ScopedFPDFPage stamped(FPDF_LoadPage(document.get(), 150));
  Check(FPDFPage_GetAnnotCount(stamped.get()) == 2, "both annotations after the search");
  stamped.reset();

  search.reset(QuillmereEngine_StartPageSearch(document.get(), &stamp, 1));
  QuillmereEngine_ContinuePageSearch(search.get(), 10);
  document.reset();
  Check(!QuillmereEngine_ContinuePageSearch(search.get(), 10), "a search in a closed document");
  Check(!QuillmereEngine_StartPageSearch(nullptr, &stamp, 1), "a search in no document");
  Check(!QuillmereEngine_ContinuePageSearch(nullptr, 1), "no search");
}

// One search tells the pages of each of its subtypes.
void TestSearchForSeveralSubtypes() {
  const std::string highlight = "<< /Subtype /Highlight >>";
  const std::string pdf = MakePdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R 6 0 R] /Count 4 >>",
       Page("/Annots [" + highlight + kStamp + "]"), Page("/Annots 7 0 R"), Page("/Annots 7 0 R"),
       Page("/Annots [<< /Subtype /StrikeOut >>]"), std::string("[") + kNote + kStamp + "]"});
  ScopedFPDFDocument document = Load(pdf);
  const std::vector<FPDF_ANNOTATION_SUBTYPE> subtypes = {FPDF_ANNOT_STAMP, FPDF_ANNOT_HIGHLIGHT,
                                                         FPDF_ANNOT_STRIKEOUT};
  PageSearch search(QuillmereEngine_StartPageSearch(document.get(), subtypes.data(), 3));
  while (QuillmereEngine_ContinuePageSearch(search.get(), 1)) {
  }
  const auto pages = [&search](const std::vector<FPDF_ANNOTATION_SUBTYPE>& asked) {
    std::vector<int> found(9, -1);
    found.resize(QuillmereEngine_FoundPages(search.get(), asked.data(),
                                            static_cast<int>(asked.size()), found.data(), 9));
    return found;
  };
  Check(pages({FPDF_ANNOT_STAMP}) == std::vector<int>({0, 1, 2}), "the stamps of a search");
  Check(pages({FPDF_ANNOT_HIGHLIGHT, FPDF_ANNOT_STRIKEOUT}) == std::vector<int>({0, 3}),
        "the markups of a search");
  Check(pages({FPDF_ANNOT_TEXT}).empty(), "what the search did not look for");
}

void TestMarkups() {
  const std::string highlight = "<< /Subtype /Highlight >>";
  const std::string strikeout = "<< /Subtype /StrikeOut >>";
  const std::string pdf = MakePackedPdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R 6 0 R] /Count 4 >>",
       Page("/Annots [7 0 R]"), Page("/Annots [8 0 R]"), Page(std::string("/Annots [") + kNote + "]"),
       Page("/Annots [9 0 R " + highlight + "]"), highlight, "<< /Subtype /Str#69keOut >>", strikeout});
  Check(PagesWith({FPDF_ANNOT_HIGHLIGHT, FPDF_ANNOT_STRIKEOUT}, pdf) == std::vector<int>({0, 1, 3}),
        "pages with markups");
  Check(PagesWith({FPDF_ANNOT_STRIKEOUT}, pdf) == std::vector<int>({1, 3}), "pages with strikeouts");
  Check(PagesWith({FPDF_ANNOT_TEXT}, pdf) == std::vector<int>({2}), "pages with notes");
  Check(PagesWith({}, pdf).empty(), "pages with nothing");
  Check(PagesWith({FPDF_ANNOT_UNKNOWN, -3, 99}, pdf).empty(), "pages with no subtype that exists");
  // Where no name of a subtype is in an object stream, none of its annotations is read.
  const std::string links = MakePackedPdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                           Page("/Annots [4 0 R]"), "<< /Subtype /Link >>"});
  Check(PagesWith({FPDF_ANNOT_HIGHLIGHT}, links).empty(), "a page with a link");
}

void TestPageIndexes() {
  const std::string pdf = PdfWithBookmarks(
      {"3 0 R", "5 0 R", "6 0 R", "7 0 R", "4 0 R", "8 0 R", "null", "2", "4", "-1", "(x)", "99 0 R"});
  const std::vector<int> expected = {0, 1, 2, 3, -1, -1, -1, 2, -1, -1, -1, -1};
  ScopedFPDFDocument document = Load(pdf);
  Check(BookmarkPages(document.get()) == expected, "the pages of destinations");
  Check(BookmarkPages(document.get()) == expected, "the pages of destinations, again");
  Check(QuillmereEngine_PageIndexOfDest(nullptr, nullptr) == -1, "no document, no page");
  Check(QuillmereEngine_PageIndexOfDest(document.get(), nullptr) == -1, "no destination, no page");

  ScopedFPDFPage added(FPDFPage_New(document.get(), 1, 100, 100));
  const std::vector<int> after_adding = {0, 2, 3, 4, -1, -1, -1, 2, 4, -1, -1, -1};
  Check(BookmarkPages(document.get()) == after_adding, "destinations behind a new page");
  FPDFPage_Delete(document.get(), 2);
  const std::vector<int> after_deleting = {0, -1, 2, 3, -1, -1, -1, 2, -1, -1, -1, -1};
  Check(BookmarkPages(document.get()) == after_deleting, "destinations behind a deleted page");
  const int last = 3;
  FPDF_MovePages(document.get(), &last, 1, 0);
  Check(BookmarkPages(document.get())[0] == 1 && BookmarkPages(document.get())[3] == 0,
        "destinations of moved pages");
}

void TestCyclicTrees() {
  // A node that lists its ancestor twice around a page, and a bookmark to a node in it.
  const std::string cyclic = MakePdf(
      {"<< /Type /Catalog /Pages 2 0 R /Outlines 6 0 R >>",
       "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 3 >>", Page(""),
       "<< /Type /Pages /Kids [2 0 R 5 0 R 2 0 R] /Count 3 >>", Page(""),
       "<< /Type /Outlines /First 7 0 R >>",
       "<< /Title (A) /Parent 6 0 R /Dest [6 0 R /Fit] /Next 8 0 R >>",
       "<< /Title (B) /Parent 6 0 R /Dest [3 0 R /Fit] /Next 9 0 R >>",
       "<< /Title (C) /Parent 6 0 R /Dest [5 0 R /Fit] >>"});
  for (const std::string& pdf : {cyclic, DoubledNodes("/Count 1000"), DoubledNodes("")}) {
    ScopedFPDFDocument document = Load(pdf);
    const int count = FPDF_GetPageCount(document.get());
    for (int i = 0; i < count && i < 5; ++i) {
      ScopedFPDFPage page(FPDF_LoadPage(document.get(), i));
      FS_SIZEF size = {};
      FPDF_GetPageSizeByIndexF(document.get(), i, &size);
    }
    for (FPDF_BOOKMARK next = FPDFBookmark_GetFirstChild(document.get(), nullptr); next;
         next = FPDFBookmark_GetNextSibling(document.get(), next)) {
      FPDF_DEST dest = FPDFBookmark_GetDest(document.get(), next);
      Check(FPDFDest_GetDestPageIndex(document.get(), dest) ==
                QuillmereEngine_PageIndexOfDest(document.get(), dest),
            "PDFium's page of a destination in a cyclic tree");
    }
    ScopedFPDFDocument made(FPDF_CreateNewDocument());
    FPDF_ImportPages(made.get(), document.get(), nullptr, 0);
    ScopedFPDFPage added(FPDFPage_New(document.get(), 1, 100, 100));
    FPDFPage_Delete(document.get(), 0);
  }
  ScopedFPDFDocument document = Load(cyclic);
  Check(BookmarkPages(document.get()) == std::vector<int>({-1, 0, -1}), "pages of a cyclic tree");

  // Deleting, adding and importing among children that are no pages.
  const std::string nulls =
      MakePdf({kCatalog, "<< /Type /Pages /Kids [null 3 0 R (x) 4 0 R] /Count 4 >>", Page(""), Page("")});
  ScopedFPDFDocument holes = Load(nulls);
  FPDFPage_Delete(holes.get(), 0);
  ScopedFPDFPage added(FPDFPage_New(holes.get(), 3, 100, 100));
  ScopedFPDFPage second(FPDF_LoadPage(holes.get(), 1));
  Check(added && second, "a page tree with holes");

  // Far more levels than any reader follows.
  std::vector<std::string> objects = {kCatalog};
  for (int i = 2; i < 100'000; ++i) {
    objects.push_back("<< /Type /Pages /Kids [" + std::to_string(i + 1) + " 0 R] >>");
  }
  objects.push_back(Page(""));
  const std::string deep = MakePdf(objects);
  ScopedFPDFDocument depths = Load(deep);
  FPDFPage_Delete(depths.get(), 0);
}
