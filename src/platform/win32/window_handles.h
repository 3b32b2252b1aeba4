#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace quillmere::platform {

// Modeless dialogs in the order in which the message loop asks them.
enum class ModelessDialog { Settings, Shortcuts, About, SecurityInfo, AddText, MarkUp };
inline constexpr int kModelessDialogCount = 6;

// One part of the status bar: what it is to show, and whether the bar has yet to get it.
struct StatusPart {
  std::u16string text;
  bool waiting = false;
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
  HWND findMatchCase = nullptr;
  HWND findWholeWord = nullptr;
  HWND stampPanel = nullptr;
  HWND bookmarksHeader = nullptr;
  HWND bookmarksTree = nullptr;
  HWND binderHeader = nullptr;
  HWND binderTree = nullptr;
  HFONT headerFont = nullptr;  // of the panel headers; owned by the main window
  HWND dialogs[kModelessDialogCount] = {};
  void (*layoutChildren)() = nullptr;  // puts the children in their places
  HWND statusTextsHeldBy = nullptr;    // the status bar, once it takes its texts when it is painted
  std::vector<StatusPart> statusParts;
  std::vector<int> statusPartEdges;  // right ends in pixels
};

extern WindowHandles windowHandles;

// The text of a window of this process.
std::u16string windowText(HWND window);

// Posted to the main window; rebuilds the binder tree.
inline constexpr UINT kBinderTreeRebuildMessage = WM_APP + 1;

}  // namespace quillmere::platform
