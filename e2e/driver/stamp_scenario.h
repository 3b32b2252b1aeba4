#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "driver/scenario.h"

namespace quillmere::e2e {

inline constexpr std::uint32_t kOrange = rgb(0xE0, 0x70, 0x10);
// Orange over paper, at an alpha of 0.63.
inline constexpr std::uint32_t kOrangeGhost = rgb(235, 165, 104);
inline constexpr std::uint32_t kRotationHandle = rgb(60, 200, 100);

inline constexpr wchar_t kTextDialog[] = L"QuillmereAddTextDlg";
inline constexpr int kTextField = 1001;
inline constexpr int kFontField = 1002;
inline constexpr int kSizeField = 1003;
inline constexpr int kColorField = 1004;

std::wstring stampsFolder();

// A document with one white page.
std::string whitePage(int rotate = 0);
// A document with a white page that shows its crop box alone, which begins away from the corner of
// the page, and is turned by an entry of its own.
std::string croppedPage(int rotate);

POINT middle(const RECT& rect);

// A library of stamps and its panel, and a document to place them on.
class StampScenario : public Scenario {
 protected:
  // Stamps "s1.png" and so on with these bytes, or of these colours and of 200 by 100 pixels.
  void makeLibraryOf(const std::vector<std::string>& files);
  void makeLibrary(const std::vector<std::uint32_t>& colors);
  // Starts with the panel open and the page at its actual size.
  void startWithPanel(const std::string& document);

  HWND panel() const;
  // A client pixel of the panel on the screen.
  POINT inPanel(int x, int y) const;
  // The part of the page area that the panel leaves free, in client pixels.
  RECT page() const;
  // The middle of what is seen of this colour in the panel, on the screen.
  POINT stampInPanel(std::uint32_t color) const;
  // On the page.
  int pixelsOf(std::uint32_t color) const { return client().countAlike(page(), color); }
  RECT extentOf(std::uint32_t color) const { return client().extentAlike(page(), color); }
  // Waits until the page shows something of this colour, or nothing.
  ::testing::AssertionResult shown(std::uint32_t color, bool some) const;
  // Drags the stamp with orange in it out of the panel onto the page. The page has none yet.
  void placeOrange(POINT at);

  // Opens Add Text with a text of 48 points and moves the dialog below the window.
  void openTextDialog(const std::wstring& text);

  HWND dialog = nullptr;

 private:
  void dragOver(POINT from, POINT between, POINT to) const;

  int stamps_ = 0;
};

}  // namespace quillmere::e2e
