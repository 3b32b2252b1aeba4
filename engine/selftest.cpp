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

}  // namespace

int main(int argc, char** argv) {
  FPDF_InitLibrary();
  TestPageAndText(argc > 1 ? argv[1] : ".");
  TestStamps();
  TestDamagedTrees();
  FPDF_DestroyLibrary();
  const std::string version = QuillmereEngine_Version();
  Check(version.find('.') != std::string::npos, "a version with dots, got: " + version);
  printf("PDFium %s: %s\n", version.c_str(), failures ? "failures above" : "all checks held");
  return failures ? 1 : 0;
}
