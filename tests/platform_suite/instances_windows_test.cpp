#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "platform/instances.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

constexpr std::uint32_t kTag = 0x514D4F31;

std::u16string receivedPath;
ULONG_PTR receivedTag = 0;
WPARAM receivedSender = 1;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_COPYDATA) return DefWindowProcW(window, message, wParam, lParam);
  const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
  receivedTag = data->dwData;
  receivedSender = wParam;
  receivedPath.assign(static_cast<const char16_t*>(data->lpData), data->cbData / 2);
  return TRUE;
}

class InstancesWindows : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = wide(className());
    RegisterClassW(&windowClass);
  }

  static const std::u16string& className() {
    static const std::u16string name = u"QuillmereSuiteInstance";
    return name;
  }

  void SetUp() override {
    for (HWND& window : windows) {
      window = CreateWindowExW(0, wide(className()), L"", WS_OVERLAPPEDWINDOW, 70, 80, 500, 400,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
  }

  void TearDown() override {
    for (const HWND window : windows) DestroyWindow(window);
  }

  static WindowId idOf(HWND window) { return reinterpret_cast<WindowId>(window); }

  HWND windows[2] = {};
};

TEST_F(InstancesWindows, WindowsAreFoundAndCountedByClass) {
  const WindowId found = findTopWindow(className());
  EXPECT_TRUE(found == idOf(windows[0]) || found == idOf(windows[1]));
  EXPECT_EQ(countTopWindows(className()), 2);
  EXPECT_EQ(countTopWindows(u"quillmeresuiteinstance"), 0);
  EXPECT_EQ(countTopWindows(className() + u"2"), 0);
}

TEST_F(InstancesWindows, TheRectIsToldUnlessMinimised) {
  ShowWindow(windows[0], SW_SHOWNORMAL);
  EXPECT_EQ(visibleWindowRect(idOf(windows[0])), (ScreenRect{70, 80, 570, 480}));
  ShowWindow(windows[0], SW_MINIMIZE);
  EXPECT_FALSE(visibleWindowRect(idOf(windows[0])));
  raiseWindow(idOf(windows[0]));
  EXPECT_FALSE(IsIconic(windows[0]));
  EXPECT_EQ(visibleWindowRect(idOf(windows[0])), (ScreenRect{70, 80, 570, 480}));
  EXPECT_FALSE(visibleWindowRect(0));
  const ScreenRect area = workAreaOfWindow(idOf(windows[0]));
  EXPECT_LT(area.left, area.right);
}

TEST_F(InstancesWindows, APathArrivesWithTagAndTerminator) {
  sendPathToWindow(idOf(windows[0]), kTag, u"C:\\a b\\報告 \U0001F4C4.pdf");
  EXPECT_EQ(receivedTag, kTag);
  EXPECT_EQ(receivedSender, 0u);
  EXPECT_EQ(receivedPath, std::u16string(u"C:\\a b\\報告 \U0001F4C4.pdf") + u'\0');
  sendPathToWindow(idOf(windows[0]), kTag, u"");
  EXPECT_EQ(receivedPath, std::u16string(1, u'\0'));
}

TEST_F(InstancesWindows, AskingToClosePostsToEachWindow) {
  closeTopWindows(className());
  for (const HWND window : windows) {
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_REMOVE));
  }
}

}  // namespace
}  // namespace quillmere::platform
