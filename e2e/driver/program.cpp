#include "driver/program.h"

#include <commctrl.h>

#include <sstream>
#include <thread>
#include <utility>

#include "driver/input.h"
#include "driver/inside_request.h"
#include "driver/wait.h"

namespace quillmere::e2e {
namespace {

std::vector<Program>& started() {
  static std::vector<Program> programs;
  return programs;
}

std::wstring environment(const wchar_t* name) {
  wchar_t value[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(name, value, MAX_PATH);
  return {value, length < MAX_PATH ? length : 0};
}

// Next to the tests, unless QUILLMERE_PROGRAM says otherwise.
std::wstring programPath() {
  const std::wstring told = environment(L"QUILLMERE_PROGRAM");
  if (!told.empty()) return told;
  wchar_t own[MAX_PATH];
  GetModuleFileNameW(nullptr, own, MAX_PATH);
  const std::wstring path = own;
  return path.substr(0, path.rfind(L'\\') + 1) + L"quillmere.exe";
}

struct Search {
  const wchar_t* className;
  DWORD process;
  std::vector<HWND> found;
};

BOOL CALLBACK collect(HWND window, LPARAM context) {
  auto& search = *reinterpret_cast<Search*>(context);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if ((search.process == 0 || search.process == process) && classOf(window) == search.className) {
    search.found.push_back(window);
  }
  return TRUE;
}

std::vector<std::wstring> split(const std::wstring& text, wchar_t separator) {
  std::vector<std::wstring> parts;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(separator, start)) != std::wstring::npos;
       start = end + 1) {
    parts.push_back(text.substr(start, end - start));
  }
  if (start < text.size()) parts.push_back(text.substr(start));
  return parts;
}

// The text may contain the separator, so split off only the first three of the four fields.
MenuItem parseMenuItem(const std::wstring& line) {
  const std::size_t first = line.find(L'|');
  const std::size_t second = line.find(L'|', first + 1);
  const std::size_t third = line.find(L'|', second + 1);
  const std::wstring state = line.substr(second + 1, third - second - 1);
  const auto has = [&](wchar_t flag) { return state.find(flag) != std::wstring::npos; };
  return {std::stoi(line.substr(0, first)),
          std::stoi(line.substr(first + 1, second - first - 1)),
          has(L's'),
          has(L'c'),
          has(L'g'),
          line.substr(third + 1)};
}

void closeWindowsOf(const wchar_t* className) {
  for (const HWND window : windowsOfClass(className)) PostMessageW(window, WM_CLOSE, 0, 0);
}

// The program itself starts the viewers, so their processes are known only by their windows.
bool viewersGone() {
  closeWindowsOf(kViewerClass);
  return eventually([] { return windowsOfClass(kViewerClass).empty(); });
}

void terminateOwners(const wchar_t* className) {
  for (const HWND window : windowsOfClass(className)) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, id);
    if (process == nullptr) continue;
    TerminateProcess(process, 1);
    CloseHandle(process);
  }
}

void deliverPath(HWND window, const std::wstring& path) {
  sendCopyData(window, kOpenFileTag, path.c_str(),
               static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
}

constexpr wchar_t kUnsavedDialogClass[] = L"QuillmereUnsavedFilesDlg";
constexpr wchar_t kBoxClass[] = L"#32770";
constexpr int kDiscardAllId = 1006;

// Scenarios leave edited documents behind. What is asked about them at the end is answered so that
// their files stay as they are.
bool endsByItself(const Program& program) {
  bool answered = false;
  return eventually([&] {
    const HWND dialog = program.find(kUnsavedDialogClass);
    const HWND box = program.find(kBoxClass);
    if (dialog != nullptr && box != nullptr) {
      PostMessageW(box, WM_COMMAND, IDYES, 0);
    } else if (dialog != nullptr && IsWindowVisible(dialog) && !std::exchange(answered, true)) {
      PostMessageW(dialog, WM_COMMAND, kDiscardAllId, 0);
    }
    return !program.running();
  });
}

}  // namespace

bool Program::running() const {
  return WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
}

DWORD Program::exitCode() const {
  WaitForSingleObject(process, kPatience);
  DWORD code = STILL_ACTIVE;
  GetExitCodeProcess(process, &code);
  return code;
}

HWND Program::find(const wchar_t* className) const {
  Search search{className, id, {}};
  EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
  return search.found.empty() ? nullptr : search.found.front();
}

HWND Program::window() const {
  HWND window = nullptr;
  eventually([&] {
    window = find(kMainClass);
    if (window == nullptr) window = find(kViewerClass);
    return (window != nullptr && IsWindowVisible(window)) || !running();
  });
  return window;
}

Program startProgram(const std::wstring& rest, const std::wstring& folder) {
  const std::wstring path = programPath();
  std::wstring line = inQuotes(path);
  if (!rest.empty()) line += L" " + rest;
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      folder.empty() ? nullptr : folder.c_str(), &startup, &information)) {
    return {};
  }
  CloseHandle(information.hThread);
  started().push_back({information.hProcess, information.dwProcessId});
  return started().back();
}

bool endPrograms() {
  bool gentle = viewersGone();
  closeWindowsOf(kMainClass);
  for (const Program& program : started()) {
    if (!endsByItself(program)) {
      gentle = false;
      TerminateProcess(program.process, 1);
      WaitForSingleObject(program.process, kPatience);
    }
    CloseHandle(program.process);
  }
  started().clear();
  if (!gentle) {
    terminateOwners(kViewerClass);
    terminateOwners(kMainClass);
  }
  return gentle;
}

std::wstring inQuotes(const std::wstring& path) {
  return L"\"" + path + L"\"";
}

std::wstring titleOf(HWND window) {
  wchar_t text[1024];
  return {text, static_cast<std::size_t>(GetWindowTextW(window, text, 1024))};
}

std::wstring classOf(HWND window) {
  wchar_t name[256];
  return {name, static_cast<std::size_t>(GetClassNameW(window, name, 256))};
}

std::wstring controlText(HWND control) {
  const auto length = static_cast<std::size_t>(SendMessageW(control, WM_GETTEXTLENGTH, 0, 0));
  std::wstring text(length + 1, L'\0');
  SendMessageW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(length);
  return text;
}

std::vector<HWND> windowsOfClass(const wchar_t* className) {
  Search search{className, 0, {}};
  EnumWindows(collect, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND childOf(HWND window, int id) {
  struct Wanted {
    int id;
    HWND found;
  } wanted{id, nullptr};
  EnumChildWindows(
      window,
      [](HWND child, LPARAM context) -> BOOL {
        auto& search = *reinterpret_cast<Wanted*>(context);
        if (GetDlgCtrlID(child) != search.id) return TRUE;
        search.found = child;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&wanted));
  return wanted.found;
}

HWND focusOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus;
}

HWND statusBarOf(HWND window) {
  return FindWindowExW(window, nullptr, STATUSCLASSNAMEW, nullptr);
}

std::wstring statusText(HWND window, int part) {
  return askInside(window, InsideRequest::StatusText, part);
}

RECT windowRect(HWND window) {
  RECT rect{};
  GetWindowRect(window, &rect);
  return rect;
}

RECT clientOnScreen(HWND window) {
  RECT rect{};
  GetClientRect(window, &rect);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

std::vector<MenuItem> describeMenu(HWND window, HMENU menu) {
  std::vector<MenuItem> items;
  const std::wstring text =
      askInside(window, InsideRequest::DescribeMenu, reinterpret_cast<LPARAM>(menu));
  for (const std::wstring& line : split(text, L'\n')) items.push_back(parseMenuItem(line));
  return items;
}

std::vector<MenuItem> menuBar(HWND window) {
  return describeMenu(window, nullptr);
}

MenuItem menuItem(HWND window, int id) {
  for (const MenuItem& item : menuBar(window)) {
    if (item.id == id && !item.separator) return item;
  }
  return {};
}

std::vector<std::wstring> treeItems(HWND window, HWND tree) {
  return split(askInside(window, InsideRequest::DescribeTree, reinterpret_cast<LPARAM>(tree)),
               L'\n');
}

RECT treeRowOnScreen(HWND window, HWND tree, const std::wstring& text) {
  RECT place{};
  std::wistringstream(
      askInside(window, InsideRequest::TreeRowPlace, reinterpret_cast<LPARAM>(tree), text)) >>
      place.left >> place.top >> place.right >> place.bottom;
  MapWindowPoints(tree, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

std::wstring treeRowTip(HWND window, HWND tree, const std::wstring& text) {
  return askInside(window, InsideRequest::TreeRowTip, reinterpret_cast<LPARAM>(tree), text);
}

std::wstring fontOf(HWND window, HWND control) {
  return askInside(window, InsideRequest::DescribeFont, reinterpret_cast<LPARAM>(control));
}

void dropFiles(HWND window, POINT client, const std::vector<std::wstring>& paths) {
  inputIsHandled(window);
  std::wstring list;
  for (const std::wstring& path : paths) {
    list += path;
    list += L'\0';
  }
  askInside(window, InsideRequest::DropFiles, MAKELPARAM(client.x, client.y), list);
}

void sendCopyData(HWND window, ULONG_PTR tag, const void* bytes, DWORD size) {
  COPYDATASTRUCT data{tag, size, const_cast<void*>(bytes)};
  SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

void sendPath(HWND window, const std::wstring& path) {
  inputIsHandled(window);
  deliverPath(window, path);
}

void sendPathAndReturn(HWND window, const std::wstring& path) {
  inputIsHandled(window);
  // Kept for ever: the library can lose a thread that is detached while it ends.
  static auto* const senders = new std::vector<std::thread>;
  senders->emplace_back([window, path] { deliverPath(window, path); });
}

void runCommand(HWND window, int id) {
  inputIsHandled(window);
  PostMessageW(window, WM_COMMAND, MAKEWPARAM(id, 0), 0);
}

void changeDensity(HWND window, int dpi) {
  askInside(window, InsideRequest::ChangeDensity, dpi);
}

std::vector<int> statusParts(HWND window) {
  std::wistringstream text(askInside(window, InsideRequest::StatusParts, 0));
  std::vector<int> edges;
  for (int edge = 0; text >> edge;) edges.push_back(edge);
  return edges;
}

std::wstring cursorOf(HWND window) {
  return askInside(window, InsideRequest::Cursor, 0);
}

}  // namespace quillmere::e2e
