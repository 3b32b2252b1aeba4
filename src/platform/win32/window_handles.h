#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillmere::platform {

// Modeless dialogs in the order in which the message loop offers them messages.
enum class ModelessDialog { Settings, Shortcuts, About, SecurityInfo, AddText, MarkUp };
inline constexpr int kModelessDialogCount = 6;

struct MenuItemState {
  bool checked = false;
  bool enabled = false;
  bool operator==(const MenuItemState&) const = default;
};

// The windows of this process; null before they are created and after they are destroyed. The main
// window owns its children.
struct WindowHandles {
  HWND main = nullptr;
  HACCEL accelerators = nullptr;
  HWND statusBar = nullptr;
  HWND zoomSlider = nullptr;
  HWND findBar = nullptr;
  HWND findField = nullptr;
  HWND findStatus = nullptr;
  std::u16string findStatusText;
  bool findStatusWaits = false;      // not shown by the label yet
  HWND watchedFindStatus = nullptr;  // the label subclassed for that
  HWND findMatchCase = nullptr;
  HWND findWholeWord = nullptr;
  HWND stampPanel = nullptr;
  HWND bookmarksHeader = nullptr;
  HWND bookmarksTree = nullptr;
  HWND binderHeader = nullptr;
  HWND binderTree = nullptr;
  HFONT headerFont = nullptr;  // of the panel headers; owned by the main window
  HWND keyboard = nullptr;     // gets it back once the main window is activated; null for none
  HWND dialogs[kModelessDialogCount] = {};
  std::vector<void (*)()> afterPainting;  // to be called in this order
  void (*layoutChildren)() = nullptr;     // moves the children to their places
  // What the items of the menu bar show, by command. Cleared when the items are created again.
  std::unordered_map<std::uint32_t, MenuItemState> menuItems;
  bool binderRebuildPosted = false;   // and not handled yet
  bool placing = false;               // the main window is being moved to its stored place
  std::u16string title;               // of the main window
  bool titleWaits = false;            // the caption does not show it yet
  void (*fillStatusBar)() = nullptr;  // called before the status bar next shows anything
  HWND watchedStatusBar = nullptr;    // the bar subclassed for that
  std::vector<std::u16string> statusTexts;
  std::vector<int> statusPartEdges;  // right edges in pixels
};

extern WindowHandles windowHandles;

// The window to give the keyboard back to after a box, a dialog or another program had it: the tree
// or the control of the find bar that has it now, otherwise the main window.
HWND keyboardHolder();
// Gives the keyboard to that window, or to the main window if it has been hidden, disabled or
// destroyed.
void giveKeyboardTo(HWND holder);

// The text of a window of this process.
std::u16string windowText(HWND window);

// Posted to the main window; rebuilds the binder tree.
inline constexpr UINT kBinderTreeRebuildMessage = WM_APP + 1;

// Posted to the main window; handles work that had to wait.
inline constexpr UINT kWaitingWorkMessage = WM_APP + 201;

// Posted to the main window, which calls workAfterPainting() for it as soon as no other work is
// under way.
inline constexpr UINT kAfterPaintingMessage = WM_APP + 202;

// Paints invalid pages, then does what doAfterPainting() was asked for.
void workAfterPainting();

// Posted to the main window, which calls showWaitingTitle() for it and when asked for its text.
inline constexpr UINT kTitleMessage = WM_APP + 200;

// The position to which the user moved the zoom slider. Bypasses the subclass that fills a waiting
// status bar, since filling it would move the slider back to the previous zoom.
int zoomSliderPosition();

// Sets the main window's waiting title, after painting invalid pages.
void showWaitingTitle();

}  // namespace quillmere::platform
