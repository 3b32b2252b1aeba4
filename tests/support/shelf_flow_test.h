#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dialogs/unsaved_dialog_script.h"
#include "support/session_test.h"

namespace quillmere::test {

// The documents in use, then a binder "Work" with a.pdf, b.pdf and c.pdf of three pages each, then
// a binder "Other" with b.pdf. The shelf is empty and kept on the disk.
class ShelfFlowTest : public SessionTest {
 protected:
  ShelfFlowTest();
  ~ShelfFlowTest() override;

  // Opens a file of a binder as a click on its row does, in the active pane.
  static void openFile(int binder, int file, bool ask = true);

  // Marks the first page of the pane's document as a user does.
  static void mark(int pane = 0);
  // How many marks the first page has, in memory and in a file; -1 when there is no document.
  static int marks(int pane = 0);
  static int marksIn(const std::u16string& path);

  // Opens the file, marks it and moves it to the shelf by opening nothing else.
  static void shelveFile(int binder, int file);

  // Forgets everything that a process forgets that ends without a word, and starts again.
  void restart();
  // The same with these bytes in each document, an empty shelf and no temporary files.
  void startOver(const std::string& bytes);

  static std::string index();
  static std::vector<std::u16string> shelfFiles();  // the copies
  static std::u16string copyOf(const std::u16string& path);

  // Answers the dialog of unsaved files: saves the rows with these labels only.
  static void answerDialog(const std::vector<std::u16string>& saved);

  static constexpr const char16_t* kA = u"C:\\a.pdf";
  static constexpr const char16_t* kB = u"C:\\b.pdf";
  static constexpr const char16_t* kC = u"C:\\c.pdf";

 private:
  static void start();
  static void putDocuments(const std::string& bytes);
};

}  // namespace quillmere::test
