#pragma once

#include <string>
#include <vector>

#include "support/opening_test.h"

namespace quillmere::test {

// Documents on the disk that are edited and saved.
class SaveTest : public OpeningTest {
 protected:
  // An edit of the pane's document: a mark on a zero-based page.
  static void mark(int pane, int page = 0);
  // How many marks a page has in the file, as any reader finds them; -1 when it does not open.
  int marksIn(const std::u16string& path, int page = 0);
  // The same of the pane's document in memory.
  static int marksOf(int pane, int page = 0);

  // A text on a page of the pane's document that is no annotation yet.
  static void placeText(int pane, int page = 0);

  // Saves the pane's document to its own path.
  static bool save(int pane = 0);

  // Answers as many messages with OK.
  static void expectNotices(int count);
  static std::vector<std::u16string> boxTexts();

  static const std::u16string kReplaceFailed;
};

}  // namespace quillmere::test
