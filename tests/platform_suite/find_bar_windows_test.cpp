#include "platform/find_bar.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/win32/main_window.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

class FindBarWindows : public testing::Test {
 protected:
  void SetUp() override {
    bar_ = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 20, 20, 200, 40, nullptr,
                           nullptr, GetModuleHandleW(nullptr), nullptr);
    windowHandles.findStatus =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 90, 20, bar_, nullptr,
                        GetModuleHandleW(nullptr), nullptr);
    windowHandles.findField =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 100, 0, 90, 20,
                        bar_, nullptr, GetModuleHandleW(nullptr), nullptr);
    UpdateWindow(windowHandles.findStatus);
  }

  void TearDown() override {
    DestroyWindow(bar_);
    windowHandles = {};
  }

  HWND bar_ = nullptr;
};

bool waitsForPainting() {
  return GetUpdateRect(windowHandles.findStatus, nullptr, FALSE) != 0;
}

TEST_F(FindBarWindows, AStatusWaitsForThePaintingOfItsLabel) {
  setFindStatus(u"1 on page");
  setFindStatus(u"2 on page");
  EXPECT_TRUE(waitsForPainting());
  EXPECT_TRUE(windowHandles.findStatusWaits);
  UpdateWindow(windowHandles.findStatus);
  EXPECT_FALSE(windowHandles.findStatusWaits);
  EXPECT_EQ(windowText(windowHandles.findStatus), u"2 on page");
}

TEST_F(FindBarWindows, EitherQuestionForTheStatusGetsTheNewest) {
  setFindStatus(u"No results");
  wchar_t text[64] = {};
  SendMessageW(windowHandles.findStatus, WM_GETTEXT, 64, reinterpret_cast<LPARAM>(text));
  EXPECT_EQ(std::wstring(text), L"No results");
  setFindStatus(u"");
  EXPECT_EQ(SendMessageW(windowHandles.findStatus, WM_GETTEXTLENGTH, 0, 0), 0);
}

TEST_F(FindBarWindows, TheSameStatusIsNotPaintedAgain) {
  setFindStatus(u"0 on page");
  UpdateWindow(windowHandles.findStatus);
  setFindStatus(u"0 on page");
  EXPECT_FALSE(waitsForPainting());
}

TEST_F(FindBarWindows, ANewLabelStartsEmpty) {
  setFindStatus(u"0 on page");
  TearDown();
  SetUp();
  setFindStatus(u"");
  EXPECT_EQ(windowText(windowHandles.findStatus), u"");
  setFindStatus(u"0 on page");
  EXPECT_EQ(windowText(windowHandles.findStatus), u"0 on page");
}

TEST_F(FindBarWindows, TheFieldsTextComesBackWhole) {
  EXPECT_EQ(findFieldText(), u"");
  for (const std::u16string text : {u"a", u"Größe 日本 \U0001F600"}) {
    setFindFieldText(text);
    EXPECT_EQ(findFieldText(), text);
  }
  setFindFieldText(std::u16string(3000, u'x'));
  EXPECT_EQ(findFieldText(), std::u16string(3000, u'x'));
}

TEST_F(FindBarWindows, InsertedTextReplacesWhatIsSelected) {
  setFindFieldText(u"before");
  focusFindField();
  insertIntoFindField(u"after");
  EXPECT_EQ(findFieldText(), u"after");
}

TEST(NoFindBarWindows, WithoutABarEveryCallIsHarmless) {
  setFindStatus(u"x");
  setFindFieldText(u"x");
  focusFindField();
  insertIntoFindField(u"x");
  enableFindOptions(true);
  EXPECT_EQ(findFieldText(), u"");
}

}  // namespace
}  // namespace quillmere::platform
