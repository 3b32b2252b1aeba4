#pragma once

#include <windows.h>

// Requests that a test runs inside the program's process, since handles of menus and dropped files
// are valid only there. A message hook loads the library inside.dll into it; request and answer are
// in a shared block of memory.
namespace quillmere::e2e {

constexpr wchar_t kInsideMessage[] = L"QuillmereEndToEndInside";
constexpr wchar_t kInsideBlock[] = L"Local\\QuillmereEndToEndInside";

enum class InsideRequest : WPARAM {
  // lParam: a menu; the menu bar when 0. Answer: a line for each row, "depth|id|state|text", with
  // -1 for the id of a submenu. Before reading a submenu it tells the window that the submenu
  // opens.
  DescribeMenu = 1,
  // Text: the paths to drop, each ended by a zero unit. lParam: the place in client pixels.
  DropFiles = 2,
  // lParam: a tree view. Answer: a line for each visible item, "depth|selected|text".
  DescribeTree = 3,
  // lParam: the part of the status bar. Answer: its text.
  StatusText = 4,
  // Answer: "1" while keys or mouse events wait in the queue of the window's thread, else "0".
  InputWaits = 5,
  // lParam: a tree view; text: what a row reads. Answer: the place of that text in client pixels,
  // "left top right bottom", or empty when the row is not visible.
  TreeRowPlace = 6,
  // lParam: a control. Answer: "face|height|weight" of its font.
  DescribeFont = 7,
  // Answer: the handle of the pointer's picture as a number.
  Cursor = 8,
  // lParam: the density that the window's screen now has; the window keeps its place.
  ChangeDensity = 9,
  // Answer: the right edges of the status bar's parts in pixels, each after a blank.
  StatusParts = 10,
  // lParam: a tree view; text: what a row reads. Answer: the text of the row's tip.
  TreeRowTip = 11,
  // Text: how the paths of a share begin, which is silent from now on. Answer: "1" when it is.
  SilenceShare = 12,
};

struct InsideBlock {
  LONG done;  // 1 when the answer is ready
  DWORD units;
  wchar_t text[64 * 1024];
};

}  // namespace quillmere::e2e
