#include "platform/main_window.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "platform/clipboard.h"
#include "platform/win32/main_window.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

constexpr wchar_t kClassName[] = L"QuillmereSuiteWindow";
constexpr UINT kCommand = 301;

// How often each message reached the main window or a child of it.
std::map<UINT, int> windowMessages;
std::map<UINT, int> childMessages;

bool movedByPlacing = false;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  ++windowMessages[message];
  if (message == WM_WINDOWPOSCHANGED) movedByPlacing = windowHandles.placing;
  if (message == WM_CLOSE) return 0;
  if (message == kTitleMessage || message == WM_GETTEXT) showWaitingTitle();
  return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK childProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  ++childMessages[message];
  return DefSubclassProc(window, message, wParam, lParam);
}

HWND createChild(HWND parent, const wchar_t* className, DWORD style) {
  const HWND child = CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 10, 10,
                                     parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  SetWindowSubclass(child, childProcedure, 1, 0);
  return child;
}

HMENU createMenuBar() {
  const HMENU bar = CreateMenu();
  const HMENU popup = CreatePopupMenu();
  AppendMenuW(popup, MF_STRING, kCommand, L"Item");
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), L"Menu");
  return bar;
}

class MainWindowWindows : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    InitCommonControls();
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);
  }

  void SetUp() override {
    const HWND main = CreateWindowExW(0, kClassName, L"", WS_OVERLAPPEDWINDOW, 50, 60, 640, 480,
                                      nullptr, createMenuBar(), GetModuleHandleW(nullptr), nullptr);
    windowHandles.main = main;
    windowHandles.statusBar = createChild(main, STATUSCLASSNAMEW, 0);
    windowHandles.zoomSlider = createChild(windowHandles.statusBar, TRACKBAR_CLASSW, 0);
    ShowWindow(main, SW_SHOWNORMAL);
    UpdateWindow(main);
    windowMessages.clear();
    childMessages.clear();
  }

  void TearDown() override {
    DestroyWindow(windowHandles.main);
    windowHandles = {};
  }
};

std::wstring statusText(WPARAM part) {
  wchar_t text[256] = {};
  SendMessageW(windowHandles.statusBar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text));
  return text;
}

TEST_F(MainWindowWindows, TheKeyboardGoesBackToTheStampPanelUnlessItIsHidden) {
  const HWND panel = createChild(windowHandles.main, WC_STATICW, 0);
  windowHandles.stampPanel = panel;
  SetFocus(windowHandles.main);
  EXPECT_EQ(keyboardHolder(), windowHandles.main);
  SetFocus(panel);
  EXPECT_EQ(keyboardHolder(), panel);
  SetFocus(windowHandles.main);
  giveKeyboardTo(panel);
  EXPECT_EQ(GetFocus(), panel);
  ShowWindow(panel, SW_HIDE);
  giveKeyboardTo(panel);
  EXPECT_EQ(GetFocus(), windowHandles.main);
}

TEST_F(MainWindowWindows, SizesAreThoseOfTheWindow) {
  RECT rect{};
  GetClientRect(windowHandles.main, &rect);
  EXPECT_TRUE(mainWindowExists());
  EXPECT_EQ(mainWindowClientSize().width, rect.right);
  EXPECT_EQ(mainWindowClientSize().height, rect.bottom);
  GetWindowRect(windowHandles.statusBar, &rect);
  EXPECT_EQ(statusBarHeight(), rect.bottom - rect.top);
  EXPECT_GT(statusBarHeight(), 10);
}

std::wstring mainWindowText() {
  wchar_t title[64] = {};
  GetWindowTextW(windowHandles.main, title, 64);
  return title;
}

bool handleTitleMessage() {
  MSG message{};
  if (!PeekMessageW(&message, windowHandles.main, kTitleMessage, kTitleMessage, PM_REMOVE)) {
    return false;
  }
  DispatchMessageW(&message);
  return true;
}

TEST_F(MainWindowWindows, TheTitleIsSetOnce) {
  setMainWindowTitle(u"Quillmere - Größe.pdf");
  setMainWindowTitle(u"Quillmere - Größe.pdf");
  EXPECT_TRUE(handleTitleMessage());
  setMainWindowTitle(u"Quillmere - Größe.pdf");
  EXPECT_FALSE(handleTitleMessage());
  EXPECT_EQ(windowMessages[WM_SETTEXT], 1);
  EXPECT_EQ(mainWindowText(), L"Quillmere - Größe.pdf");
}

TEST_F(MainWindowWindows, AQuestionForTheTitleGetsTheNewest) {
  setMainWindowTitle(u"One");
  setMainWindowTitle(u"Two");
  EXPECT_EQ(mainWindowText(), L"Two");
  EXPECT_TRUE(handleTitleMessage());
  EXPECT_EQ(windowMessages[WM_SETTEXT], 1);
}

TEST_F(MainWindowWindows, StatusPartsAndTextsAreSetOnlyWhereTheyChange) {
  const int edges[] = {88, 238, 420, -1};
  setStatusParts(edges, 4);
  setStatusParts(edges, 4);
  EXPECT_EQ(childMessages[SB_SETPARTS], 1);
  setStatusText(2, u"\t\tPage 1 of 10  ");
  setStatusText(2, u"\t\tPage 1 of 10  ");
  EXPECT_EQ(statusText(2), L"\t\tPage 1 of 10  ");
  setStatusText(2, u"\t\tPage 1 of 10  ");
  EXPECT_EQ(statusText(2), L"\t\tPage 1 of 10  ");
  EXPECT_EQ(childMessages[SB_SETTEXTW], 1);
  setStatusText(2, u"\t\tPage 2 of 10  ");
  EXPECT_EQ(statusText(2), L"\t\tPage 2 of 10  ");
  setStatusText(2, u"");
  EXPECT_EQ(statusText(2), L"");
  int told[4] = {};
  SendMessageW(windowHandles.statusBar, SB_GETPARTS, 4, reinterpret_cast<LPARAM>(told));
  EXPECT_EQ(std::vector<int>(told, told + 4), std::vector<int>(edges, edges + 4));
}

int fillings = 0;

void fillWithZoom() {
  ++fillings;
  const int edge = -1;
  setStatusParts(&edge, 1);
  setStatusText(0, u"  Zoom: 103%");
  setZoomSlider(12);
}

int worksDone = 0;
bool pagesWerePainted = false;

void noteWork() {
  ++worksDone;
  pagesWerePainted = !GetUpdateRect(windowHandles.main, nullptr, FALSE);
}

TEST_F(MainWindowWindows, WorkThatCanWaitIsDoneOnceAndAfterPainting) {
  worksDone = 0;
  invalidateMainWindow(false);
  doAfterPainting(noteWork);
  doAfterPainting(noteWork);
  EXPECT_EQ(worksDone, 0);
  EXPECT_TRUE(anyWorkAfterPainting());
  MSG message{};
  ASSERT_TRUE(PeekMessageW(&message, windowHandles.main, kAfterPaintingMessage,
                           kAfterPaintingMessage, PM_REMOVE));
  EXPECT_FALSE(PeekMessageW(&message, windowHandles.main, kAfterPaintingMessage,
                            kAfterPaintingMessage, PM_REMOVE));
  workAfterPainting();
  EXPECT_EQ(worksDone, 1);
  EXPECT_TRUE(pagesWerePainted);
  EXPECT_FALSE(anyWorkAfterPainting());
  workAfterPainting();
  EXPECT_EQ(worksDone, 1);
}

constexpr int kSlices = 100;

bool doOneSlice() {
  return ++worksDone < kSlices;
}

// As if a key were pressed during each slice.
bool doOneSliceUnderInput() {
  PostMessageW(windowHandles.main, WM_NULL, 0, 0);
  return doOneSlice();
}

void doTickOfTheIdleTimer() {
  MSG message{};
  EXPECT_GT(GetMessageW(&message, windowHandles.main, WM_TIMER, WM_TIMER), 0);
  EXPECT_EQ(message.wParam, kIdleTimer);
  workWhenIdle();
}

TEST_F(MainWindowWindows, WorkForIdleTimesGoesOnWhileNothingElseWaits) {
  worksDone = 0;
  doWhenIdle(doOneSlice);
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  int ticks = 0;
  for (; worksDone < kSlices; ++ticks) doTickOfTheIdleTimer();
  EXPECT_LT(ticks, kSlices / 2);
  EXPECT_FALSE(KillTimer(windowHandles.main, kIdleTimer));
}

TEST_F(MainWindowWindows, WorkForIdleTimesStopsAfterASliceForWhatTheUserDoes) {
  worksDone = 0;
  doWhenIdle(doOneSliceUnderInput);
  doWhenIdle(doOneSliceUnderInput);
  for (int slice = 1; slice <= kSlices; ++slice) {
    doTickOfTheIdleTimer();
    EXPECT_EQ(worksDone, slice);
  }
  EXPECT_FALSE(KillTimer(windowHandles.main, kIdleTimer));
}

void countWork() {
  ++worksDone;
}

TEST_F(MainWindowWindows, WorkForQuietTimesIsDoneOnceAtTheEndOfABurst) {
  worksDone = 0;
  const ULONGLONG start = GetTickCount64();
  for (int i = 0; i < 3; ++i) doWhenQuiet(countWork);
  EXPECT_EQ(worksDone, 0);
  MSG message{};
  while (worksDone == 0 && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  EXPECT_EQ(worksDone, 1);
  EXPECT_GE(GetTickCount64() - start, 400u);
  EXPECT_FALSE(KillTimer(windowHandles.main, reinterpret_cast<UINT_PTR>(countWork)));
}

TEST_F(MainWindowWindows, TheStatusBarIsFilledWhenItIsPainted) {
  fillings = 0;
  fillStatusBarLater(fillWithZoom);
  fillStatusBarLater(fillWithZoom);
  EXPECT_EQ(fillings, 0);
  UpdateWindow(windowHandles.statusBar);
  EXPECT_EQ(fillings, 1);
  EXPECT_EQ(statusText(0), L"  Zoom: 103%");
  UpdateWindow(windowHandles.statusBar);
  EXPECT_EQ(fillings, 1);
}

TEST_F(MainWindowWindows, TheStatusBarIsFilledWhenItIsAsked) {
  SendMessageW(windowHandles.zoomSlider, TBM_SETRANGE, FALSE, MAKELPARAM(0, 500));
  const auto asks = {+[] { statusText(0); },
                     +[] { SendMessageW(windowHandles.statusBar, SB_GETPARTS, 0, 0); },
                     +[] { SendMessageW(windowHandles.statusBar, WM_GETTEXTLENGTH, 0, 0); },
                     +[] { SendMessageW(windowHandles.zoomSlider, TBM_GETPOS, 0, 0); },
                     +[] { SendMessageW(windowHandles.zoomSlider, WM_KEYDOWN, VK_F24, 0); }};
  for (const auto ask : asks) {
    fillings = 0;
    fillStatusBarLater(fillWithZoom);
    ask();
    ask();
    EXPECT_EQ(fillings, 1);
  }
  EXPECT_EQ(SendMessageW(windowHandles.zoomSlider, TBM_GETPOS, 0, 0), 12);
}

TEST_F(MainWindowWindows, WhereTheUserMovedTheSliderIsKnownWhileTheBarWaits) {
  SendMessageW(windowHandles.zoomSlider, TBM_SETRANGE, FALSE, MAKELPARAM(0, 500));
  fillings = 0;
  fillStatusBarLater(fillWithZoom);
  SendMessageW(windowHandles.zoomSlider, TBM_SETPOS, TRUE, 15);
  EXPECT_EQ(fillings, 1);
  fillStatusBarLater(fillWithZoom);
  EXPECT_EQ(zoomSliderPosition(), 15);
  EXPECT_EQ(fillings, 1);
  UpdateWindow(windowHandles.statusBar);
  EXPECT_EQ(zoomSliderPosition(), 12);
}

TEST_F(MainWindowWindows, FillingTheBarPaintsNothingThatStaysAsItIs) {
  placeZoomSlider(90, 2, 146, 18);
  fillStatusBarLater(fillWithZoom);
  UpdateWindow(windowHandles.statusBar);
  UpdateWindow(windowHandles.zoomSlider);
  childMessages.clear();
  fillStatusBarLater(fillWithZoom);
  EXPECT_FALSE(GetUpdateRect(windowHandles.zoomSlider, nullptr, FALSE));
  RECT unpainted{};
  EXPECT_TRUE(GetUpdateRect(windowHandles.statusBar, &unpainted, FALSE));
  EXPECT_EQ(unpainted.right - unpainted.left, 1);
  UpdateWindow(windowHandles.statusBar);
  EXPECT_EQ(childMessages[SB_SETTEXTW], 0);
}

TEST_F(MainWindowWindows, TheSliderIsPlacedMovedAndEnabled) {
  SendMessageW(windowHandles.zoomSlider, TBM_SETRANGE, FALSE, MAKELPARAM(0, 500));
  placeZoomSlider(90, 2, 146, 18);
  RECT rect{};
  GetWindowRect(windowHandles.zoomSlider, &rect);
  MapWindowPoints(nullptr, windowHandles.statusBar, reinterpret_cast<POINT*>(&rect), 2);
  EXPECT_EQ(rect.left, 90);
  EXPECT_EQ(rect.top, 2);
  EXPECT_EQ(rect.right - rect.left, 146);
  EXPECT_EQ(rect.bottom - rect.top, 18);
  childMessages.clear();
  placeZoomSlider(90, 2, 146, 18);
  EXPECT_EQ(childMessages[WM_WINDOWPOSCHANGING], 0);
  for (int n = 0; n < 2; ++n) {
    enableZoomSlider(false);
    setZoomSlider(120);
  }
  EXPECT_EQ(childMessages[TBM_SETPOS], 1);
  EXPECT_EQ(childMessages[WM_ENABLE], 1);
  EXPECT_FALSE(IsWindowEnabled(windowHandles.zoomSlider));
  enableZoomSlider(true);
  EXPECT_TRUE(IsWindowEnabled(windowHandles.zoomSlider));
  EXPECT_EQ(SendMessageW(windowHandles.zoomSlider, TBM_GETPOS, 0, 0), 120);
}

TEST_F(MainWindowWindows, MenuItemsAreCheckedAndEnabledByCommand) {
  const auto state = [] { return GetMenuState(GetMenu(windowHandles.main), kCommand, 0); };
  setMenuItem(kCommand, true, false);
  EXPECT_TRUE(state() & MF_CHECKED);
  EXPECT_TRUE(state() & MF_GRAYED);
  setMenuItem(kCommand, false, true);
  EXPECT_FALSE(state() & (MF_CHECKED | MF_GRAYED));
  setMenuItem(kCommand, false, true);
  setMenuItem(kCommand, false, false);
  EXPECT_TRUE(state() & MF_GRAYED);
}

TEST_F(MainWindowWindows, MenuItemsMadeAnewGetTheirStateAgain) {
  setMenuItem(kCommand, true, false);
  SetMenu(windowHandles.main, createMenuBar());
  windowHandles.menuItems.clear();
  setMenuItem(kCommand, true, false);
  EXPECT_TRUE(GetMenuState(GetMenu(windowHandles.main), kCommand, 0) & MF_CHECKED);
}

TEST_F(MainWindowWindows, ALayoutIsDoneByTheWindowThatOffersIt) {
  static int layouts = 0;
  layoutMainWindow();
  EXPECT_EQ(layouts, 0);
  windowHandles.layoutChildren = [] { ++layouts; };
  layoutMainWindow();
  EXPECT_EQ(layouts, 1);
}

TEST_F(MainWindowWindows, InvalidatingPaintsOnUpdateAlone) {
  invalidateMainWindow(false);
  EXPECT_EQ(windowMessages[WM_PAINT], 0);
  updateMainWindow();
  EXPECT_EQ(windowMessages[WM_PAINT], 1);
  EXPECT_EQ(windowMessages[WM_ERASEBKGND], 0);
  invalidateMainWindow(true);
  updateMainWindow();
  EXPECT_EQ(windowMessages[WM_PAINT], 2);
}

TEST_F(MainWindowWindows, APartThatIsInvalidIsPaintedAlone) {
  updateMainWindow();
  invalidateMainWindowPart(10, 20, 40, 60);
  RECT invalid{};
  EXPECT_TRUE(GetUpdateRect(windowHandles.main, &invalid, FALSE));
  EXPECT_EQ(invalid.left, 10);
  EXPECT_EQ(invalid.top, 20);
  EXPECT_EQ(invalid.right, 40);
  EXPECT_EQ(invalid.bottom, 60);
}

TEST_F(MainWindowWindows, PagesArePaintedWithoutTheChildren) {
  setStatusText(0, u"x");
  invalidateMainWindow(false);
  InvalidateRect(windowHandles.statusBar, nullptr, FALSE);
  childMessages.clear();
  updatePages();
  EXPECT_EQ(windowMessages[WM_PAINT], 1);
  EXPECT_EQ(childMessages[WM_PAINT], 0);
}

TEST_F(MainWindowWindows, PagesArePaintedBeforeACaptionThatChanges) {
  setMainWindowTitle(u"One");
  invalidateMainWindow(false);
  EXPECT_EQ(windowMessages[WM_PAINT], 0);
  EXPECT_EQ(windowMessages[WM_SETTEXT], 0);
  handleTitleMessage();
  EXPECT_EQ(windowMessages[WM_PAINT], 1);
  EXPECT_EQ(windowMessages[WM_SETTEXT], 1);
  setMainWindowTitle(u"Two");
  setMainWindowTitle(u"One");
  invalidateMainWindow(false);
  handleTitleMessage();
  EXPECT_EQ(windowMessages[WM_PAINT], 1);
}

TEST_F(MainWindowWindows, TheRebuildIsPostedAndTheCloseIsSent) {
  postBinderTreeRebuild();
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, windowHandles.main, kBinderTreeRebuildMessage,
                           kBinderTreeRebuildMessage, PM_REMOVE));
  closeMainWindow();
  EXPECT_EQ(windowMessages[WM_CLOSE], 1);
}

TEST_F(MainWindowWindows, RebuildsAreOneUntilTheMessageIsHandled) {
  const auto takeRebuild = [] {
    MSG message{};
    return PeekMessageW(&message, windowHandles.main, kBinderTreeRebuildMessage,
                        kBinderTreeRebuildMessage, PM_REMOVE) != FALSE;
  };
  for (int i = 0; i < 3; ++i) postBinderTreeRebuild();
  EXPECT_TRUE(takeRebuild());
  EXPECT_FALSE(takeRebuild());
  windowHandles.binderRebuildPosted = false;
  postBinderTreeRebuild();
  EXPECT_TRUE(takeRebuild());
}

TEST_F(MainWindowWindows, TheMouseIsCapturedAndReleased) {
  captureMouse();
  EXPECT_EQ(GetCapture(), windowHandles.main);
  releaseMouse();
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(MainWindowWindows, APlacementComesBack) {
  placeMainWindow({{120, 130, 720, 630}, false});
  const std::optional<WindowPlacement> placement = mainWindowPlacement();
  ASSERT_TRUE(placement);
  EXPECT_EQ(placement->normal, (ScreenRect{120, 130, 720, 630}));
  EXPECT_FALSE(placement->maximised);
  placeMainWindow({{120, 130, 720, 630}, true});
  ASSERT_TRUE(mainWindowPlacement());
  EXPECT_TRUE(mainWindowPlacement()->maximised);
  EXPECT_EQ(mainWindowPlacement()->normal, (ScreenRect{120, 130, 720, 630}));
}

TEST_F(MainWindowWindows, APlacementIsTellableFromTheUsersMovement) {
  placeMainWindow({{120, 130, 720, 630}, false});
  EXPECT_TRUE(movedByPlacing);
  SetWindowPos(windowHandles.main, nullptr, 140, 150, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  EXPECT_FALSE(movedByPlacing);
}

TEST_F(MainWindowWindows, TheClipboardWorksWithAnOwner) {
  ASSERT_TRUE(setClipboardText(u"owned"));
  EXPECT_EQ(clipboardText(), u"owned");
}

TEST(NoMainWindowWindows, WithoutAWindowEveryCallIsHarmless) {
  ASSERT_EQ(windowHandles.main, nullptr);
  EXPECT_FALSE(mainWindowExists());
  EXPECT_EQ(mainWindowClientSize().width, 0);
  EXPECT_EQ(statusBarHeight(), 0);
  EXPECT_FALSE(mainWindowPlacement());
  const int edge = -1;
  setMainWindowTitle(u"x");
  invalidateMainWindow(true);
  updateMainWindow();
  updatePages();
  fillStatusBarLater(fillWithZoom);
  setStatusParts(&edge, 1);
  setStatusText(0, u"x");
  placeZoomSlider(0, 0, 1, 1);
  enableZoomSlider(true);
  setZoomSlider(1);
  EXPECT_EQ(zoomSliderPosition(), 0);
  setMenuItem(kCommand, true, true);
  layoutMainWindow();
  refreshCursor();
  captureMouse();
  releaseMouse();
  focusMainWindow();
  focusNavigationTree();
  focusBinderTree();
  postBinderTreeRebuild();
  placeMainWindow({});
  closeMainWindow();
}

}  // namespace
}  // namespace quillmere::platform
