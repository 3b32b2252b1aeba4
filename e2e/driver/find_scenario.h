#pragma once

#include <string>

#include "driver/scenario.h"

namespace quillmere::e2e {

enum FindBarControl {
  kField = 410,
  kPrevious = 411,
  kNext = 412,
  kHits = 413,
  kClose = 414,
  kMatchCase = 415,
  kLiteral = 418,
  kRegex = 419,
  kWholeWord = 421,
};

// Searches as a user does: in the find bar, with keyboard and mouse.
class FindScenario : public Scenario {
 protected:
  HWND control(int id) const { return GetDlgItem(findBar(), id); }
  bool barShown() const { return IsWindowVisible(findBar()) != FALSE; }
  // Presses Ctrl+F and waits until the field has the focus.
  void openFindBar() const;
  // Opens the bar and types over whatever is in the field.
  void lookFor(const std::wstring& text) const;
  void clickControl(int id) const;
  bool isChecked(int id) const;
  ::testing::AssertionResult checkBecomes(int id, bool wanted) const;

  ::testing::AssertionResult fieldBecomes(const std::wstring& wanted) const;
  // Waits for this text about the hits, at the right end of the bar.
  ::testing::AssertionResult hitsBecome(const std::wstring& wanted) const;
  // Waits until the control, or the window itself for 0, has the focus.
  ::testing::AssertionResult keyboardGoesTo(int id) const;
};

// The colours of hits on white paper.
std::uint32_t hitColor();
std::uint32_t currentHitColor();

}  // namespace quillmere::e2e
