// Tries the engine on small documents that are put together here. Exits with 0
// if everything held, and says what did not.

#include <stdio.h>
#include <string.h>

#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "fpdf_doc.h"
#include "fpdf_edit.h"
#include "fpdf_save.h"
#include "fpdf_text.h"
#include "fpdfview.h"
#include "quillmere_engine.h"

namespace {

int failures = 0;

void Check(bool held, const std::string& what) {
  if (!held) {
    ++failures;
    printf("FAILED: %s\n", what.c_str());
  }
}

// Joins object bodies to a document; the first is the catalog.
std::string MakePdf(const std::vector<std::string>& objects) {
  std::string pdf = "%PDF-1.7\n";
  std::vector<size_t> offsets;
  for (size_t i = 0; i < objects.size(); ++i) {
    offsets.push_back(pdf.size());
    pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
  }
  const size_t xref = pdf.size();
  pdf += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
  for (size_t offset : offsets) {
    char line[32];
    snprintf(line, sizeof line, "%010u 00000 n \n", static_cast<unsigned>(offset));
    pdf += line;
  }
  pdf += "trailer\n<< /Root 1 0 R /Size " + std::to_string(objects.size() + 1) + " >>\nstartxref\n" +
         std::to_string(xref) + "\n%%EOF\n";
  return pdf;
}

// Number |value| in |bytes| bytes, the highest first.
std::string BigEndian(size_t value, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) {
    text += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return text;
}

// The same with all but the streams among |objects| in one object stream, and a
// cross-reference stream.
std::string MakePackedPdf(const std::vector<std::string>& objects) {
  const size_t packer = objects.size() + 1;
  std::string pdf = "%PDF-1.7\n";
  std::string places = std::string(1, 0) + BigEndian(0, 4) + BigEndian(0, 2);
  std::string heads;
  std::string bodies;
  size_t packed = 0;
  for (size_t i = 0; i < objects.size(); ++i) {
    if (objects[i].find("endstream") == std::string::npos) {
      heads += std::to_string(i + 1) + " " + std::to_string(bodies.size()) + " ";
      bodies += objects[i] + "\n";
      places += std::string(1, 2) + BigEndian(packer, 4) + BigEndian(packed++, 2);
    } else {
      places += std::string(1, 1) + BigEndian(pdf.size(), 4) + BigEndian(0, 2);
      pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
  }
  places += std::string(1, 1) + BigEndian(pdf.size(), 4) + BigEndian(0, 2);
  pdf += std::to_string(packer) + " 0 obj\n<< /Type /ObjStm /N " + std::to_string(packed) +
         " /First " + std::to_string(heads.size()) + " /Length " +
         std::to_string(heads.size() + bodies.size()) + " >>\nstream\n" + heads + bodies +
         "\nendstream\nendobj\n";
  const size_t xref = pdf.size();
  places += std::string(1, 1) + BigEndian(xref, 4) + BigEndian(0, 2);
  pdf += std::to_string(packer + 1) + " 0 obj\n<< /Type /XRef /W [1 4 2] /Root 1 0 R /Size " +
         std::to_string(packer + 2) + " /Length " + std::to_string(places.size()) +
         " >>\nstream\n" + places + "\nendstream\nendobj\nstartxref\n" + std::to_string(xref) +
         "\n%%EOF\n";
  return pdf;
}

std::string Stream(const std::string& data) {
  return "<< /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
}

// A page of its own entries below the page tree node 2.
std::string Page(const std::string& entries) {
  return "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 100] " + entries + " >>";
}

const char kCatalog[] = "<< /Type /Catalog /Pages 2 0 R >>";
const char kStamp[] = "<< /Type /Annot /Subtype /Stamp /Rect [10 10 50 50] >>";
const char kNote[] = "<< /Type /Annot /Subtype /Text /Rect [10 10 50 50] >>";

ScopedFPDFDocument Load(const std::string& pdf) {
  return ScopedFPDFDocument(FPDF_LoadMemDocument64(pdf.data(), pdf.size(), nullptr));
}

std::vector<int> StampPages(const std::string& pdf) {
  ScopedFPDFDocument document = Load(pdf);
  Check(document != nullptr, "opening a document with stamps");
  const int count = QuillmereEngine_FindStampPages(document.get(), nullptr, 0);
  std::vector<int> pages(count, -1);
  Check(QuillmereEngine_FindStampPages(document.get(), pages.data(), count) == count,
        "the same number of stamp pages twice");
  return pages;
}

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
  Check(QuillmereEngine_FindStampPages(nullptr, nullptr, 0) == 0, "no document, no stamps");

  const std::string two = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>",
                                   Page("/Annots [" + stamp + "]"), Page("/Annots [" + stamp + "]")});
  ScopedFPDFDocument document = Load(two);
  int pages[2] = {-1, -1};
  Check(QuillmereEngine_FindStampPages(document.get(), pages, 1) == 2 && pages[0] == 0 && pages[1] == -1,
        "a full array is not written past its end");
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
  // Two children each of which is the next level: without a page they would
  // double for every level.
  std::vector<std::string> objects = {kCatalog};
  for (int i = 2; i < 62; ++i) {
    const std::string next = std::to_string(i + 1) + " 0 R ";
    objects.push_back("<< /Type /Pages /Count 1000 /Kids [" + next + next + "] >>");
  }
  objects.push_back("<< /Type /Pages /Count 0 /Kids [] >>");
  Check(StampPages(MakePdf(objects)).empty(), "a tree of doubled empty nodes");
}

std::string Form(const std::string& data, const std::string& resources) {
  return "<< /Type /XObject /Subtype /Form /BBox [0 0 50 50] " + resources + " /Length " +
         std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
}

std::string XObjects(const std::string& names) {
  return "/Resources << /XObject << " + names + " >> >>";
}

// How many objects |document|'s only page holds, those of forms within forms too.
int CountAllObjects(FPDF_DOCUMENT document) {
  ScopedFPDFPage page(FPDF_LoadPage(document, 0));
  std::vector<FPDF_PAGEOBJECT> waiting;
  for (int i = 0; i < FPDFPage_CountObjects(page.get()); ++i) {
    waiting.push_back(FPDFPage_GetObject(page.get(), i));
  }
  int count = 0;
  while (!waiting.empty()) {
    FPDF_PAGEOBJECT object = waiting.back();
    waiting.pop_back();
    ++count;
    for (int i = 0; i < FPDFFormObj_CountObjects(object); ++i) {
      waiting.push_back(FPDFFormObj_GetObject(object, i));
    }
  }
  return count;
}

// A page that draws the form /A and then a box, with the forms from object 5 on.
int CountWithForms(const std::string& names, const std::vector<std::string>& forms) {
  std::vector<std::string> objects = {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                      Page("/Contents 4 0 R " + XObjects(names)),
                                      Stream("/A Do 0 0 9 9 re f")};
  objects.insert(objects.end(), forms.begin(), forms.end());
  return CountAllObjects(Load(MakePdf(objects)).get());
}

void TestFormsInForms() {
  // Two forms with a box each, one of them drawn twice by the other.
  Check(CountWithForms("/A 5 0 R /B 6 0 R",
                       {Form("/B Do /B Do 0 0 9 9 re f", ""), Form("0 0 9 9 re f", "")}) == 7,
        "a form within a form, twice");
  Check(CountWithForms("/A 5 0 R", {Form("/A Do 0 0 9 9 re f /A Do", "")}) == 3,
        "a form that draws itself");
  Check(CountWithForms("/A 5 0 R", {Form("/X Do 0 0 9 9 re f /X Do", XObjects("/X 5 0 R"))}) == 3,
        "a form that draws itself by its own resources");
  Check(CountWithForms("/A 5 0 R /B 6 0 R", {Form("/B Do /B Do 0 0 9 9 re f", ""),
                                             Form("/A Do 0 0 9 9 re f", "")}) == 7,
        "two forms that draw each other");

  // Each form draws the next one sixteen times, a thousand million in all.
  std::string names = "/A 5 0 R";
  std::vector<std::string> forms;
  for (int i = 0; i < 9; ++i) {
    std::string next = " /F" + std::to_string(i) + " Do";
    std::string data;
    for (int times = 0; times < 16; ++times) {
      data += next;
    }
    names += " /F" + std::to_string(i) + " " + std::to_string(6 + i) + " 0 R";
    forms.push_back(Form(data, ""));
  }
  const int count = CountWithForms(names, forms);
  Check(count > 100'000 && count < 1'100'000, "forms that multiply, got: " + std::to_string(count));
}

// Three pages with text, a form, an image with a mask, links, a stamp with an
// appearance, and bookmarks. The second bookmark is a link annotation too, and the
// third the dictionary of a page's content.
std::vector<std::string> VariedObjects() {
  const std::string resources =
      "/Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> "
      "/XObject << /Form 8 0 R /Image 9 0 R >> >>";
  return {
      "<< /Type /Catalog /Pages 2 0 R /Outlines 14 0 R >>",
      "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 >>",
      Page("/Contents 6 0 R /Annots [11 0 R 12 0 R] " + resources),
      Page("/Contents [7 0 R 6 0 R] /Annots 17 0 R " + resources),
      Page("/Contents 7 0 R /Annots [18 0 R 11 0 R] " + resources),
      "<< /Length 60 /Title (Content) >>\nstream\n"
      "BT /F 24 Tf 10 60 Td (Tide tables) Tj ET /Form Do /Image Do  \nendstream",
      Stream("q 40 0 0 40 120 30 cm /Image Do Q BT /F 12 Tf 10 20 Td (Moon) Tj ET"),
      "<< /Type /XObject /Subtype /Form /BBox [0 0 50 50] /Length 28 >>\nstream\n"
      "1 0 0 rg 5 5 30 20 re f     \nendstream",
      "<< /Type /XObject /Subtype /Image /Width 2 /Height 2 /BitsPerComponent 8 "
      "/ColorSpace /DeviceGray /SMask 10 0 R /Length 4 >>\nstream\n\x20\x60\xA0\xE0\nendstream",
      "<< /Type /XObject /Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 "
      "/ColorSpace /DeviceGray /Length 1 >>\nstream\n\xC0\nendstream",
      "<< /Type /Annot /Subtype /Link /Rect [5 50 180 80] /Dest [5 0 R /XYZ 0 50 null] >>",
      "<< /Type /Annot /Subtype /Stamp /Rect [100 10 150 40] /AP << /N 13 0 R >> >>",
      "<< /Type /XObject /Subtype /Form /BBox [0 0 50 30] /Length 28 >>\nstream\n"
      "0 0 1 rg 0 0 50 30 re f     \nendstream",
      "<< /Type /Outlines /First 15 0 R /Last 6 0 R /Count 3 >>",
      "<< /Title (First) /Parent 14 0 R /Next 16 0 R /Dest [4 0 R /Fit] >>",
      "<< /Title (Second) /Parent 14 0 R /Next 6 0 R /Type /Annot /Subtype /Link "
      "/Rect [5 5 60 20] /Dest [5 0 R /Fit] >>",
      "[16 0 R 11 0 R]",
      "<< /Type /Annot /Subtype /Link /Rect [5 5 90 20] /Dest [3 0 R /Fit] >>"};
}

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
    seen_ += std::to_string(QuillmereEngine_FindStampPages(document_.get(), nullptr, 0));
    Save(FPDF_NO_INCREMENTAL);
    Release();
    Save(FPDF_NO_INCREMENTAL);
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

  void Draw(FPDF_PAGE page) {
    ScopedFPDFBitmap bitmap(FPDFBitmap_Create(200, 100, 0));
    FPDFBitmap_FillRect(bitmap.get(), 0, 0, 200, 100, 0xFFFFFFFF);
    FPDF_RenderPageBitmap(bitmap.get(), page, 0, 0, 200, 100, 0, FPDF_ANNOT);
    seen_.append(static_cast<const char*>(FPDFBitmap_GetBuffer(bitmap.get())), 200 * 100 * 4);
  }

  void Text(FPDF_TEXTPAGE text) {
    unsigned short buffer[64] = {};
    FPDFText_GetText(text, 0, 63, buffer);
    seen_.append(reinterpret_cast<const char*>(buffer), sizeof buffer);
  }

  // Every copy gets a random identifier at its end.
  void Save(FPDF_DWORD flags) {
    struct Memory : FPDF_FILEWRITE {
      std::string bytes;
    } copy = {};
    copy.version = 1;
    copy.WriteBlock = [](FPDF_FILEWRITE* self, const void* data, unsigned long size) {
      static_cast<Memory*>(self)->bytes.append(static_cast<const char*>(data), size);
      return 1;
    };
    Check(FPDF_SaveAsCopy(document_.get(), &copy, flags), "saving");
    seen_ += copy.bytes.substr(0, copy.bytes.rfind("/ID"));
  }

  ScopedFPDFDocument document_;
  Releases releases_;
  std::vector<FPDF_BOOKMARK> bookmarks_;
  std::string seen_;
};

void TestReleaseChangesNothing() {
  for (const std::string& pdf : {MakePdf(VariedObjects()), MakePackedPdf(VariedObjects())}) {
    const std::string without = Look(pdf, Releases::kNever).Everything();
    const std::string with = Look(pdf, Releases::kAlways).Everything();
    Check(without.size() > 100000 && without == with, "a document that gives memory back is the same");
  }
}

// Counts how many bytes of a document are read.
struct CountedFile : FPDF_FILEACCESS {
  std::string bytes;
  size_t read = 0;
};

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

}  // namespace

int main(int argc, char** argv) {
  FPDF_InitLibrary();
  TestPageAndText(argc > 1 ? argv[1] : ".");
  TestStamps();
  TestDamagedTrees();
  TestFormsInForms();
  TestReleaseChangesNothing();
  TestReleaseGivesBack();
  TestReleaseRefuses();
  FPDF_DestroyLibrary();
  const std::string version = QuillmereEngine_Version();
  Check(version.find('.') != std::string::npos, "a version with dots, got: " + version);
  printf("PDFium %s: %s\n", version.c_str(), failures ? "failures above" : "all checks held");
  return failures ? 1 : 0;
}
