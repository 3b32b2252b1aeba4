#pragma once

#include <string>
#include <vector>

#include "driver/tree_scenario.h"

namespace quillmere::e2e {

// The binder tree as a person uses it, by mouse and keyboard.
class BinderScenario : public TreeScenario {
 protected:
  void SetUp() override;

  // Writes a binder's file, which the program loads at its start, and returns its path.
  std::wstring makeBinder(const std::wstring& name, const std::vector<std::wstring>& files);
  // Two documents and "Work" with both, and "Rest" without any; starts the program.
  void startWithBinders();

  // Waits for these rows.
  ::testing::AssertionResult rowsBecome(const std::vector<std::wstring>& wanted) const;
  // Waits until the row has these states of the control (TVIS_BOLD and so on), or has not.
  bool rowHas(const std::wstring& text, UINT state, bool wanted = true) const;
  // Waits until the tree has the keyboard.
  bool treeHasKeyboard() const;

  // Waits until the tree has the mouse, as while a button is down on it.
  bool treeHasMouse() const;
  // What names each row in the control, from top to bottom; a rebuild makes new ones.
  std::vector<LRESULT> rowHandles() const;
  // Its place among all rows, from 0.
  int firstVisibleRow() const;
  // Delivers a rebuild as the program posts it to itself, and waits until that was handled.
  void deliverRebuild() const;

  // Opens the menu of a row; the tree's empty space for an empty text.
  void openMenuOf(const std::wstring& text);
  // Waits until a menu is open.
  bool menuIsOpen() const;
  std::vector<std::wstring> menuRows() const;
  // Chooses a row of the open menu, counted from 1 without separators.
  void chooseInMenu(int row) const;
  HWND dialogOfClass(const wchar_t* className) const;

  // Starts the in-place edit of a binder's name.
  void startRename(const std::wstring& name);

  // Presses on a row and moves far enough for a drag; returns where the pointer is then.
  POINT startDrag(const std::wstring& row);
  // Drags the upper or the lower half of a row.
  void dragRow(const std::wstring& from, const std::wstring& to, bool lowerHalf);
  POINT pointOf(const std::wstring& text, bool lowerHalf = false) const;
  // Another place if the last press was there, since two of them would be a double click.
  POINT aside(POINT place);

  // A path of ASCII letters as a binder's file has it.
  static std::string bytesOf(const std::wstring& path);
  // Lines of a binder's file, without the mark and the head.
  static std::vector<std::string> documentsIn(const std::wstring& binder);

  std::wstring first;
  std::wstring second;
  std::wstring work;  // path of its file

 private:
  int binders_ = 0;
};

inline const std::wstring kNewBinderRow = L"\u2795 New Binder...";
inline const std::wstring kAddDocumentRow = L"\u2795 Add Document...";

inline const std::vector<std::wstring> kStartRows{L"0|" + kNewBinderRow,
                                                  L"0|Working Documents",
                                                  L"0|Work",
                                                  L"1|" + kAddDocumentRow,
                                                  L"1|first",
                                                  L"1|second",
                                                  L"0|Rest",
                                                  L"1|" + kAddDocumentRow};

}  // namespace quillmere::e2e
