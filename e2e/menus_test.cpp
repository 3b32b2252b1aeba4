#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

// When a menu item is enabled.
enum class Rule {
  Always,
  Document,  // a document is open

  Selection,    // text is selected
  FindBar,      // the find bar is open
  TwoPanes,     // two panes are shown
  NotInViewer,  // everywhere except in a viewer
  DocumentNotInViewer,
  SeveralPagesNotInViewer,
  SinglePageNotInViewer,
  Never,
};

struct Row {
  int depth;
  int id;  // 0 for a separator, -1 for a menu of the bar
  const wchar_t* text;
  Rule rule;
};

constexpr Row kSeparatorRow{1, 0, L"", Rule::Always};

// The Recent Documents item has no id of its own while the list is empty.
constexpr Row kMenuBar[] = {
    {0, -1, L"&File", Rule::Always},
    {1, 101, L"&Open...\tCtrl+O", Rule::Always},
    {1, 110, L"Open in Separate &Viewer", Rule::DocumentNotInViewer},
    kSeparatorRow,
    {1, 0, L"Recent &Documents", Rule::Never},
    kSeparatorRow,
    {1, 107, L"Add &New Binder...", Rule::Always},
    {1, 108, L"Add &Existing Binder...", Rule::Always},
    kSeparatorRow,
    {1, 103, L"&Previous in Folder\tCtrl+[", Rule::Document},
    {1, 104, L"&Next in Folder\tCtrl+]", Rule::Document},
    kSeparatorRow,
    {1, 602, L"&Save\tCtrl+S", Rule::NotInViewer},
    {1, 604, L"Save &As...\tCtrl+Shift+S", Rule::NotInViewer},
    {1, 605, L"Save A&ll", Rule::NotInViewer},
    {1, 606, L"&Discard All...", Rule::NotInViewer},
    kSeparatorRow,
    {1, 106, L"&Print...\tCtrl+P", Rule::Always},
    kSeparatorRow,
    {1, 105, L"&Close\tCtrl+W", Rule::Always},
    kSeparatorRow,
    {1, 109, L"E&xit", Rule::Always},
    {0, -1, L"&Edit", Rule::Always},
    {1, 701, L"&Find...\tCtrl+F", Rule::Always},
    kSeparatorRow,
    {1, 702, L"&Copy\tCtrl+C", Rule::Selection},
    {1, 704, L"&Paste\tCtrl+V", Rule::FindBar},
    {1, 703, L"Select &All\tCtrl+A", Rule::Always},
    kSeparatorRow,
    {1, 708, L"De&lete Page...", Rule::SeveralPagesNotInViewer},
    {1, 725, L"&Insert Document Above...", Rule::NotInViewer},
    {1, 726, L"Insert Document &Below...", Rule::NotInViewer},
    kSeparatorRow,
    {1, 732, L"&Mark Up...\tCtrl+M", Rule::NotInViewer},
    {1, 706, L"Flatten &Annotations...", Rule::NotInViewer},
    {1, 719, L"Remove All A&nnotations...", Rule::NotInViewer},
    {1, 731, L"Create Markup &Summary...", Rule::Always},
    kSeparatorRow,
    {1, 210, L"&Rotate Document\tR", Rule::NotInViewer},
    {1, 211, L"Rotate &Page\tCtrl+R", Rule::NotInViewer},
    kSeparatorRow,
    {1, 707, L"&Discard Changes...", Rule::NotInViewer},
    kSeparatorRow,
    {1, 705, L"&Settings...", Rule::NotInViewer},
    {0, -1, L"&View", Rule::Always},
    {1, 201, L"&Bookmarks Panel\tF2", Rule::Always},
    {1, 212, L"Bin&ders Panel\tF3", Rule::Always},
    {1, 601, L"Anno&tation Panel\tF4", Rule::SinglePageNotInViewer},
    kSeparatorRow,
    {1, 214, L"&Group Markups Under Bookmarks", Rule::Always},
    kSeparatorRow,
    {1, 202, L"Zoom &In\t+", Rule::Always},
    {1, 203, L"Zoom &Out\t-", Rule::Always},
    kSeparatorRow,
    {1, 204, L"&Fit Page\tF", Rule::Always},
    {1, 205, L"Fit &Width\tW", Rule::Always},
    {1, 206, L"&Actual Size (100%)\tA", Rule::Always},
    {1, 208, L"&Custom Fit\tC", Rule::Always},
    kSeparatorRow,
    {1, 209, L"Pa&n Scroll\tCtrl+N", Rule::Always},
    kSeparatorRow,
    {1, 207, L"&Equal Panes\tCtrl+\\", Rule::TwoPanes},
};

constexpr Row kViewerRows[] = {
    kSeparatorRow,
    {1, 213, L"&Refresh from Source", Rule::Always},
};

constexpr Row kLastMenus[] = {
    {0, -1, L"&Mode", Rule::Always},
    {1, 301, L"&Single Page\tF5", Rule::Always},
    {1, 302, L"&Book\tF6", Rule::Always},
    {1, 303, L"&Independent Pages\tF7", Rule::Always},
    {1, 304, L"&Two Documents\tF8", Rule::Always},
    {0, -1, L"&Help", Rule::Always},
    {1, 504, L"&User Guide", Rule::Always},
    {1, 502, L"&Shortcuts...", Rule::Always},
    kSeparatorRow,
    {1, 505, L"PDF &Security Info...", Rule::Always},
    kSeparatorRow,
    {1, 503, L"Check for &Updates...", Rule::Always},
    kSeparatorRow,
    {1, 501, L"&About...", Rule::Always},
};

// The state of the window while its menus are examined.
struct State {
  bool viewer = false;
  bool document = false;
  bool severalPages = false;
  bool selection = false;
  bool twoPanes = false;
  bool findBar = false;
};

bool enabled(Rule rule, const State& state) {
  switch (rule) {
    case Rule::Always:
      return true;
    case Rule::Document:
      return state.document;
    case Rule::Selection:
      return state.selection;
    case Rule::TwoPanes:
      return state.twoPanes;
    case Rule::NotInViewer:
      return !state.viewer;
    case Rule::DocumentNotInViewer:
      return state.document && !state.viewer;
    case Rule::SeveralPagesNotInViewer:
      return state.severalPages && !state.viewer;
    case Rule::SinglePageNotInViewer:
      return !state.twoPanes && !state.viewer;
    case Rule::FindBar:
      return state.findBar;
    case Rule::Never:
      return false;
  }
  return false;
}

std::vector<Row> expectedRows(bool viewer) {
  std::vector<Row> rows(std::begin(kMenuBar), std::end(kMenuBar));
  if (viewer) rows.insert(rows.end(), std::begin(kViewerRows), std::end(kViewerRows));
  rows.insert(rows.end(), std::begin(kLastMenus), std::end(kLastMenus));
  return rows;
}

std::wstring shown(int depth, const std::wstring& text, bool separator, bool grayed) {
  return std::wstring(static_cast<std::size_t>(depth) * 2, L' ') + (separator ? L"-----" : text) +
         (grayed && !separator ? L" (grey)" : L"");
}

class Menus : public Scenario {
 protected:
  void expectMenuBar(const State& state) const {
    std::vector<std::wstring> seen;
    for (const MenuItem& item : menuBar(window)) {
      seen.push_back(shown(item.depth, item.text, item.separator, item.grayed));
    }
    std::vector<std::wstring> wanted;
    for (const Row& row : expectedRows(state.viewer)) {
      const bool separator = row.id == 0 && *row.text == 0;
      wanted.push_back(shown(row.depth, row.text, separator, !enabled(row.rule, state)));
    }
    EXPECT_EQ(seen, wanted);
  }
  void expectIds() const {
    for (const Row& row : expectedRows(false)) {
      if (row.id <= 0) continue;
      EXPECT_EQ(menuItem(window, row.id).text, row.text);
    }
  }
  std::vector<int> checkedIds() const {
    std::vector<int> ids;
    for (const MenuItem& item : menuBar(window)) {
      if (item.checked && !item.separator) ids.push_back(item.id);
    }
    return ids;
  }
  // Opens the context menu and waits for its window.
  HWND openContextMenu(POINT place) const {
    click(place, Button::Right);
    HWND menu = nullptr;
    eventually(
        [&] { return (menu = program.find(L"#32768")) != nullptr && IsWindowVisible(menu); });
    return menu;
  }
  std::vector<std::wstring> contextRows(HWND menu) const {
    constexpr UINT kGetMenu = 0x01E1;
    std::vector<std::wstring> rows;
    const auto handle = reinterpret_cast<HMENU>(SendMessageW(menu, kGetMenu, 0, 0));
    for (const MenuItem& item : describeMenu(window, handle)) {
      rows.push_back(shown(0, item.text, item.separator, item.grayed));
    }
    return rows;
  }
  void closeContextMenu(HWND menu) const {
    press(VK_ESCAPE);
    EXPECT_TRUE(eventually([&] { return !IsWindow(menu) || !IsWindowVisible(menu); }));
  }
};

TEST_F(Menus, OfAnEmptyWindow) {
  start();
  expectMenuBar({});
  expectIds();
  EXPECT_EQ(checkedIds(), (std::vector<int>{201, 212, 214, 204, 209, 301}));
}

TEST_F(Menus, OfAOnePageDocument) {
  startWith(coloredPdf(1));
  State state;
  state.document = true;
  expectMenuBar(state);
}

TEST_F(Menus, OfAWindowWithTheFindBar) {
  start();
  toFront();
  press('F', kCtrl);
  ASSERT_TRUE(eventually([&] { return IsWindowVisible(childOf(window, 404)) != FALSE; }));
  State state;
  state.findBar = true;
  expectMenuBar(state);
}

TEST_F(Menus, OfADocumentWithSelectedTextInABook) {
  startWith(markedPdf(3, 612, 792, "Some text"));
  press(VK_F6);
  press('A', kCtrl);
  ASSERT_TRUE(eventually([&] { return !menuItem(window, 702).grayed; }));
  State state;
  state.document = state.severalPages = state.selection = state.twoPanes = true;
  expectMenuBar(state);
  press('W');
  press('N', kCtrl);
  press(VK_F2);
  EXPECT_EQ(settled([&] { return checkedIds(); }, std::vector<int>{212, 214, 205, 302}),
            (std::vector<int>{212, 214, 205, 302}));
}

TEST_F(Menus, OfAViewer) {
  start(L"--viewer " + inQuotes(makeFile(L"one.pdf", coloredPdf(3))));
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  State state;
  state.viewer = state.document = state.severalPages = true;
  expectMenuBar(state);
}

TEST_F(Menus, TheContextMenuOffersWhatThePlaceAllows) {
  startWith(markedPdf(2, 612, 792, "Some text"));
  const RECT page = fitPage(pageArea(), {612, 792});
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  const HWND menu = openContextMenu(middleOf(page));
  picture("Menus.ContextMenu");
  EXPECT_THAT(contextRows(menu),
              ::testing::ElementsAre(L"&Save\tCtrl+S (grey)", L"&Discard Changes... (grey)",
                                     L"-----", L"&Copy\tCtrl+C (grey)", L"Select &All\tCtrl+A",
                                     L"&Highlight Selection\tSpace (grey)",
                                     L"Stri&kethrough Selection\tCtrl+Space (grey)",
                                     L"&Edit Text Object... (grey)", L"-----", L"De&lete Page...",
                                     L"&Insert Document Above...", L"Insert Document &Below...",
                                     L"&Rotate Document\tR", L"Rotate &Page\tCtrl+R", L"-----",
                                     L"Open in Separate &Viewer", L"Close\tCtrl+W"));
  closeContextMenu(menu);
}

TEST_F(Menus, TheContextMenuKnowsSelectionUnsavedTurnsAndTextUnderThePointer) {
  startWith(markedPdf(1, 612, 792, "Some text"));
  press('A', kCtrl);
  press('R');
  const RECT page = fitPage(pageArea(), {792, 612});
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  // The line of text runs down the right side of the turned page.
  const float zoom = fitPageZoom(pageArea(), {792, 612});
  const POINT onText = onScreen(page.left + static_cast<int>(zoom * (792 - 200 + 6)),
                                page.top + static_cast<int>(zoom * (72 + kCourierAdvance / 2)));
  const HWND menu = openContextMenu(onText);
  const std::vector<std::wstring> rows = contextRows(menu);
  EXPECT_THAT(rows, ::testing::Contains(L"&Save\tCtrl+S"));
  EXPECT_THAT(rows, ::testing::Contains(L"&Discard Changes..."));
  EXPECT_THAT(rows, ::testing::Contains(L"&Copy\tCtrl+C"));
  EXPECT_THAT(rows, ::testing::Contains(L"&Highlight Selection\tSpace"));
  EXPECT_THAT(rows, ::testing::Contains(L"&Edit Text Object..."));
  EXPECT_THAT(rows, ::testing::Contains(L"De&lete Page... (grey)"));
  closeContextMenu(menu);
}

TEST_F(Menus, TheContextMenuOfAViewerRefreshesAndEditsNothing) {
  start(L"--viewer " + inQuotes(makeFile(L"one.pdf", coloredPdf(2))));
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  toFront();
  const HWND menu = openContextMenu(middleOf(pageArea()));
  EXPECT_THAT(
      contextRows(menu),
      ::testing::ElementsAre(
          L"&Save\tCtrl+S (grey)", L"&Discard Changes... (grey)", L"-----", L"&Copy\tCtrl+C (grey)",
          L"Select &All\tCtrl+A", L"&Highlight Selection\tSpace (grey)",
          L"Stri&kethrough Selection\tCtrl+Space (grey)", L"&Edit Text Object... (grey)", L"-----",
          L"De&lete Page... (grey)", L"&Insert Document Above... (grey)",
          L"Insert Document &Below... (grey)", L"&Rotate Document\tR (grey)",
          L"Rotate &Page\tCtrl+R (grey)", L"-----", L"&Refresh from Source", L"-----",
          L"Open in Separate &Viewer (grey)", L"Close\tCtrl+W"));
  closeContextMenu(menu);
}

TEST_F(Menus, AnItemOfTheContextMenuIsChosenByMouse) {
  startWith(markedPdf(2, 612, 792));
  const RECT area = pageArea();
  const RECT page = fitPage(area, {612, 792});
  ASSERT_TRUE(pageBecomes(area, page));
  const HWND menu = openContextMenu(middleOf(page));
  ASSERT_NE(menu, nullptr);
  type(L"r");
  EXPECT_TRUE(pageBecomes(area, fitPage(area, {792, 612})));
}

TEST_F(Menus, MenusAreWalkedWithTheKeyboard) {
  startWith(coloredPdf(3));
  press('M', kAlt);
  ASSERT_TRUE(eventually([&] { return program.find(L"#32768") != nullptr; }));
  type(L"b");
  EXPECT_TRUE(becomesChecked(302));
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 3"));
  press('V', kAlt);
  ASSERT_TRUE(eventually([&] { return program.find(L"#32768") != nullptr; }));
  picture("Menus.ViewMenu");
  type(L"a");
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
}

TEST_F(Menus, ExitEndsTheProgram) {
  startWith(coloredPdf(1));
  runCommand(window, 109);
  EXPECT_EQ(program.exitCode(), 0u);
}

TEST_F(Menus, AMissingUserGuideIsTold) {
  start();
  runCommand(window, 504);
  EXPECT_TRUE(boxSays(L"The User Guide could not be found."));
}

TEST_F(Menus, SaveAllWithoutChangesSaysSo) {
  startWith(coloredPdf(1));
  runCommand(window, 605);
  EXPECT_TRUE(boxSays(L"No documents have unsaved changes."));
}

}  // namespace
}  // namespace quillmere::e2e
