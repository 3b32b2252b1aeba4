#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "driver/scenario.h"

namespace quillmere::e2e {

// A tree of the left panel, the navigation tree unless a scenario says otherwise, as a person uses
// it by mouse and keyboard.
class TreeScenario : public Scenario {
 protected:
  void SetUp() override;
  void startGrouped(bool underBookmarks, const std::string& bytes);
  HWND tree() const { return childOf(window, treeId); }
  // "depth|text" for each row that was filled in.
  std::vector<std::wstring> rows() const;
  bool rowSelected(const std::wstring& text) const;
  RECT rowPlace(const std::wstring& text) const;
  bool rowShown(const std::wstring& text) const;
  void clickRow(const std::wstring& text);
  // The button before a row's text, which opens and closes the rows below it.
  void clickButtonOf(const std::wstring& text);
  // Here two clicks close together count as a double click, so move each away from the one before.
  void clickAside(POINT place);
  HTREEITEM itemAfterRoot(int count) const;

  int treeId = 401;
  LONG lastX = 0;
};

}  // namespace quillmere::e2e
