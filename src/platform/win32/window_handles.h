#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillmere::platform {

// Modeless dialogs in the order in which the message loop asks them.
enum class ModelessDialog { Settings, Shortcuts, About, SecurityInfo, AddText, MarkUp };
inline constexpr int kModelessDialogCount = 6;

struct MenuItemState {
  bool checked = false;
  bool enabled = false;
  bool operator==(const MenuItemState&) const = default;
};

// The windows of this process; null before they are made and after they are gone. The main window
// owns its children.
struct WindowHandles {
  HWND main = nullptr;
  HACCEL accelerators = nullptr;
  HWND statusBar = nullptr;
  HWND zoomSlider = nullptr;
  HWND findBar = nullptr;
  HWND findField = nullptr;
  HWND findStatus = nullptr;
  std::u16string findStatusText;
  bool findStatusWaits = false;      // the label does not show it yet
  HWND watchedFindStatus = nullptr;  // the one that is told of it so
  HWND findMatchCase = nullptr;
  HWND findWholeWord = nullptr;
  HWND stampPanel = nullptr;
  HWND bookmarksHeader = nullptr;
  HWND bookmarksTree = nullptr;
  HWND binderHeader = nullptr;
  HWND binderTree = nullptr;
  HFONT headerFont = nullptr;  // of the panel headers; owned by the main window
  HWND keyboard = nullptr;  // who gets it back once the main window is activated; null for nobody
  HWND dialogs[kModelessDialogCount] = {};
  void (*layoutChildren)() = nullptr;  // puts the children in their places
  // What the items of the menu bar show, by command. Whoever makes items anew empties it.
  std::unordered_map<std::uint32_t, MenuItemState> menuItems;
  bool placing = false;               // the main window is being put where it was stored to be
  std::u16string title;               // of the main window
  bool titleWaits = false;            // it does not show it yet
  void (*fillStatusBar)() = nullptr;  // called before the status bar shows anything next
  HWND watchedStatusBar = nullptr;    // the one that is filled so
  std::vector<std::u16string> statusTexts;
  std::vector<int> statusPartEdges;  // right ends in pixels
};

extern WindowHandles windowHandles;

// Who gets the keyboard back after a box, a dialog or another program had it: the tree or the
// control of the find bar that has it now, otherwise the main window.
HWND keyboardHolder();
// Gives the keyboard to it, or to the main window when it was hidden, disabled or destroyed since.
void giveKeyboardTo(HWND holder);

// The text of a window of this process.
std::u16string windowText(HWND window);

// Posted to the main window; rebuilds the binder tree.
inline constexpr UINT kBinderTreeRebuildMessage = WM_APP + 1;

// Posted to the main window; deals with what had to wait.
inline constexpr UINT kWaitingWorkMessage = WM_APP + 201;

// Posted to the main window, which answers it, and a question for its text, with
// showWaitingTitle().
inline constexpr UINT kTitleMessage = WM_APP + 200;

// Where the user moved the zoom slider to, also while the status bar waits to be filled with the
// zoom of before.
int zoomSliderPosition();

// Gives the main window the title that it has yet to get, after invalid pages.
void showWaitingTitle();

}  // namespace quillmere::platform
