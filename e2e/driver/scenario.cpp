#include "driver/scenario.h"

#include <algorithm>

namespace quillmere::e2e {
namespace {

std::wstring narrowToWide(const std::string& text) {
  return {text.begin(), text.end()};
}

// A Windows path, or one of the Unix side as Wine shows it.
std::wstring pictureFolder() {
  wchar_t value[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(L"QUILLMERE_E2E_SCREENS", value, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return {};
  std::wstring folder(value, length);
  if (folder.front() == L'/') folder = L"Z:" + folder;
  std::replace(folder.begin(), folder.end(), L'/', L'\\');
  CreateDirectoryW(folder.c_str(), nullptr);
  return folder;
}

std::string scenarioName() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  return std::string(info->test_suite_name()) + "." + info->name();
}

BOOL CALLBACK uniteProgramWindows(HWND window, LPARAM context) {
  if (!IsWindowVisible(window) || IsIconic(window)) return TRUE;
  const std::wstring name = classOf(window);
  if (name != kMainClass && name != kViewerClass && name != L"#32770") return TRUE;
  auto& united = *reinterpret_cast<RECT*>(context);
  const RECT rect = windowRect(window);
  UnionRect(&united, &united, &rect);
  return TRUE;
}

::testing::AssertionResult sameText(const std::wstring& seen, const std::wstring& wanted) {
  if (seen == wanted) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "seen " << ::testing::PrintToString(seen) << ", wanted "
                                       << ::testing::PrintToString(wanted);
}

}  // namespace

std::wstring trimmed(std::wstring text) {
  const auto blank = [](wchar_t unit) { return unit == L' ' || unit == L'\t'; };
  while (!text.empty() && blank(text.back())) text.pop_back();
  text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), blank));
  return text;
}

RECT pageOnScreen(const Picture& client, RECT area) {
  RECT found{area.right, area.bottom, 0, 0};
  for (LONG y = area.top; y < area.bottom; ++y) {
    for (LONG x = area.left; x < area.right; ++x) {
      const std::uint32_t color = client.at(x, y);
      if (color == kBackground || color == kShadow) continue;
      found = {std::min(found.left, x), std::min(found.top, y), std::max(found.right, x + 1),
               std::max(found.bottom, y + 1)};
    }
  }
  return found.right == 0 ? RECT{} : found;
}

void Scenario::SetUp() {
  // Use the screen's real pixels, whatever its resolution.
  SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
  ASSERT_TRUE(endPrograms()) << "a program of the scenario before was still running";
  movePointer({GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1});
  prepareFolders(promptAnswered);
}

void Scenario::TearDown() {
  picture(scenarioName());
  EXPECT_TRUE(endPrograms()) << "a program did not end when its window was closed";
}

void Scenario::picture(const std::string& name) const {
  const std::wstring folder = pictureFolder();
  RECT united{};
  EnumWindows(uniteProgramWindows, reinterpret_cast<LPARAM>(&united));
  if (folder.empty() || IsRectEmpty(&united)) return;
  const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  IntersectRect(&united, &united, &screen);
  savePng(capture(united), folder + L"\\" + narrowToWide(name) + L".png");
}

void Scenario::start(const std::wstring& rest) {
  program = startProgram(rest);
  ASSERT_NE(program.process, nullptr) << "quillmere.exe did not start, error " << GetLastError();
  window = program.window();
  ASSERT_NE(window, nullptr) << "the program showed no window";
}

void Scenario::startWith(const std::string& bytes, const std::wstring& name) {
  const std::wstring path = makeFile(name, bytes);
  start(inQuotes(path));
  ASSERT_TRUE(titleBecomes(L"Quillmere - " + name)) << ::testing::PrintToString(title());
  toFront();
}

void Scenario::toFront() const {
  ASSERT_TRUE(bringToFront(window));
}

bool Scenario::titleBecomes(const std::wstring& wanted) const {
  return settled([&] { return title(); }, wanted) == wanted;
}

::testing::AssertionResult Scenario::pageTextBecomes(const std::wstring& wanted) const {
  return sameText(settled([&] { return trimmed(status(2)); }, wanted), wanted);
}

::testing::AssertionResult Scenario::zoomTextBecomes(const std::wstring& wanted) const {
  return sameText(settled([&] { return trimmed(status(0)); }, wanted), wanted);
}

::testing::AssertionResult Scenario::pixelBecomes(int x, int y, std::uint32_t color) const {
  const POINT place = onScreen(x, y);
  const std::uint32_t seen = settled([&] { return screenPixel(place); }, color);
  if (seen == color) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << std::hex << "pixel " << std::dec << x << ", " << y
                                       << std::hex << " is " << seen << ", wanted " << color;
}

::testing::AssertionResult Scenario::pageBecomes(RECT area, RECT wanted) const {
  const RECT seen = settled([&] { return pageOnScreen(client(), area); }, wanted);
  if (seen == wanted) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "the page is at " << ::testing::PrintToString(seen)
                                       << ", wanted " << ::testing::PrintToString(wanted);
}

::testing::AssertionResult Scenario::boxSays(const std::wstring& text, WORD key) const {
  const Box box = waitForBox(program);
  if (box.window == nullptr) return ::testing::AssertionFailure() << "no box came";
  if (!answerBox(box, key)) return ::testing::AssertionFailure() << "the box did not go away";
  if (box.title != L"Quillmere") return sameText(box.title, L"Quillmere");
  return sameText(box.text, text);
}

bool Scenario::becomesChecked(int id) const {
  return eventually([&] { return menuItem(window, id).checked; });
}

POINT Scenario::onScreen(int x, int y) const {
  POINT place{x, y};
  ClientToScreen(window, &place);
  return place;
}

RECT Scenario::pageArea() const {
  RECT area{};
  GetClientRect(window, &area);
  const RECT bar = windowRect(statusBarOf(window));
  area.bottom -= bar.bottom - bar.top;
  if (const HWND find = findBar(); IsWindowVisible(find)) {
    const RECT rect = windowRect(find);
    area.top += rect.bottom - rect.top;
  }
  for (const int id : {401, 420}) {
    const HWND tree = childOf(window, id);
    if (tree == nullptr || !IsWindowVisible(tree)) continue;
    RECT rect = windowRect(tree);
    area.left = rect.right - rect.left + dip(3);
  }
  return area;
}

HWND Scenario::findBar() const {
  return FindWindowExW(window, nullptr, L"QuillmereFindBar", nullptr);
}

HWND Scenario::shownTip() const {
  for (const HWND tip : windowsOfClass(L"tooltips_class32")) {
    DWORD process = 0;
    GetWindowThreadProcessId(tip, &process);
    if (process == program.id && IsWindowVisible(tip)) return tip;
  }
  return nullptr;
}

bool Scenario::paneIsActive(RECT pane) const {
  return eventually([&] { return client().at(pane.left + dip(1), pane.top + dip(1)) == kFrame; });
}

void Scenario::startWithTwo(const std::string& first, const std::string& second) {
  startWith(first);
  press(VK_F8);
  ASSERT_TRUE(becomesChecked(304));
  dropFiles(window, {rightPane().left + 50, 100}, {makeFile(L"two.pdf", second)});
  ASSERT_TRUE(titleBecomes(L"Quillmere - one.pdf | two.pdf"));
  ASSERT_TRUE(paneIsActive(leftPane()));
}

RECT Scenario::leftPane() const {
  RECT pane = pageArea();
  pane.right = pane.left + (pane.right - pane.left) / 2;
  return pane;
}

RECT Scenario::rightPane() const {
  RECT pane = pageArea();
  pane.left = leftPane().right + dip(2);
  return pane;
}

POINT Scenario::middleOf(RECT area) const {
  return onScreen((area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

}  // namespace quillmere::e2e
