// Writes the benchmark documents that no package provides. Usage: bench_documents FOLDER

#include <cstdio>
#include <string>
#include <vector>

#include "support/pdf_builder.h"

namespace quillmere::bench {
namespace {

using test::PdfOutlineItem;
using test::PdfPage;

constexpr int kPages = 20;
constexpr int kLines = 40;
constexpr int kSameLetters = 75;  // letters in a line
constexpr int kOutlineEntries = 10000;
constexpr int kChapters = 100;

double lineY(int line) {
  return 700 - 16.0 * line;
}

std::string pageContent(int page) {
  std::string content = test::rectangleContent(60, 730, 492, 3, 0.2, 0.3, 0.6);
  for (int line = 0; line < kLines; ++line) {
    const std::string text = "Page " + std::to_string(page) + ", line " + std::to_string(line) +
                             " of a small document that has a page of plain text to show.";
    content += test::textContent(text, 60, lineY(line), 11);
  }
  return content;
}

std::vector<PdfPage> textPages() {
  std::vector<PdfPage> pages(kPages);
  for (int i = 0; i < kPages; ++i) pages[static_cast<std::size_t>(i)].content = pageContent(i + 1);
  return pages;
}

// Lines of a's that each end in another letter.
std::vector<PdfPage> sameLetters() {
  PdfPage page;
  for (int line = 0; line < kLines; ++line) {
    page.content += test::textContent(std::string(kSameLetters, 'a') + "b", 60, lineY(line), 11);
  }
  return {page};
}

PdfOutlineItem entry(int number) {
  PdfOutlineItem item;
  item.title = u"Entry ";
  for (const char digit : std::to_string(number)) item.title += static_cast<char16_t>(digit);
  item.target = test::pageDestination(1 + number % kPages);
  return item;
}

// All entries on one level, so that all are shown at once: the worst case.
std::vector<PdfOutlineItem> flatOutline() {
  std::vector<PdfOutlineItem> outline;
  for (int i = 0; i < kOutlineEntries; ++i) outline.push_back(entry(i));
  return outline;
}

// The same number of entries, under chapters.
std::vector<PdfOutlineItem> deepOutline() {
  std::vector<PdfOutlineItem> outline;
  constexpr int kSections = kOutlineEntries / kChapters - 1;
  for (int chapter = 0; chapter < kChapters; ++chapter) {
    PdfOutlineItem item = entry(chapter);
    for (int i = 0; i < kSections; ++i) item.children.push_back(entry(chapter + i));
    outline.push_back(std::move(item));
  }
  return outline;
}

bool write(const std::string& path, const std::string& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && written;
}

bool writeAll(const std::string& folder) {
  const std::vector<PdfPage> pages = textPages();
  return write(folder + "/small.pdf", test::buildPdf(pages)) &&
         write(folder + "/same-letters.pdf", test::buildPdf(sameLetters())) &&
         write(folder + "/outline-flat.pdf", test::buildPdf(pages, {flatOutline(), "", ""})) &&
         write(folder + "/outline-deep.pdf", test::buildPdf(pages, {deepOutline(), "", ""}));
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  return quillmere::bench::writeAll(argv[1]) ? 0 : 1;
}
