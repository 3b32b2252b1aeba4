#include "support/opening_test.h"

#include "documents/open.h"
#include "support/pdf_builder.h"

namespace quillmere::test {

bool OpeningTest::open(const std::u16string& path, const OpenOptions& options) {
  return openDocument(&path, options.pane, options.workingDocsMode, options.ask,
                      options.displayPath.empty() ? nullptr : &options.displayPath);
}

bool OpeningTest::open(const std::string& bytes, int pane, const std::u16string& path) {
  return open(putPdf(path, bytes), {.pane = pane});
}

std::u16string OpeningTest::opened(const std::u16string& name, int pages, int pane) {
  const std::u16string path = putPdf(name, simplePdf(pages));
  EXPECT_TRUE(open(path, {.pane = pane}));
  return path;
}

void OpeningTest::openTwo(int leftPages, int rightPages) {
  session.viewMode = ViewMode::TwoDocuments;
  left_ = opened(u"left.pdf", leftPages, 0);
  right_ = opened(u"right.pdf", rightPages, 1);
}

}  // namespace quillmere::test
