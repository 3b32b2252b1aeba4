#include "driver/tree_scenario.h"

#include <cstdlib>

namespace quillmere::e2e {

void TreeScenario::SetUp() {
  Scenario::SetUp();
  setSetting(L"Navigation", L"MarkupGroupingDefault", L"2");
}

void TreeScenario::startGrouped(bool underBookmarks, const std::string& bytes) {
  setSetting(L"Navigation", L"MarkupsUnderBookmarks", underBookmarks ? L"1" : L"0");
  startWith(bytes);
}

std::vector<std::wstring> TreeScenario::rows() const {
  std::vector<std::wstring> rows = treeItems(window, tree());
  for (std::wstring& row : rows) row.erase(row.find(L'|'), 2);
  return rows;
}

bool TreeScenario::rowSelected(const std::wstring& text) const {
  return eventually([&] {
    for (const std::wstring& row : treeItems(window, tree())) {
      if (row.substr(row.find(L'|')) == L"|1|" + text) return true;
    }
    return false;
  });
}

RECT TreeScenario::rowPlace(const std::wstring& text) const {
  RECT place{};
  eventually([&] {
    place = treeRowOnScreen(window, tree(), text);
    return !IsRectEmpty(&place);
  });
  return place;
}

bool TreeScenario::rowShown(const std::wstring& text) const {
  const RECT place = rowPlace(text);
  return IsRectEmpty(&place) == FALSE;
}

void TreeScenario::clickRow(const std::wstring& text) {
  const RECT place = rowPlace(text);
  ASSERT_FALSE(IsRectEmpty(&place)) << ::testing::PrintToString(text);
  clickAside({place.left + 4, (place.top + place.bottom) / 2});
}

void TreeScenario::clickButtonOf(const std::wstring& text) {
  const RECT place = rowPlace(text);
  ASSERT_FALSE(IsRectEmpty(&place)) << ::testing::PrintToString(text);
  clickAside({place.left - 10, (place.top + place.bottom) / 2});
}

void TreeScenario::clickAside(POINT place) {
  constexpr LONG kApart = 8;  // pixels
  if (std::abs(place.x - lastX) < kApart) place.x += kApart;
  lastX = place.x;
  click(place);
}

HTREEITEM TreeScenario::itemAfterRoot(int count) const {
  LRESULT item = SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_ROOT, 0);
  while (count-- > 0) item = SendMessageW(tree(), TVM_GETNEXTITEM, TVGN_NEXT, item);
  return reinterpret_cast<HTREEITEM>(item);
}

}  // namespace quillmere::e2e
