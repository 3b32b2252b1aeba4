#pragma once

#include <string>

#include "store/working_documents.h"
#include "support/session_test.h"

namespace quillmere::test {

struct OpenOptions {
  int pane = 0;
  WorkingDocsMode workingDocsMode = kWorkingDocsLeaveAlone;
  bool ask = false;              // about unsaved changes of what is being replaced
  std::u16string displayPath{};  // empty for the file's own
};

// A test whose documents lie on the disk and are opened from there, as a user's are.
class OpeningTest : public SessionTest {
 protected:
  // True when the file is open afterwards.
  static bool open(const std::u16string& path, const OpenOptions& options = {});

  // Writes a file and opens it.
  static bool open(const std::string& bytes, int pane = 0,
                   const std::u16string& path = u"C:\\document.pdf");

  // Writes a file of so many pages, opens it and gives its path. Not opening fails the test.
  static std::u16string opened(const std::u16string& name, int pages = 3, int pane = 0);

  // Opens left_ and right_ side by side, in TwoDocuments.
  void openTwo(int leftPages = 3, int rightPages = 4);

  std::u16string left_;
  std::u16string right_;
};

}  // namespace quillmere::test
