// Giving memory back.

#include <stdio.h>
#include <string.h>

#include <string>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "fpdf_doc.h"
#include "fpdf_edit.h"
#include "fpdf_text.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

// How often |document| is asked to give memory back in a look at it.
enum class Releases { kNever, kAlways };

// Everything that can be seen of a document, as text.
class Look {
 public:
  Look(const std::string& pdf, Releases releases) : document_(Load(pdf)), releases_(releases) {}

  std::string Everything() {
    Bookmarks();
    ScopedFPDFPage kept(FPDF_LoadPage(document_.get(), 0));
    ScopedFPDFTextPage kept_text(FPDFText_LoadPage(kept.get()));
    Release();
    for (int i = 0; i < 2 * FPDF_GetPageCount(document_.get()); ++i) {
      WholePage(i % FPDF_GetPageCount(document_.get()));
      Draw(kept.get());
      Text(kept_text.get());
    }
    for (FPDF_BOOKMARK bookmark : bookmarks_) {
      Bookmark(bookmark);
    }
    seen_ += std::to_string(FindPages(document_.get(), {FPDF_ANNOT_STAMP}, nullptr, 0));
    seen_ += SaveWithoutId(document_.get());
    Release();
    seen_ += SaveWithoutId(document_.get());
    return seen_;
  }

 private:
  void Release() {
    if (releases_ == Releases::kAlways) {
      Check(QuillmereEngine_ReleaseParsedObjects(document_.get()), "giving memory back");
    }
  }

  void Bookmarks() {
    for (FPDF_BOOKMARK next = FPDFBookmark_GetFirstChild(document_.get(), nullptr); next;
         next = FPDFBookmark_GetNextSibling(document_.get(), next)) {
      bookmarks_.push_back(next);
    }
    Check(bookmarks_.size() == 3, "three bookmarks");
  }

  void Bookmark(FPDF_BOOKMARK bookmark) {
    char title[64] = {};
    const unsigned long size = FPDFBookmark_GetTitle(bookmark, title, sizeof title);
    seen_.append(title, size < sizeof title ? size : 0);
    FPDF_DEST target = FPDFBookmark_GetDest(document_.get(), bookmark);
    seen_ += std::to_string(target ? FPDFDest_GetDestPageIndex(document_.get(), target) : -1);
    Release();
  }

  void WholePage(int index) {
    ScopedFPDFPage page(FPDF_LoadPage(document_.get(), index));
    Release();
    ScopedFPDFTextPage text(FPDFText_LoadPage(page.get()));
    Draw(page.get());
    Release();
    Text(text.get());
    Draw(page.get());
    for (int i = 0; i < FPDFPage_GetAnnotCount(page.get()); ++i) {
      ScopedFPDFAnnotation annotation(FPDFPage_GetAnnot(page.get(), i));
      Release();
      FS_RECTF place = {};
      FPDFAnnot_GetRect(annotation.get(), &place);
      seen_ += std::to_string(FPDFAnnot_GetSubtype(annotation.get())) + " ";
      Link(page.get(), (place.left + place.right) / 2, (place.bottom + place.top) / 2);
    }
  }

  void Link(FPDF_PAGE page, double x, double y) {
    Release();
    FPDF_LINK link = FPDFLink_GetLinkAtPoint(page, x, y);
    FPDF_DEST target = link ? FPDFLink_GetDest(document_.get(), link) : nullptr;
    seen_ += std::to_string(target ? FPDFDest_GetDestPageIndex(document_.get(), target) : -1) + " ";
  }

  void Draw(FPDF_PAGE page) { seen_ += Pixels(page); }

  void Text(FPDF_TEXTPAGE text) {
    unsigned short buffer[64] = {};
    FPDFText_GetText(text, 0, 63, buffer);
    seen_.append(reinterpret_cast<const char*>(buffer), sizeof buffer);
  }

  ScopedFPDFDocument document_;
  Releases releases_;
  std::vector<FPDF_BOOKMARK> bookmarks_;
  std::string seen_;
};

// Counts how many bytes of a document are read.
struct CountedFile : FPDF_FILEACCESS {
  std::string bytes;
  size_t read = 0;
};

}  // namespace

void TestReleaseChangesNothing() {
  for (const std::string& pdf : {MakePdf(VariedObjects()), MakePackedPdf(VariedObjects())}) {
    const std::string without = Look(pdf, Releases::kNever).Everything();
    const std::string with = Look(pdf, Releases::kAlways).Everything();
    Check(without.size() > 100000 && without == with, "a document that gives memory back is the same");
  }
}

void TestReleaseGivesBack() {
  for (const std::string& pdf : {MakePdf(VariedObjects()), MakePackedPdf(VariedObjects())}) {
    CountedFile file = {};
    file.bytes = pdf;
    file.m_FileLen = static_cast<unsigned long>(pdf.size());
    file.m_Param = &file;
    file.m_GetBlock = [](void* param, unsigned long at, unsigned char* buffer, unsigned long size) {
      CountedFile* self = static_cast<CountedFile*>(param);
      self->read += size;
      memcpy(buffer, self->bytes.data() + at, size);
      return 1;
    };
    ScopedFPDFDocument document(FPDF_LoadCustomDocument(&file, nullptr));
    ScopedFPDFPage first(FPDF_LoadPage(document.get(), 1));
    const size_t before = file.read;
    first.reset();
    first.reset(FPDF_LoadPage(document.get(), 1));
    Check(file.read == before, "what was read is kept");
    first.reset();
    Check(QuillmereEngine_ReleaseParsedObjects(document.get()), "giving memory back");
    first.reset(FPDF_LoadPage(document.get(), 1));
    Check(file.read > before, "what was given back is read again");
  }
}

void TestReleaseRefuses() {
  Check(!QuillmereEngine_ReleaseParsedObjects(nullptr), "no document, nothing to give back");
  ScopedFPDFDocument made(FPDF_CreateNewDocument());
  Check(!QuillmereEngine_ReleaseParsedObjects(made.get()), "a new document has no file to read");

  const std::string pdf = MakePdf(VariedObjects());
  std::string damaged = pdf;
  damaged.replace(damaged.rfind("startxref\n") + 10, 1, "9");
  ScopedFPDFDocument repaired = Load(damaged);
  Check(repaired && !QuillmereEngine_ReleaseParsedObjects(repaired.get()), "a damaged file");

  ScopedFPDFDocument marked = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(marked.get(), 0));
  Check(QuillmereEngine_ReleaseParsedObjects(marked.get()), "nothing edited yet");
  ScopedFPDFAnnotation annotation(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
  const FS_RECTF place = {10, 40, 40, 10};
  FPDFAnnot_SetRect(annotation.get(), &place);
  const unsigned short appearance[] = {'0', ' ', 'g', 0};
  FPDFAnnot_SetAP(annotation.get(), FPDF_ANNOT_APPEARANCEMODE_NORMAL, appearance);
  Check(!QuillmereEngine_ReleaseParsedObjects(marked.get()), "a new annotation");

  ScopedFPDFDocument redrawn = Load(pdf);
  page.reset(FPDF_LoadPage(redrawn.get(), 0));
  ScopedFPDFAnnotation stamp(FPDFPage_GetAnnot(page.get(), 1));
  FPDF_PAGEOBJECT box = FPDFPageObj_CreateNewRect(0, 0, 10, 10);
  FPDFPageObj_SetFillColor(box, 0, 255, 0, 255);
  Check(FPDFAnnot_AppendObject(stamp.get(), box), "drawing on a stamp");
  Check(!QuillmereEngine_ReleaseParsedObjects(redrawn.get()), "a stamp that was drawn on");
}

void TestReleaseKeepsOutline() {
  // The outline is what the trailer names as well, and its items are links.
  const std::string item = "<< /Subtype /Link /Parent 5 0 R /Rect [0 0 9 9] /Dest [3 0 R /Fit] ";
  const std::string pdf = MakePdf(
      {"<< /Type /Catalog /Pages 2 0 R /Outlines 5 0 R >>",
       "<< /Type /Pages /Kids [3 0 R] /Count 1 >>", Page("/Annots [6 0 R 7 0 R] /Contents 4 0 R"),
       Stream("0 0 9 9 re f"), "<< /Type /Outlines /First 6 0 R /Last 7 0 R >>",
       item + "/Title (First) /Next 7 0 R >>", item + "/Title (Second) >>"},
      "/Info 5 0 R");
  ScopedFPDFDocument document = Load(pdf);
  FPDF_BOOKMARK first = FPDFBookmark_GetFirstChild(document.get(), nullptr);
  FPDF_BOOKMARK second = FPDFBookmark_GetNextSibling(document.get(), first);
  { ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0)); }
  Check(QuillmereEngine_ReleaseParsedObjects(document.get()), "giving memory back");
  // What took the place of the outline would be found instead.
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  Pixels(page.get());
  for (FPDF_BOOKMARK bookmark : {first, second}) {
    char title[32] = {};
    FPDFBookmark_GetTitle(bookmark, title, sizeof title);
    Check(title[0] == (bookmark == first ? 'F' : 'S'), "a bookmark that the trailer's entry leads to");
  }
}

void TestReleaseAfterDrawing() {
  // Annotations in the page's own array, without appearances, and fields that get one.
  const std::string quads = "/QuadPoints [10 40 90 40 10 20 90 20] /Rect [10 20 90 40] ";
  const std::string pdf = MakePdf(
      {"<< /Type /Catalog /Pages 2 0 R /AcroForm << /NeedAppearances true /Fields [6 0 R] /DA (/F 0 Tf "
       "0 g) /DR << /Font << /F 5 0 R >> >> >> >>",
       "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
       Page("/Contents 4 0 R /Annots [6 0 R << /Subtype /Highlight /Contents (A note) " + quads +
            ">> << /Subtype /Text /Contents (Another) /Rect [100 10 120 30] >> << /Subtype /Link /Rect "
            "[1 1 9 9] /Dest [3 0 R /Fit] >>]"),
       Stream("0 0 9 9 re f"), "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
       "<< /Subtype /Widget /FT /Tx /T (Name) /V (Filled in) /Rect [10 60 150 90] /DA (/F 12 Tf 0 g) >>"});
  ScopedFPDFDocument document = Load(pdf);
  std::string before;
  size_t size = 0;
  for (int i = 0; i < 5; ++i) {
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
    const std::string pixels = Pixels(page.get());
    page.reset();
    Check(before.empty() || pixels == before, "a page drawn anew after memory was given back");
    before = pixels;
    Check(QuillmereEngine_ReleaseParsedObjects(document.get()), "giving memory back after drawing");
    const size_t saved = Save(document.get()).size();
    Check(size == 0 || saved == size, "drawing a page again adds nothing to the document");
    size = saved;
  }
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  Check(FPDFPage_GetAnnotCount(page.get()) == 4, "the same annotations");
  Check(FPDFLink_GetLinkAtPoint(page.get(), 5, 5) != nullptr, "a link of the page's own array");
}
