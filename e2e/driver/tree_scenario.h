#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "driver/scenario.h"

namespace quillmere::e2e {

// The navigation tree as a person uses it, by mouse and keyboard.
class TreeScenario : public Scenario {
 protected:
  void SetUp() override;
  void startGrouped(bool underBookmarks, const std::string& bytes);
  HWND tree() const { return childOf(window, 401); }
  // "depth|text" for each row that was filled in.
  std::vector<std::wstring> rows() const;
  bool rowSelected(const std::wstring& text) const;
  RECT rowPlace(const std::wstring& text) const;
  bool rowShown(const std::wstring& text) const;
  void clickRow(const std::wstring& text);
  // The button before a row's text opens and closes what stands below it.
  void clickButtonOf(const std::wstring& text);
  // Two clicks below each other count as a double click here, so none stands below the one before.
  void clickAside(POINT place);
  HTREEITEM itemAfterRoot(int count) const;

  LONG lastX = 0;
};

}  // namespace quillmere::e2e
