#include "driver/binder_scenario.h"

#include <algorithm>
#include <sstream>

namespace quillmere::e2e {
namespace {

constexpr wchar_t kMenuClass[] = L"#32768";
constexpr UINT kRebuildMessage = WM_APP + 1;

// The rows in the order in which the tree is described.
void appendItems(HWND tree, LRESULT item, std::vector<LRESULT>& items) {
  while (item != 0) {
    items.push_back(item);
    appendItems(tree, SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CHILD, item), items);
    item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_NEXT, item);
  }
}

}  // namespace

void BinderScenario::SetUp() {
  treeId = 420;
  TreeScenario::SetUp();
}

std::wstring BinderScenario::makeBinder(const std::wstring& name,
                                        const std::vector<std::wstring>& files) {
  const std::wstring path = userDataFolder() + L"\\Binders\\" + name + L".lst";
  CreateDirectoryW(userDataFolder().c_str(), nullptr);
  CreateDirectoryW((userDataFolder() + L"\\Binders").c_str(), nullptr);
  std::string bytes = "\xEF\xBB\xBF";
  for (const std::wstring& file : files) bytes += bytesOf(file) + "\r\n";
  EXPECT_TRUE(writeFile(path, bytes));
  setSetting(L"Binders", (L"Path" + std::to_wstring(binders_++)).c_str(), path);
  setSetting(L"Binders", L"Count", std::to_wstring(binders_));
  return path;
}

void BinderScenario::startWithBinders() {
  first = makeFile(L"first.pdf", coloredPdf(2));
  second = makeFile(L"second.pdf", coloredPdf(3));
  work = makeBinder(L"Work", {first, second});
  makeBinder(L"Rest", {});
  start();
}

::testing::AssertionResult BinderScenario::rowsBecome(
    const std::vector<std::wstring>& wanted) const {
  const std::vector<std::wstring> seen = settled([&] { return rows(); }, wanted);
  if (seen == wanted) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << ::testing::PrintToString(seen);
}

bool BinderScenario::rowHas(const std::wstring& text, UINT state, bool wanted) const {
  return eventually([&] {
    const std::vector<LRESULT> items = rowHandles();
    const std::vector<std::wstring> texts = rows();
    if (items.size() != texts.size()) return false;
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (texts[i].substr(2) != text) continue;
      const LRESULT has =
          SendMessageW(tree(), TVM_GETITEMSTATE, static_cast<WPARAM>(items[i]), state);
      return ((static_cast<UINT>(has) & state) != 0) == wanted;
    }
    return false;
  });
}

bool BinderScenario::treeHasKeyboard() const {
  return eventually([&] { return focusOf(window) == tree(); });
}

bool BinderScenario::treeHasMouse() const {
  return eventually([&] {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
           info.hwndCapture == tree();
  });
}

std::vector<LRESULT> BinderScenario::rowHandles() const {
  std::vector<LRESULT> items;
  appendItems(tree(), SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_ROOT, 0), items);
  return items;
}

int BinderScenario::firstVisibleRow() const {
  const LRESULT first = SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0);
  const std::vector<LRESULT> rows = rowHandles();
  return static_cast<int>(std::find(rows.begin(), rows.end(), first) - rows.begin());
}

void BinderScenario::deliverRebuild() const {
  SendMessageW(window, kRebuildMessage, 0, 0);
}

POINT BinderScenario::pointOf(const std::wstring& text, bool lowerHalf) const {
  const RECT place = rowPlace(text);
  EXPECT_FALSE(IsRectEmpty(&place)) << ::testing::PrintToString(text);
  return {place.left + 4, lowerHalf ? place.bottom - 3 : place.top + 3};
}

POINT BinderScenario::aside(POINT place) {
  if (place.x == lastX) place.x += 12;
  lastX = place.x;
  return place;
}

void BinderScenario::openMenuOf(const std::wstring& text) {
  const RECT area = windowRect(tree());
  const POINT empty{area.right - 8, area.bottom - 8};
  click(text.empty() ? empty : aside(pointOf(text)), Button::Right);
  EXPECT_TRUE(menuIsOpen());
}

bool BinderScenario::menuIsOpen() const {
  return eventually([&] {
    const HWND menu = program.find(kMenuClass);
    return menu != nullptr && IsWindowVisible(menu);
  });
}

void BinderScenario::startRename(const std::wstring& name) {
  openMenuOf(name);
  chooseInMenu(3);
  ASSERT_TRUE(eventually([&] { return classOf(focusOf(window)) == L"Edit"; }));
}

std::vector<std::wstring> BinderScenario::menuRows() const {
  constexpr UINT kGetMenu = 0x01E1;
  const auto menu = reinterpret_cast<HMENU>(SendMessageW(program.find(kMenuClass), kGetMenu, 0, 0));
  std::vector<std::wstring> rows;
  for (const MenuItem& item : describeMenu(window, menu)) {
    rows.push_back(item.separator ? L"-"
                                  : item.text + (item.grayed ? L" (off)" : L"") +
                                        (item.checked ? L" (checked)" : L""));
  }
  return rows;
}

void BinderScenario::chooseInMenu(int row) const {
  for (int i = 0; i < row; ++i) press(VK_DOWN);
  press(VK_RETURN);
  EXPECT_TRUE(eventually([&] {
    const HWND menu = program.find(kMenuClass);
    return menu == nullptr || !IsWindowVisible(menu);
  }));
}

HWND BinderScenario::dialogOfClass(const wchar_t* className) const {
  HWND dialog = nullptr;
  eventually([&] { return (dialog = program.find(className)) && IsWindowVisible(dialog); });
  return dialog;
}

POINT BinderScenario::startDrag(const std::wstring& row) {
  POINT place = aside(pointOf(row));
  movePointer(place);
  EXPECT_TRUE(inputIsHandled(window));
  pressButton(place);
  for (int step = 0; step < 5; ++step) {
    place.x += 4;
    movePointer(place);
    EXPECT_TRUE(inputIsHandled(window));
  }
  EXPECT_TRUE(treeHasMouse());
  return place;
}

void BinderScenario::dragRow(const std::wstring& from, const std::wstring& to, bool lowerHalf) {
  drag(aside(pointOf(from)), pointOf(to, lowerHalf));
}

std::string BinderScenario::bytesOf(const std::wstring& path) {
  return {path.begin(), path.end()};
}

std::vector<std::string> BinderScenario::documentsIn(const std::wstring& binder) {
  std::vector<std::string> lines;
  std::istringstream text(readFile(binder));
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
    while (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.find(":\\") == 1) lines.push_back(line.substr(0, line.find('\t')));
  }
  return lines;
}

}  // namespace quillmere::e2e
