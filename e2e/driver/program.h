#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The program under test: its processes, windows and what they show.
namespace quillmere::e2e {

constexpr wchar_t kMainClass[] = L"QuillmereWnd";
constexpr wchar_t kViewerClass[] = L"QuillmereViewerWnd";

struct MenuItem {
  int depth;
  int id;  // -1 for a submenu
  bool separator;
  bool checked;
  bool grayed;
  std::wstring text;
};

// A process. It does not own the process: endPrograms() ends what startProgram() started.
struct Program {
  HANDLE process = nullptr;
  DWORD id = 0;

  bool running() const;
  // Waits for the process to end and returns its exit code; STILL_ACTIVE when it did not end in
  // time.
  DWORD exitCode() const;
  // Its first window of a class; null when there is none (yet).
  HWND find(const wchar_t* className) const;
  // Waits until the main or viewer window is shown and returns it.
  HWND window() const;
};

// Starts quillmere.exe with `rest` behind its own name on the command line, as it stands; it works
// in `folder`, or in that of the tests.
Program startProgram(const std::wstring& rest = {}, const std::wstring& folder = {});
// Asks every window of programs started here or by them to close, and answers for whoever does not.
// False when a process had to be terminated.
bool endPrograms();

std::wstring inQuotes(const std::wstring& path);

std::wstring titleOf(HWND window);
std::wstring classOf(HWND window);
// The text or value of a control of the program.
std::wstring controlText(HWND control);
std::vector<HWND> windowsOfClass(const wchar_t* className);
// A child of the window by its control id, at any depth.
HWND childOf(HWND window, int id);
// The focused window in this window's thread.
HWND focusOf(HWND window);
HWND statusBarOf(HWND window);
std::wstring statusText(HWND window, int part);
RECT windowRect(HWND window);
RECT clientOnScreen(HWND window);

std::vector<MenuItem> menuBar(HWND window);
// The item with this id in the menu bar; an item without text when there is none.
MenuItem menuItem(HWND window, int id);
std::vector<MenuItem> describeMenu(HWND window, HMENU menu);
// "depth|selected|text" for each item.
std::vector<std::wstring> treeItems(HWND window, HWND tree);
// Screen rectangle of the text of the first row with this text; empty when the row is not visible.
RECT treeRowOnScreen(HWND window, HWND tree, const std::wstring& text);
// The tip of the first row with this text.
std::wstring treeRowTip(HWND window, HWND tree, const std::wstring& text);
// "face|height|weight" of a control's font.
std::wstring fontOf(HWND window, HWND control);
void dropFiles(HWND window, POINT client, const std::vector<std::wstring>& paths);
// Sends copy-data with this tag, as any program may.
constexpr ULONG_PTR kOpenFileTag = 0x514D4F31;  // "QMO1"
void sendCopyData(HWND window, ULONG_PTR tag, const void* bytes, DWORD size);
// Sends what a second launch sends.
void sendPath(HWND window, const std::wstring& path);
// The same, without waiting until a box that may follow is answered.
void sendPathAndReturn(HWND window, const std::wstring& path);
void runCommand(HWND window, int id);
// Tells the window that its screen's density has changed.
void changeDensity(HWND window, int dpi);
// The right edges of the status bar's parts, in pixels; -1 for "to the end".
std::vector<int> statusParts(HWND window);
// Identifies the pointer's picture while it is over the window, for comparisons.
std::wstring cursorOf(HWND window);

}  // namespace quillmere::e2e
