#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace quillmere::platform {

// Modeless dialogs in the order in which the message loop offers them messages.
enum class ModelessDialog { Settings, Shortcuts, About, SecurityInfo, AddText, MarkUp, Count };
inline constexpr int kModelessDialogCount = static_cast<int>(ModelessDialog::Count);

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
  std::vector<bool (*)()> whenIdle;       // to be called in turn
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

}  // namespace quillmere::platform
