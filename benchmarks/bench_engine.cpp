// Times PDFium alone on whole documents, so that its builds can be compared: this program is built
// for Windows and for the build machine.
//
// Usage: bench_engine DOCUMENT...
//        bench_engine --first-page|--text|--search|--save DOCUMENT
//            does one of these once, to be timed from outside

#include <fpdf_save.h>
#include <fpdf_text.h>
#include <fpdfview.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "plain_pdfium.h"
#include "samples.h"

namespace quillmere::bench {
namespace {

constexpr BitmapSize kPageSize{800, 1000};
constexpr int kDrawnPages = 100;

void openAndRenderFirstPage(const std::string& path) {
  PlainView view;
  if (!openPlain(view, path)) return;
  loadPlainPage(view, 0, false);
  renderPlain(view.page.get(), kPageSize);
}

void walkPages(FPDF_DOCUMENT document) {
  const int count = FPDF_GetPageCount(document);
  for (int i = 0; i < count; ++i) PageHandle(FPDF_LoadPage(document, i));
}

std::size_t extractText(FPDF_DOCUMENT document) {
  const int count = FPDF_GetPageCount(document);
  std::size_t units = 0;
  std::vector<unsigned short> buffer;
  for (int i = 0; i < count; ++i) {
    const PageHandle page(FPDF_LoadPage(document, i));
    const TextPageHandle text(FPDFText_LoadPage(page.get()));
    const int length = FPDFText_CountChars(text.get());
    buffer.resize(static_cast<std::size_t>(length) + 1);
    units += static_cast<std::size_t>(FPDFText_GetText(text.get(), 0, length, buffer.data()));
  }
  return units;
}

void searchText(FPDF_DOCUMENT document) {
  searchPlain(document, u"function");
}

// Draws a fixed number of pages from all over the document.
void drawPages(FPDF_DOCUMENT document) {
  const int count = FPDF_GetPageCount(document);
  const int step = count / kDrawnPages + 1;
  for (int i = 0; i < count; i += step) {
    renderPlain(PageHandle(FPDF_LoadPage(document, i)).get(), kPageSize);
  }
}

// Writes the document to nowhere and returns the bytes that a file would get.
double saveNowhere(FPDF_DOCUMENT document) {
  struct Counter : FPDF_FILEWRITE {
    double bytes = 0;
  } counter;
  counter.version = 1;
  counter.WriteBlock = [](FPDF_FILEWRITE* self, const void*, unsigned long size) {
    static_cast<Counter*>(self)->bytes += static_cast<double>(size);
    return 1;
  };
  FPDF_SaveAsCopy(document, &counter, FPDF_NO_INCREMENTAL);
  return counter.bytes;
}

void reportSavedSize(const std::string& path) {
  const DocumentHandle document(FPDF_LoadDocument(path.c_str(), nullptr));
  constexpr double kKilobyte = 1024;
  const auto source = static_cast<double>(std::filesystem::file_size(path));
  reportPair("saved-size", documentName(path), saveNowhere(document.get()) / kKilobyte,
             source / kKilobyte);
}

template <typename Work>
void timeOn(const std::string& path, const char* row, Work work) {
  const DocumentHandle document(FPDF_LoadDocument(path.c_str(), nullptr));
  const Stopwatch watch;
  work(document.get());
  reportValue(row, documentName(path), watch.milliseconds());
}

void timeDocument(const std::string& path) {
  const Stopwatch watch;
  openAndRenderFirstPage(path);
  reportValue("engine-first-page", documentName(path), watch.milliseconds());
  timeOn(path, "engine-walk", walkPages);
  timeOn(path, "engine-draw", drawPages);
  timeOn(path, "engine-text", extractText);
  timeOn(path, "engine-search", searchText);
  timeOn(path, "engine-save", saveNowhere);
  reportSavedSize(path);
}

void doOnce(const std::string& task, const std::string& path) {
  if (task == "--first-page") return openAndRenderFirstPage(path);
  const DocumentHandle document(FPDF_LoadDocument(path.c_str(), nullptr));
  if (task == "--text") extractText(document.get());
  if (task == "--search") searchText(document.get());
  if (task == "--save") saveNowhere(document.get());
}

int run(int argc, char** argv) {
  startPdfium();
  if (argc == 3 && std::strncmp(argv[1], "--", 2) == 0) {
    doOnce(argv[1], argv[2]);
  } else {
    for (int i = 1; i < argc; ++i) timeDocument(argv[i]);
  }
  FPDF_DestroyLibrary();
  return 0;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  return quillmere::bench::run(argc, argv);
}
