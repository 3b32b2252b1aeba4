#include "platform/tree.h"

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

constexpr wchar_t kClassName[] = L"QuillmereTreeSuiteWindow";

// Adds two rows below a row that is expanded for the first time.
LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto* header = reinterpret_cast<const NMHDR*>(lParam);
  if (message == WM_NOTIFY && header->code == TVN_ITEMEXPANDINGW) {
    const auto& change = *reinterpret_cast<const NMTREEVIEWW*>(lParam);
    const auto parent = reinterpret_cast<TreeRow>(change.itemNew.hItem);
    const TreeRow first =
        insertTreeRow(Tree::Navigation, {parent, kNoTreeRow}, {u"first", 10, false});
    insertTreeRow(Tree::Navigation, {parent, first}, {u"second", 11, false});
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

class TreeWindows : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass);
  }

  void SetUp() override {
    const HINSTANCE instance = GetModuleHandleW(nullptr);
    windowHandles.main = CreateWindowExW(0, kClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 400,
                                         nullptr, nullptr, instance, nullptr);
    windowHandles.bookmarksTree = CreateWindowExW(
        0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_LINESATROOT, 0, 0, 200,
        300, windowHandles.main, nullptr, instance, nullptr);
    ShowWindow(windowHandles.main, SW_SHOWNORMAL);
  }

  void TearDown() override {
    DestroyWindow(windowHandles.main);
    windowHandles = {};
  }

  static HWND tree() { return windowHandles.bookmarksTree; }

  static TVITEMW itemOf(HTREEITEM row, std::wstring& text) {
    text.assign(100, L'\0');
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN;
    item.hItem = row;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    text.resize(text.find(L'\0'));
    return item;
  }

  // The rows of one level: text and entry, with a plus sign if there are rows below.
  static std::vector<std::wstring> level(HTREEITEM first) {
    std::vector<std::wstring> rows;
    for (HTREEITEM row = first; row != nullptr; row = TreeView_GetNextSibling(tree(), row)) {
      std::wstring text;
      const TVITEMW item = itemOf(row, text);
      rows.push_back((item.cChildren != 0 ? L"+" : L"") + text + L" " +
                     std::to_wstring(item.lParam));
    }
    return rows;
  }
};

using Rows = std::vector<std::wstring>;

TEST_F(TreeWindows, RowsStandBehindTheOnesThatTheyFollow) {
  beginTreeUpdate(Tree::Navigation);
  const TreeRow one = insertTreeRow(Tree::Navigation, {}, {u"one", 1, false});
  const TreeRow three = insertTreeRow(Tree::Navigation, {kNoTreeRow, one}, {u"three", 3, true});
  insertTreeRow(Tree::Navigation, {kNoTreeRow, one}, {u"two", 2, false});
  insertTreeRow(Tree::Navigation, {}, {u"zero", -1, false});
  insertTreeRow(Tree::Navigation, {three, kNoTreeRow}, {u"below", 4, false});
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(level(TreeView_GetRoot(tree())), (Rows{L"zero -1", L"one 1", L"two 2", L"+three 3"}));
  EXPECT_EQ(level(TreeView_GetChild(tree(), reinterpret_cast<HTREEITEM>(three))), Rows{L"below 4"});
  EXPECT_TRUE(IsWindowVisible(tree()));
}

TEST_F(TreeWindows, ARowIsFilledWhileTheKeyboardExpandsIt) {
  const TreeRow row = insertTreeRow(Tree::Navigation, {}, {u"row", 0, true});
  const auto item = reinterpret_cast<HTREEITEM>(row);
  TreeView_SelectItem(tree(), item);
  EXPECT_EQ(TreeView_GetChild(tree(), item), nullptr);
  SendMessageW(tree(), WM_KEYDOWN, VK_RIGHT, 0);
  EXPECT_EQ(level(TreeView_GetChild(tree(), item)), (Rows{L"first 10", L"second 11"}));
  EXPECT_EQ(TreeView_GetNextVisible(tree(), item), TreeView_GetChild(tree(), item));
  SendMessageW(tree(), WM_KEYDOWN, VK_DOWN, 0);
  EXPECT_EQ(TreeView_GetSelection(tree()), TreeView_GetChild(tree(), item));
}

TEST_F(TreeWindows, ARowIsExpandedByTheProgram) {
  const TreeRow row = insertTreeRow(Tree::Navigation, {}, {u"row", -1, true});
  insertTreeRow(Tree::Navigation, {row, kNoTreeRow}, {u"below", 1, false});
  expandTreeRow(Tree::Navigation, row);
  const auto item = reinterpret_cast<HTREEITEM>(row);
  EXPECT_NE(TreeView_GetItemState(tree(), item, TVIS_EXPANDED) & TVIS_EXPANDED, 0u);
}

TEST_F(TreeWindows, AClearedTreeHasNoRows) {
  insertTreeRow(Tree::Navigation, {}, {u"row", 0, false});
  clearTree(Tree::Navigation);
  EXPECT_EQ(TreeView_GetCount(tree()), 0u);
}

HTREEITEM firstVisible(HWND tree) {
  return reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0));
}

TEST_F(TreeWindows, AnUpdateKeepsTheRowOnTopAndTheSelection) {
  TreeRow rows[100];
  TreeRow previous = kNoTreeRow;
  for (TreeRow& row : rows) {
    row = previous = insertTreeRow(Tree::Navigation, {kNoTreeRow, previous}, {u"row", 0, false});
  }
  const auto item = [&rows](int i) { return reinterpret_cast<HTREEITEM>(rows[i]); };
  TreeView_SelectItem(tree(), item(45));
  SendMessageW(tree(), TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(item(40)));
  ASSERT_EQ(firstVisible(tree()), item(40));
  beginTreeUpdate(Tree::Navigation);
  insertTreeRow(Tree::Navigation, {rows[2], kNoTreeRow}, {u"new", 0, false});
  expandTreeRow(Tree::Navigation, rows[2]);
  insertTreeRow(Tree::Navigation, {rows[70], kNoTreeRow}, {u"new", 0, false});
  expandTreeRow(Tree::Navigation, rows[70]);
  removeTreeRow(Tree::Navigation, rows[10]);
  setTreeRowText(Tree::Navigation, rows[41], u"renamed");
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(firstVisible(tree()), item(40));
  EXPECT_EQ(TreeView_GetSelection(tree()), item(45));
}

TEST_F(TreeWindows, ARowOnTopThatGoesLeavesItsPlaceToItsNeighbour) {
  TreeRow rows[100];
  TreeRow previous = kNoTreeRow;
  for (TreeRow& row : rows) {
    row = previous = insertTreeRow(Tree::Navigation, {kNoTreeRow, previous}, {u"row", 0, false});
  }
  SendMessageW(tree(), TVM_SELECTITEM, TVGN_FIRSTVISIBLE, static_cast<LPARAM>(rows[40]));
  beginTreeUpdate(Tree::Navigation);
  removeTreeRow(Tree::Navigation, rows[40]);
  removeTreeRow(Tree::Navigation, rows[41]);
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(firstVisible(tree()), reinterpret_cast<HTREEITEM>(rows[42]));
}

TEST_F(TreeWindows, ATreeThatWasNotScrolledShowsWhatComesBeforeItsFirstRow) {
  const TreeRow first = insertTreeRow(Tree::Navigation, {}, {u"first", 0, false});
  TreeRow previous = first;
  for (int i = 0; i < 100; ++i) {
    previous = insertTreeRow(Tree::Navigation, {kNoTreeRow, previous}, {u"row", 0, false});
  }
  beginTreeUpdate(Tree::Navigation);
  const TreeRow ahead = insertTreeRow(Tree::Navigation, {}, {u"ahead", 0, false});
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(firstVisible(tree()), reinterpret_cast<HTREEITEM>(ahead));
}

TEST_F(TreeWindows, WithoutATreeNothingHappens) {
  const HWND kept = windowHandles.bookmarksTree;
  windowHandles.bookmarksTree = nullptr;
  beginTreeUpdate(Tree::Navigation);
  EXPECT_EQ(insertTreeRow(Tree::Navigation, {}, {u"row", 0, false}), kNoTreeRow);
  expandTreeRow(Tree::Navigation, kNoTreeRow);
  removeTreeRow(Tree::Navigation, kNoTreeRow);
  setTreeRowText(Tree::Navigation, kNoTreeRow, u"text");
  setTreeRowExpandable(Tree::Navigation, kNoTreeRow, true);
  clearTree(Tree::Navigation);
  endTreeUpdate(Tree::Navigation);
  windowHandles.bookmarksTree = kept;
}

}  // namespace
}  // namespace quillmere::platform
