#include "ui/tree_work.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "session/session.h"
#include "session/waiting_opens.h"

namespace quillmere::test {
namespace {

constexpr UINT_PTR kProbe = 1;

int guardsSeen = -1;  // while the tree handles a press

LRESULT CALLBACK probeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  if (message == WM_LBUTTONDOWN) guardsSeen = session.documentWork;
  return DefSubclassProc(window, message, wParam, lParam);
}

class TreeWorkTest : public testing::Test {
 protected:
  void SetUp() override {
    resetSession();
    guardsSeen = -1;
    InitCommonControls();
    owner = CreateWindowExW(0, L"STATIC", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 80, 400,
                            300, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    tree = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE | TVS_EDITLABELS, 0, 0, 200,
                           200, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowSubclass(tree, probeProcedure, kProbe, 0);
    holdOpensWhileTreeWorks(tree);
    TVINSERTSTRUCTW insertion{};
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask = TVIF_TEXT;
    wchar_t text[] = L"Row";
    insertion.item.pszText = text;
    row = reinterpret_cast<HTREEITEM>(
        SendMessageW(tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insertion)));
  }
  void TearDown() override {
    DestroyWindow(owner);
    resetSession();
  }

  HWND owner = nullptr;
  HWND tree = nullptr;
  HTREEITEM row = nullptr;
};

TEST_F(TreeWorkTest, APressHoldsOpensBackUntilTheButtonIsUp) {
  RECT place{};
  TreeView_GetItemRect(tree, row, &place, TRUE);
  const LPARAM point = MAKELPARAM(place.left + 2, (place.top + place.bottom) / 2);
  PostMessageW(tree, WM_LBUTTONUP, 0, point);
  SendMessageW(tree, WM_LBUTTONDOWN, MK_LBUTTON, point);
  EXPECT_EQ(guardsSeen, 1);
  EXPECT_EQ(session.documentWork, 0);
}

TEST_F(TreeWorkTest, ARowThatIsBeingRenamedHoldsOpensBack) {
  SetFocus(tree);
  ASSERT_NE(SendMessageW(tree, TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(row)), 0);
  EXPECT_EQ(session.documentWork, 1);
  EXPECT_TRUE(openMustWait({{u"C:\\a.pdf"}}));
  session.waitingOpens.clear();
  SendMessageW(tree, TVM_ENDEDITLABELNOW, FALSE, 0);
  EXPECT_EQ(session.documentWork, 0);
  SendMessageW(tree, TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(row));
  EXPECT_EQ(session.documentWork, 1);
  SendMessageW(tree, TVM_ENDEDITLABELNOW, TRUE, 0);
  EXPECT_EQ(session.documentWork, 0);
}

}  // namespace
}  // namespace quillmere::test
