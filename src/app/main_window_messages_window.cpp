#include <windows.h>

#include <commctrl.h>
#include <fpdfview.h>
#include <gdiplus.h>
#include <shellapi.h>
#include <windowsx.h>

#include <string>
#include <utility>
#include <vector>

#include "annot/markup_tip.h"
#include "annot/stamp_library.h"
#include "annot/text_tool.h"
#include "app/child_windows.h"
#include "app/commands.h"
#include "app/cursors.h"
#include "app/exit.h"
#include "app/keys.h"
#include "app/main_window_messages.h"
#include "app/menu_bar.h"
#include "app/mouse.h"
#include "app/paint.h"
#include "app/startup.h"
#include "base/limits.h"
#include "documents/open_requests.h"
#include "integration/update_check.h"
#include "nav/bookmarks.h"
#include "nav/find_bar_window.h"
#include "panels/binder_panel.h"
#include "panels/binder_panel_window.h"
#include "platform/main_window.h"
#include "platform/win32/main_window.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/data_folder.h"
#include "store/probe_path.h"
#include "store/settings.h"
#include "store/shelf.h"
#include "view/geometry.h"
#include "view/panes.h"
#include "view/status.h"
#include "view/zoom.h"

namespace quillmere {

using platform::windowHandles;

namespace {

using Result = std::optional<std::intptr_t>;

ULONG_PTR gdiplusToken = 0;

// Missing in the headers: carries copy-data from programs of lower integrity.
constexpr UINT kCopyGlobalData = 73;

struct ClientPoint {
  int x;
  int y;
};

ClientPoint pointOf(LPARAM lParam) {
  return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

void startLibraries() {
  Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&gdiplusToken, &input, nullptr);
  FPDF_LIBRARY_CONFIG config{};
  config.version = 2;
  FPDF_InitLibraryWithConfig(&config);
  INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_STANDARD_CLASSES | ICC_BAR_CLASSES |
                                                      ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controls);
}

void loadStores() {
  makeDataFolders();
  if (!session.viewerRole) LoadShelfIndex();
  LoadSettings();
  LoadStampLibrary();
}

void acceptFiles() {
  DragAcceptFiles(windowHandles.main, TRUE);
  for (const UINT message :
       {static_cast<UINT>(WM_DROPFILES), static_cast<UINT>(WM_COPYDATA), kCopyGlobalData}) {
    ChangeWindowMessageFilterEx(windowHandles.main, message, MSGFLT_ALLOW, nullptr);
  }
}

Result onCreate(WPARAM, LPARAM) {
  session.dpi = static_cast<std::int32_t>(GetDpiForWindow(windowHandles.main));
  startLibraries();
  loadStores();
  createChildWindows();
  acceptFiles();
  installMenuBar();
  layoutChildWindows();
  startAutomaticUpdateCheck();
  return 0;
}

// A name that is being typed must not hold the window open.
Result onClose(WPARAM, LPARAM) {
  cancelBinderEdit();
  if (!closeMustWait() && settleBeforeClose()) DestroyWindow(windowHandles.main);
  return 0;
}

Result onDestroy(WPARAM, LPARAM) {
  tearDown();
  releasePaintBuffers();
  if (windowHandles.headerFont != nullptr) DeleteObject(windowHandles.headerFont);
  windowHandles = {};
  Gdiplus::GdiplusShutdown(gdiplusToken);
  PostQuitMessage(0);
  return 0;
}

// The system would give the keyboard to the window itself, so a user typing in the find field would
// turn pages after looking at another program.
Result onActivate(WPARAM wParam, LPARAM) {
  if (LOWORD(wParam) == WA_INACTIVE) {
    HideMarkupTip();
    const bool known = windowHandles.keyboard != nullptr;
    if (!known && GetFocus() != nullptr) windowHandles.keyboard = platform::keyboardHolder();
    return std::nullopt;
  }
  const bool minimised = HIWORD(wParam) != 0;
  if (minimised || windowHandles.keyboard == nullptr) return std::nullopt;
  platform::giveKeyboardTo(std::exchange(windowHandles.keyboard, nullptr));
  return 0;
}

// A window being minimised takes the keyboard from its children before it is deactivated.
Result onSystemCommand(WPARAM wParam, LPARAM) {
  const bool minimises = (wParam & 0xFFF0) == SC_MINIMIZE;  // the lowest bits are the system's own
  if (minimises) windowHandles.keyboard = platform::keyboardHolder();
  return std::nullopt;
}

// After being restored, the window may get the keyboard without being activated again.
Result onFocus(WPARAM, LPARAM) {
  if (IsIconic(windowHandles.main)) return std::nullopt;
  const HWND holder = std::exchange(windowHandles.keyboard, nullptr);
  if (holder != nullptr && holder != windowHandles.main) platform::giveKeyboardTo(holder);
  return std::nullopt;
}

Result onEndSession(WPARAM ending, LPARAM) {
  if (ending) settleForLogoff();
  return 0;
}

Result onDeviceChange(WPARAM, LPARAM) {
  forgetDrives();
  return std::nullopt;
}

Result onSize(WPARAM kind, LPARAM) {
  if (kind == SIZE_MINIMIZED) return 0;
  layoutChildWindows();
  if (session.panes[0].page || session.panes[1].page) {
    refitPanes();
  } else {
    refreshStatus();
  }
  return 0;
}

Result onDpiChanged(WPARAM wParam, LPARAM lParam) {
  changeDensity(HIWORD(wParam));
  applyPanelFonts();
  applyFindBarFont();
  // A stored place is in the pixels of its own screen; scaling it at each start would make the
  // window grow for ever.
  if (windowHandles.placing) return 0;
  const auto* wanted = reinterpret_cast<const RECT*>(lParam);
  SetWindowPos(windowHandles.main, nullptr, wanted->left, wanted->top, wanted->right - wanted->left,
               wanted->bottom - wanted->top, SWP_NOZORDER | SWP_NOACTIVATE);
  onSize(SIZE_RESTORED, 0);
  return 0;
}

Result onEraseBackground(WPARAM, LPARAM) {
  return 1;
}

Result onPaint(WPARAM, LPARAM) {
  paintMainWindow();
  return 0;
}

Result onCommand(WPARAM wParam, LPARAM) {
  if (!runCommand(LOWORD(wParam))) return std::nullopt;
  return 0;
}

Result onCopyData(WPARAM, LPARAM lParam) {
  const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
  if (data == nullptr) return 0;
  const auto path = handedOverPath(data->dwData, data->lpData, data->cbData);
  if (!path) return 0;
  openHandedOver(*path);
  return 1;
}

std::vector<std::u16string> droppedPaths(HDROP drop) {
  std::vector<std::u16string> paths;
  const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    wchar_t buffer[kPathBufferUnits];
    if (DragQueryFileW(drop, i, buffer, kPathBufferUnits) == 0) {
      if (i == 0) return {};
      continue;
    }
    paths.push_back(platform::fromWide(buffer));
  }
  return paths;
}

Result onDropFiles(WPARAM wParam, LPARAM) {
  const auto drop = reinterpret_cast<HDROP>(wParam);
  const std::vector<std::u16string> paths = droppedPaths(drop);
  if (!paths.empty()) {
    POINT point{};
    DragQueryPoint(drop, &point);
    openDropped(paths, point.x);
  }
  DragFinish(drop);
  return 0;
}

Result onKeyDown(WPARAM key, LPARAM) {
  if (handleKey(static_cast<std::uint32_t>(key))) return 0;
  return std::nullopt;
}

Result onLeftDown(WPARAM, LPARAM lParam) {
  const ClientPoint point = pointOf(lParam);
  platform::focusMainWindow();
  pressLeft(point.x, point.y);
  return 0;
}

Result onLeftDoubleClick(WPARAM, LPARAM lParam) {
  const ClientPoint point = pointOf(lParam);
  doubleClickLeft(point.x, point.y);
  return 0;
}

Result onLeftUp(WPARAM, LPARAM lParam) {
  const ClientPoint point = pointOf(lParam);
  releaseLeft(point.x, point.y);
  return 0;
}

Result onMiddleDown(WPARAM, LPARAM lParam) {
  const ClientPoint point = pointOf(lParam);
  platform::focusMainWindow();
  pressMiddle(point.x, point.y);
  return 0;
}

Result onMiddleUp(WPARAM, LPARAM lParam) {
  const ClientPoint point = pointOf(lParam);
  releaseMiddle(point.x, point.y);
  return 0;
}

Result onSideButtonDown(WPARAM wParam, LPARAM lParam) {
  pressSideButton(pointOf(lParam).x, GET_XBUTTON_WPARAM(wParam) == XBUTTON2);
  return 1;
}

Result onRightUp(WPARAM, LPARAM lParam) {
  const ClientPoint point = pointOf(lParam);
  showContextMenu(releaseRight(point.x, point.y), point.x, point.y);
  return 0;
}

Result onMouseMove(WPARAM wParam, LPARAM lParam) {
  constexpr WPARAM kButtons = MK_LBUTTON | MK_MBUTTON | MK_RBUTTON | MK_XBUTTON1 | MK_XBUTTON2;
  const ClientPoint point = pointOf(lParam);
  movePointer(point.x, point.y);
  if ((wParam & kButtons) != 0) return 0;
  TRACKMOUSEEVENT leaving{sizeof(leaving), TME_LEAVE, windowHandles.main, 0};
  TrackMouseEvent(&leaving);
  hoverPointer(point.x, point.y);
  return 0;
}

Result onMouseLeave(WPARAM, LPARAM) {
  HideMarkupTip();
  leaveTextTool();
  return 0;
}

// The wheel reports screen coordinates.
Result onMouseWheel(WPARAM wParam, LPARAM lParam) {
  POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  ScreenToClient(windowHandles.main, &point);
  const WORD keys = GET_KEYSTATE_WPARAM(wParam);
  turnWheel(point.x, point.y, GET_WHEEL_DELTA_WPARAM(wParam), (keys & MK_SHIFT) != 0,
            (keys & MK_CONTROL) != 0);
  return 0;
}

// Another drag of this window may capture the mouse; that is no loss.
Result onCaptureChanged(WPARAM, LPARAM lParam) {
  if (reinterpret_cast<HWND>(lParam) != windowHandles.main) loseCapture();
  return 0;
}

Result onSetCursor(WPARAM wParam, LPARAM lParam) {
  const bool inClientArea = LOWORD(lParam) == HTCLIENT;
  if (reinterpret_cast<HWND>(wParam) != windowHandles.main || !inClientArea) return std::nullopt;
  POINT point{};
  GetCursorPos(&point);
  ScreenToClient(windowHandles.main, &point);
  const CursorKind kind = cursorAt(point.x, point.y);
  if (kind == CursorKind::Default) return std::nullopt;
  showCursor(kind);
  return 1;
}

Result onInitMenuPopup(WPARAM wParam, LPARAM) {
  refreshPopup(reinterpret_cast<const void*>(wParam));
  return 0;
}

Result onMenuLoop(WPARAM, LPARAM) {
  HideMarkupTip();
  return std::nullopt;
}

// Ignore the release notifications: the slider may have snapped to a clamped zoom.
Result onHorizontalScroll(WPARAM wParam, LPARAM lParam) {
  const auto slider = reinterpret_cast<HWND>(lParam);
  if (slider == nullptr || slider != windowHandles.zoomSlider) return std::nullopt;
  if (LOWORD(wParam) == TB_THUMBPOSITION || LOWORD(wParam) == TB_ENDTRACK) return 0;
  zoomToSliderPosition(platform::zoomSliderPosition());
  return 0;
}

// Only the user's own choice counts, not a row selected by the program or by focus.
Result onTreeSelection(const NMTREEVIEWW& change) {
  if (change.action == TVC_BYMOUSE || change.action == TVC_BYKEYBOARD) {
    JumpToTreeEntry(static_cast<std::int32_t>(change.itemNew.lParam));
  }
  return 0;
}

// Rows are added below another when it is first expanded.
Result onTreeExpanding(const NMTREEVIEWW& change) {
  if (change.action == TVE_EXPAND) FillTreeEntry(static_cast<std::int32_t>(change.itemNew.lParam));
  return 0;
}

// A click on the row that is already selected jumps there again.
Result onTreeClick() {
  const HWND tree = windowHandles.bookmarksTree;
  const DWORD place = GetMessagePos();
  TVHITTESTINFO hit{};
  hit.pt = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
  ScreenToClient(tree, &hit.pt);
  const HTREEITEM row = TreeView_HitTest(tree, &hit);
  if (row == nullptr || (hit.flags & TVHT_ONITEM) == 0 || row != TreeView_GetSelection(tree)) {
    return 0;
  }
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_PARAM;
  item.hItem = row;
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  JumpToTreeEntry(static_cast<std::int32_t>(item.lParam));
  return 0;
}

Result onNotify(WPARAM, LPARAM lParam) {
  auto* header = reinterpret_cast<NMHDR*>(lParam);
  if (header->hwndFrom != nullptr && header->hwndFrom == windowHandles.binderTree) {
    return binderTreeReports(*header);
  }
  if (header->hwndFrom == nullptr || header->hwndFrom != windowHandles.bookmarksTree) {
    return std::nullopt;
  }
  if (header->code == TVN_SELCHANGEDW) {
    return onTreeSelection(*reinterpret_cast<const NMTREEVIEWW*>(lParam));
  }
  if (header->code == TVN_ITEMEXPANDINGW) {
    return onTreeExpanding(*reinterpret_cast<const NMTREEVIEWW*>(lParam));
  }
  return header->code == static_cast<UINT>(NM_CLICK) ? onTreeClick() : std::nullopt;
}

Result onBinderTreeRebuild(WPARAM, LPARAM) {
  windowHandles.binderRebuildPosted = false;
  BuildBinderTree();
  return 0;
}

// A tree that handles a press or a box that asks must not lose its rows meanwhile; the end of that
// posts the message for waiting work.
Result onAfterPainting(WPARAM, LPARAM) {
  if (session.documentWork == 0) platform::workAfterPainting();
  return 0;
}

Result onTimer(WPARAM timer, LPARAM) {
  if (timer != platform::kIdleTimer) return std::nullopt;
  if (session.documentWork == 0) platform::workWhenIdle();
  return 0;
}

Result onWaitingWork(WPARAM, LPARAM) {
  onAfterPainting(0, 0);
  openWaiting();
  return 0;
}

Result onTitle(WPARAM, LPARAM) {
  platform::showWaitingTitle();
  return 0;
}

Result onTitleQuestion(WPARAM, LPARAM) {
  platform::showWaitingTitle();
  return std::nullopt;
}

constexpr MessageHandler kHandlers[] = {
    {WM_CREATE, onCreate},
    {WM_CLOSE, onClose},
    {WM_DESTROY, onDestroy},
    {WM_ACTIVATE, onActivate},
    {WM_SETFOCUS, onFocus},
    {WM_SYSCOMMAND, onSystemCommand},
    {WM_ENDSESSION, onEndSession},
    {WM_DEVICECHANGE, onDeviceChange},
    {WM_SIZE, onSize},
    {WM_DPICHANGED, onDpiChanged},
    {WM_ERASEBKGND, onEraseBackground},
    {WM_PAINT, onPaint},
    {WM_COMMAND, onCommand},
    {WM_COPYDATA, onCopyData},
    {WM_DROPFILES, onDropFiles},
    {WM_KEYDOWN, onKeyDown},
    {WM_LBUTTONDOWN, onLeftDown},
    {WM_LBUTTONDBLCLK, onLeftDoubleClick},
    {WM_LBUTTONUP, onLeftUp},
    {WM_MBUTTONDOWN, onMiddleDown},
    {WM_MBUTTONDBLCLK, onMiddleDown},
    {WM_MBUTTONUP, onMiddleUp},
    {WM_XBUTTONDOWN, onSideButtonDown},
    {WM_XBUTTONDBLCLK, onSideButtonDown},
    {WM_RBUTTONUP, onRightUp},
    {WM_MOUSEMOVE, onMouseMove},
    {WM_MOUSELEAVE, onMouseLeave},
    {WM_MOUSEWHEEL, onMouseWheel},
    {WM_CAPTURECHANGED, onCaptureChanged},
    {WM_SETCURSOR, onSetCursor},
    {WM_INITMENUPOPUP, onInitMenuPopup},
    {WM_ENTERMENULOOP, onMenuLoop},
    {WM_HSCROLL, onHorizontalScroll},
    {WM_NOTIFY, onNotify},
    {WM_GETTEXT, onTitleQuestion},
    {WM_GETTEXTLENGTH, onTitleQuestion},
    {platform::kBinderTreeRebuildMessage, onBinderTreeRebuild},
    {platform::kWaitingWorkMessage, onWaitingWork},
    {platform::kTitleMessage, onTitle},
    {WM_TIMER, onTimer},
    {platform::kAfterPaintingMessage, onAfterPainting},
};

}  // namespace

std::span<const MessageHandler> mainWindowHandlers() {
  return kHandlers;
}

}  // namespace quillmere
