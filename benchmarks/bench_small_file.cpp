// Writes the small document of the benchmarks. Usage: bench_small_file FILE

#include <cstdio>
#include <string>
#include <vector>

#include "support/pdf_builder.h"

namespace {

constexpr int kPages = 20;
constexpr int kLines = 40;

std::string pageContent(int page) {
  std::string content = quillmere::test::rectangleContent(60, 730, 492, 3, 0.2, 0.3, 0.6);
  for (int line = 0; line < kLines; ++line) {
    const std::string text = "Page " + std::to_string(page) + ", line " + std::to_string(line) +
                             " of a small document that has a page of plain text to show.";
    content += quillmere::test::textContent(text, 60, 700 - 16.0 * line, 11);
  }
  return content;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::vector<quillmere::test::PdfPage> pages(kPages);
  for (int i = 0; i < kPages; ++i) pages[static_cast<std::size_t>(i)].content = pageContent(i + 1);
  const std::string bytes = quillmere::test::buildPdf(pages);
  std::FILE* file = std::fopen(argv[1], "wb");
  if (file == nullptr) return 1;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && written ? 0 : 1;
}
