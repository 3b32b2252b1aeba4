#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "driver/boxes.h"
#include "driver/files.h"
#include "driver/input.h"
#include "driver/pages.h"
#include "driver/program.h"
#include "driver/screen.h"
#include "driver/wait.h"

namespace quillmere::e2e {

// Each scenario begins with no program running and clean folders, leaves a picture of the screen
// and checks that every program ends by itself.
class Scenario : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Starts the program, waits for its window and brings it to the front.
  void start(const std::wstring& rest = {});
  // Makes a file with these bytes and starts the program with it.
  void startWith(const std::string& bytes, const std::wstring& name = L"one.pdf");
  // One file in the left pane, which is the active one, and "two.pdf" in the right one.
  void startWithTwo(const std::string& first, const std::string& second);
  // Brings the first program's window to the front again, so that it gets the keys even when other
  // programs run.
  void toFront() const;

  std::wstring title() const { return titleOf(window); }
  std::wstring status(int part) const { return statusText(window, part); }
  bool titleBecomes(const std::wstring& wanted) const;
  // Waits for the page text of the status bar; leave out its tabs and trailing blanks.
  ::testing::AssertionResult pageTextBecomes(const std::wstring& wanted) const;
  ::testing::AssertionResult zoomTextBecomes(const std::wstring& wanted) const;
  // Waits until a pixel of the client area has this colour.
  ::testing::AssertionResult pixelBecomes(int x, int y, std::uint32_t color) const;
  // Waits until the page seen in `area` of the client area is at `wanted`.
  ::testing::AssertionResult pageBecomes(RECT area, RECT wanted) const;
  // Waits for a message box with this text and answers it with a key.
  ::testing::AssertionResult boxSays(const std::wstring& text, WORD key = VK_RETURN) const;
  // Waits for the menu item's check mark or greying.
  bool becomesChecked(int id) const;
  // The screen position of a client pixel of the window.
  POINT onScreen(int x, int y) const;
  Picture client() const { return captureClient(window); }
  HWND findBar() const;
  // The program's tip that is on the screen; null when there is none.
  HWND shownTip() const;
  // The client area without panels, find bar and status bar.
  RECT pageArea() const;
  // The panes side by side, with the 2-pixel divider in the middle.
  RECT leftPane() const;
  RECT rightPane() const;
  bool paneIsActive(RECT pane) const;
  POINT middleOf(RECT area) const;
  void picture(const std::string& name) const;

  Program program;
  HWND window = nullptr;
  bool promptAnswered = true;
};

std::wstring trimmed(std::wstring text);

// Where a page is, in client pixels, found by its paper and contents: everything that differs from
// background and shadow.
RECT pageOnScreen(const Picture& client, RECT area);

inline constexpr std::uint32_t kBackground = rgb(70, 70, 70);
inline constexpr std::uint32_t kShadow = rgb(30, 30, 30);
inline constexpr std::uint32_t kPaper = rgb(255, 255, 255);
inline constexpr std::uint32_t kDivider = rgb(40, 40, 40);
inline constexpr std::uint32_t kSplitter = rgb(45, 45, 45);
inline constexpr std::uint32_t kFrame = rgb(80, 140, 220);

}  // namespace quillmere::e2e
