#include "app/menus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "app/mouse.h"
#include "documents/open.h"
#include "store/working_documents.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/geometry.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr std::uint32_t kSeparator = 0;
constexpr std::uint32_t kSubmenu = 1;

std::vector<std::uint32_t> idsOf(const std::vector<MenuRow>& rows) {
  std::vector<std::uint32_t> ids;
  for (const MenuRow& row : rows) {
    ids.push_back(row.separator() ? kSeparator : row.command == 0 ? kSubmenu : row.command);
  }
  return ids;
}

const MenuRow& rowOf(const std::vector<MenuRow>& rows, std::uint32_t id) {
  static const MenuRow none;
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [id](const MenuRow& row) { return row.command == id; });
  if (found != rows.end()) return *found;
  ADD_FAILURE() << "no row " << id;
  return none;
}

const MenuRow& recentRow(const std::vector<MenuRow>& rows) {
  static const MenuRow none;
  for (const MenuRow& row : rows) {
    if (row.text == u"Recent &Documents") return row;
  }
  ADD_FAILURE() << "no recent documents";
  return none;
}

class MenusTest : public OpeningTest {
 protected:
  static std::vector<MenuRow> menu(std::size_t index) { return menuBar().at(index).rows; }

  // Client pixels of the first letter of "Page 1".
  static PixelRect letter() {
    double left = 0, right = 0, bottom = 0, top = 0;
    FPDFText_GetCharBox(session.panes[0].textPage.get(), 0, &left, &right, &bottom, &top);
    const PanePoint middle = pageToPane(0, (left + right) / 2, (bottom + top) / 2);
    const PixelRect pane = paneRect(0);
    PixelRect place;
    place.left = pane.left + static_cast<int>(middle.x);
    place.top = pane.top + static_cast<int>(middle.y);
    return place;
  }
};

TEST_F(MenusTest, TheBarHasFiveMenus) {
  std::vector<std::u16string> titles;
  for (const MenuBarEntry& entry : menuBar()) titles.push_back(entry.title);
  EXPECT_THAT(titles, ElementsAre(u"&File", u"&Edit", u"&View", u"&Mode", u"&Help"));
}

TEST_F(MenusTest, RowsStandInTheirGroups) {
  EXPECT_THAT(idsOf(menu(0)), ElementsAre(101, 110, kSeparator, kSubmenu, kSeparator, 107, 108,
                                          kSeparator, 103, 104, kSeparator, 602, 604, 605, 606,
                                          kSeparator, 106, kSeparator, 105, kSeparator, 109));
  EXPECT_THAT(idsOf(menu(1)), ElementsAre(701, kSeparator, 702, 704, 703, kSeparator, 708, 725, 726,
                                          kSeparator, 732, 706, 719, 731, kSeparator, 210, 211,
                                          kSeparator, 707, kSeparator, 705));
  EXPECT_THAT(idsOf(menu(2)),
              ElementsAre(201, 212, 601, kSeparator, 214, kSeparator, 202, 203, kSeparator, 204,
                          205, 206, 208, kSeparator, 209, kSeparator, 207));
  EXPECT_THAT(idsOf(menu(3)), ElementsAre(301, 302, 303, 304));
  EXPECT_THAT(idsOf(menu(4)),
              ElementsAre(504, 502, kSeparator, 505, kSeparator, 503, kSeparator, 501));
}

TEST_F(MenusTest, AViewerCanRefreshFromTheViewMenu) {
  session.viewerRole = true;
  const std::vector<std::uint32_t> ids = idsOf(menu(2));
  ASSERT_GE(ids.size(), 2u);
  EXPECT_EQ(ids.back(), 213u);
  EXPECT_EQ(ids[ids.size() - 2], kSeparator);
}

TEST_F(MenusTest, TheFileMenuOfTheBarIsTheOneThatIsBuiltAnew) {
  session.settings.recentFiles = {u"C:\\a.pdf"};
  EXPECT_EQ(idsOf(fileMenu()), idsOf(menu(0)));
  EXPECT_EQ(recentRow(fileMenu()).submenu.size(), 1u);
}

TEST_F(MenusTest, RecentDocumentsAreNumberedFromOne) {
  session.settings.recentFiles = {u"C:\\folder\\a.pdf", u"C:\\100%d & more.pdf"};
  const MenuRow recent = recentRow(fileMenu());
  EXPECT_TRUE(recent.enabled);
  ASSERT_EQ(recent.submenu.size(), 2u);
  EXPECT_EQ(recent.submenu[0].text, u"&1  a.pdf");
  EXPECT_EQ(recent.submenu[0].command, 709u);
  EXPECT_EQ(recent.submenu[1].text, u"&2  100%d && more.pdf");  // shown with one ampersand
  EXPECT_EQ(recent.submenu[1].command, 710u);
}

TEST_F(MenusTest, NoMoreThanTenRecentDocumentsAreShown) {
  session.settings.recentFiles.assign(15, u"C:\\a.pdf");
  const MenuRow recent = recentRow(fileMenu());
  ASSERT_EQ(recent.submenu.size(), 10u);
  EXPECT_EQ(recent.submenu[9].text, u"&10  a.pdf");
  EXPECT_EQ(recent.submenu[9].command, 718u);
}

TEST_F(MenusTest, WithoutRecentDocumentsTheItemIsPlainAndGreyed) {
  EXPECT_FALSE(recentRow(fileMenu()).enabled);
  EXPECT_TRUE(recentRow(fileMenu()).submenu.empty());
  session.settings.recentFiles = {u"C:\\a.pdf"};
  session.settings.recentFilesEnabled = false;
  EXPECT_FALSE(recentRow(fileMenu()).enabled);
  EXPECT_TRUE(recentRow(fileMenu()).submenu.empty());
}

TEST_F(MenusTest, CheckMarksShowWhatIsInForce) {
  session.navigationPanelVisible = true;
  session.binderPanelVisible = false;
  session.panScrollEnabled = true;
  session.panes[0].zoomMode = kFitWidth;
  const std::vector<MenuRow> view = menu(2);
  EXPECT_TRUE(rowOf(view, 201).checked);
  EXPECT_FALSE(rowOf(view, 212).checked);
  EXPECT_TRUE(rowOf(view, 209).checked);
  EXPECT_TRUE(rowOf(view, 205).checked);
  EXPECT_FALSE(rowOf(view, 204).checked);
  EXPECT_TRUE(rowOf(menu(3), 301).checked);
}

TEST_F(MenusTest, AViewerGreysEditingInTheFileAndEditMenus) {
  session.viewerRole = true;
  for (std::uint32_t id : {602u, 604u, 605u, 606u, 110u}) {
    EXPECT_FALSE(rowOf(menu(0), id).enabled) << id;
  }
  for (std::uint32_t id : {706u, 708u, 719u, 725u, 726u, 732u, 707u, 705u, 210u, 211u}) {
    EXPECT_FALSE(rowOf(menu(1), id).enabled) << id;
  }
  EXPECT_TRUE(rowOf(menu(0), 106).enabled);
  EXPECT_TRUE(rowOf(menu(1), 731).enabled);
}

TEST_F(MenusTest, ARightClickOffersWhatThePageAllows) {
  opened(u"a.pdf", 3);
  const std::vector<MenuRow> rows = contextMenu(0, 500, 600);
  EXPECT_THAT(idsOf(rows), ElementsAre(602, 707, kSeparator, 702, 703, 727, 728, 733, kSeparator,
                                       708, 725, 726, 210, 211, kSeparator, 110, 105));
  EXPECT_EQ(rowOf(rows, 105).text, u"Close\tCtrl+W");
  for (std::uint32_t id : {602u, 707u, 702u, 727u, 728u, 733u}) {
    EXPECT_FALSE(rowOf(rows, id).enabled) << id;
  }
  for (std::uint32_t id : {703u, 708u, 725u, 726u, 210u, 211u, 110u, 105u}) {
    EXPECT_TRUE(rowOf(rows, id).enabled) << id;
  }
}

TEST_F(MenusTest, ARightClickFollowsChangesAndSelection) {
  opened(u"a.pdf", 3);
  session.active.dirty = true;
  selectAll(0);
  const std::vector<MenuRow> rows = contextMenu(0, 500, 600);
  for (std::uint32_t id : {602u, 707u, 702u, 727u, 728u}) {
    EXPECT_TRUE(rowOf(rows, id).enabled) << id;
  }
}

TEST_F(MenusTest, ASelectionInTheOtherPaneIsNotOfferedForCopying) {
  opened(u"a.pdf", 3);
  session.viewMode = ViewMode::IndependentPages;
  loadPane(1, 0);
  selectAll(1);
  EXPECT_FALSE(rowOf(contextMenu(0, 100, 600), 702).enabled);
  EXPECT_TRUE(rowOf(contextMenu(1, 900, 600), 702).enabled);
}

TEST_F(MenusTest, ARightClickOnTextOffersToEditIt) {
  opened(u"a.pdf", 1);
  const PixelRect place = letter();
  const std::vector<MenuRow> rows = contextMenu(0, place.left, place.top);
  EXPECT_TRUE(rowOf(rows, 733).enabled);
  EXPECT_FALSE(rowOf(rows, 708).enabled);  // the last page cannot be deleted
}

TEST_F(MenusTest, ARightClickInAViewerOffersNoEdits) {
  opened(u"a.pdf", 3);
  session.viewerRole = true;
  selectAll(0);
  const PixelRect place = letter();
  const std::vector<MenuRow> rows = contextMenu(0, place.left, place.top);
  EXPECT_THAT(idsOf(rows),
              ElementsAre(602, 707, kSeparator, 702, 703, 727, 728, 733, kSeparator, 708, 725, 726,
                          210, 211, kSeparator, 213, kSeparator, 110, 105));
  for (std::uint32_t id : {727u, 728u, 733u, 708u, 725u, 726u, 210u, 211u, 110u}) {
    EXPECT_FALSE(rowOf(rows, id).enabled) << id;
  }
  for (std::uint32_t id : {702u, 703u, 213u, 105u}) EXPECT_TRUE(rowOf(rows, id).enabled) << id;
}

class MarkupMenuTest : public MenusTest {
 protected:
  static std::vector<MenuRow> rows(const std::string& note, bool viewer = false) {
    PdfPage page;
    page.annotations = {
        "<< /Type /Annot /Subtype /Highlight /Rect [100 300 300 400] /QuadPoints [100 400 300 400 "
        "100 300 300 300] " +
        note + " >>"};
    const std::u16string path = putPdf(u"a.pdf", buildPdf({page}));
    EXPECT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
    session.viewerRole = viewer;
    const PanePoint point = pageToPane(0, 200, 350);
    const PixelRect pane = paneRect(0);
    return releaseRight(pane.left + static_cast<int>(point.x),
                        pane.top + static_cast<int>(point.y));
  }
};

TEST_F(MarkupMenuTest, ARightClickOnAMarkOffersItsNoteAndItsRemovalFirst) {
  const std::vector<MenuRow> menu = rows("");
  EXPECT_THAT(idsOf(menu),
              ElementsAre(730, 729, kSeparator, 602, 707, kSeparator, 702, 703, 727, 728, 733,
                          kSeparator, 708, 725, 726, 210, 211, kSeparator, 110, 105));
  EXPECT_EQ(menu[0].text, u"&Add Note...");
  EXPECT_EQ(menu[1].text, u"&Remove Markup");
  EXPECT_TRUE(menu[0].enabled);
  EXPECT_TRUE(menu[1].enabled);
}

TEST_F(MarkupMenuTest, AMarkWithANoteOffersToEditIt) {
  EXPECT_EQ(rows("/Contents (here)").at(0).text, u"&Edit Note...");
  EXPECT_EQ(rows("/Contents ()").at(0).text, u"&Add Note...");
}

TEST_F(MarkupMenuTest, AViewerShowsBothGreyed) {
  const std::vector<MenuRow> menu = rows("/Contents (here)", true);
  EXPECT_EQ(menu.at(0).text, u"&Edit Note...");
  EXPECT_FALSE(menu.at(0).enabled);
  EXPECT_FALSE(menu.at(1).enabled);
}

}  // namespace
}  // namespace quillmere::test
