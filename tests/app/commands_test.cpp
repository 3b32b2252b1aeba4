#include "app/commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "documents/open.h"
#include "session/document_slots.h"
#include "store/working_documents.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::IsEmpty;

struct Expected {
  std::uint32_t id;
  const char16_t* text;
};

constexpr Expected kExpected[] = {
    {101, u"&Open...\tCtrl+O"},
    {110, u"Open in Separate &Viewer"},
    {107, u"Add &New Binder..."},
    {108, u"Add &Existing Binder..."},
    {103, u"&Previous in Folder\tCtrl+["},
    {104, u"&Next in Folder\tCtrl+]"},
    {602, u"&Save\tCtrl+S"},
    {604, u"Save &As...\tCtrl+Shift+S"},
    {605, u"Save A&ll"},
    {606, u"&Discard All..."},
    {106, u"&Print...\tCtrl+P"},
    {105, u"&Close\tCtrl+W"},
    {109, u"E&xit"},
    {701, u"&Find...\tCtrl+F"},
    {702, u"&Copy\tCtrl+C"},
    {704, u"&Paste\tCtrl+V"},
    {703, u"Select &All\tCtrl+A"},
    {708, u"De&lete Page..."},
    {725, u"&Insert Document Above..."},
    {726, u"Insert Document &Below..."},
    {732, u"&Mark Up...\tCtrl+M"},
    {706, u"Flatten &Annotations..."},
    {719, u"Remove All A&nnotations..."},
    {731, u"Create Markup &Summary..."},
    {210, u"&Rotate Document\tR"},
    {211, u"Rotate &Page\tCtrl+R"},
    {707, u"&Discard Changes..."},
    {705, u"&Settings..."},
    {727, u"&Highlight Selection\tSpace"},
    {728, u"Stri&kethrough Selection\tCtrl+Space"},
    {729, u"&Remove Markup"},
    {730, u"&Add Note..."},
    {733, u"&Edit Text Object..."},
    {201, u"&Bookmarks Panel\tF2"},
    {212, u"Bin&ders Panel\tF3"},
    {601, u"Anno&tation Panel\tF4"},
    {214, u"&Group Markups Under Bookmarks"},
    {202, u"Zoom &In\t+"},
    {203, u"Zoom &Out\t-"},
    {204, u"&Fit Page\tF"},
    {205, u"Fit &Width\tW"},
    {206, u"&Actual Size (100%)\tA"},
    {208, u"&Custom Fit\tC"},
    {209, u"Pa&n Scroll\tCtrl+N"},
    {207, u"&Equal Panes\tCtrl+\\"},
    {213, u"&Refresh from Source"},
    {301, u"&Single Page\tF5"},
    {302, u"&Book\tF6"},
    {303, u"&Independent Pages\tF7"},
    {304, u"&Two Documents\tF8"},
    {504, u"&User Guide"},
    {502, u"&Shortcuts..."},
    {505, u"PDF &Security Info..."},
    {503, u"Check for &Updates..."},
    {501, u"&About..."},
};

const std::set<std::uint32_t> kRefusedInViewer = {210, 211, 601, 602, 604, 705, 706, 707, 708,
                                                  719, 725, 726, 727, 728, 729, 730, 732, 733};
const std::set<std::uint32_t> kMenuDisabledInViewer = {602, 604, 605, 606, 706, 708, 719, 725,
                                                       726, 732, 707, 705, 601, 210, 211, 110};

class CommandsTest : public OpeningTest {
 protected:
  static bool menuChecked(std::uint32_t id) { return standIn().window.menuItems[id].checked; }
  static bool menuEnabled(std::uint32_t id) { return standIn().window.menuItems[id].enabled; }
};

TEST_F(CommandsTest, EveryCommandHasItsText) {
  EXPECT_EQ(allCommands().size(), std::size(kExpected));
  for (const Expected& expected : kExpected) {
    const Command* command = findCommand(expected.id);
    ASSERT_NE(command, nullptr) << expected.id;
    EXPECT_EQ(std::u16string(command->text), expected.text) << expected.id;
  }
}

TEST_F(CommandsTest, IdsOfNoCommandAreUnknown) {
  for (std::uint32_t id : {0u, 100u, 102u, 111u, 189u, 187u, 215u, 300u, 305u, 603u, 720u, 734u,
                           32769u, 0xFFFFFFFFu}) {
    EXPECT_EQ(findCommand(id), nullptr) << id;
    EXPECT_FALSE(runCommand(id)) << id;
  }
}

TEST_F(CommandsTest, AViewerRefusesWhatEdits) {
  opened(u"a.pdf");
  session.viewerRole = true;
  session.settings.recentFiles = {u"C:\\x.pdf"};
  for (const Command& command : allCommands()) {
    const bool refused = command.inViewer == ViewerRule::Refused;
    EXPECT_EQ(refused, kRefusedInViewer.contains(command.id)) << command.id;
    if (!refused) continue;
    EXPECT_FALSE(runCommand(command.id)) << command.id;
  }
  EXPECT_EQ(session.panes[0].documentRotation, 0u);
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
  EXPECT_FALSE(session.stampPanelVisible);
  EXPECT_THAT(standIn().beeps, IsEmpty());
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(CommandsTest, AViewerGreysWhatEditsInTheMenuBar) {
  opened(u"a.pdf");
  session.viewerRole = true;
  refreshMenus();
  for (std::uint32_t id : kMenuDisabledInViewer) EXPECT_FALSE(menuEnabled(id)) << id;
  for (std::uint32_t id : {101u, 106u, 105u, 109u, 701u, 703u, 731u, 201u, 204u, 301u, 213u}) {
    EXPECT_TRUE(menuEnabled(id)) << id;
  }
}

TEST_F(CommandsTest, SavingAndDiscardingEverythingDoNothingInAViewer) {
  session.viewerRole = true;
  runCommand(605);
  runCommand(606);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(standIn().beeps, IsEmpty());
}

TEST_F(CommandsTest, WithNothingUnsavedSavingEverythingSaysSo) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_TRUE(runCommand(605));
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"No documents have unsaved changes.");
  EXPECT_EQ(standIn().boxes[0].title, u"Quillmere");
}

TEST_F(CommandsTest, WhatNeedsADocumentIsGreyedWithoutOne) {
  refreshMenus();
  for (std::uint32_t id : {103u, 104u, 110u, 708u, 702u, 704u, 207u}) {
    EXPECT_FALSE(menuEnabled(id)) << id;
  }
  for (std::uint32_t id :
       {101u, 602u, 604u, 105u, 106u, 703u, 210u, 211u, 202u, 203u, 204u, 601u}) {
    EXPECT_TRUE(menuEnabled(id)) << id;
  }
  opened(u"a.pdf", 1);
  refreshMenus();
  for (std::uint32_t id : {103u, 104u, 110u}) EXPECT_TRUE(menuEnabled(id)) << id;
  EXPECT_FALSE(menuEnabled(708));
  opened(u"b.pdf", 2);
  refreshMenus();
  EXPECT_TRUE(menuEnabled(708));
}

TEST_F(CommandsTest, TheActivePaneDecidesWhatIsGreyed) {
  session.viewMode = ViewMode::TwoDocuments;
  opened(u"a.pdf", 2, 0);
  session.activePane = 1;
  refreshMenus();
  EXPECT_FALSE(menuEnabled(110));
  setActivePane(0);
  EXPECT_TRUE(menuEnabled(110));
}

TEST_F(CommandsTest, CopyAndPasteFollowSelectionAndFindBar) {
  opened(u"a.pdf");
  session.findBarVisible = true;
  runCommand(703);
  refreshMenus();
  EXPECT_TRUE(menuEnabled(702));
  EXPECT_TRUE(menuEnabled(704));
}

TEST_F(CommandsTest, ModesAreChosenAndChecked) {
  for (std::uint32_t id : {304u, 303u, 302u, 301u}) {
    EXPECT_TRUE(runCommand(id));
    EXPECT_EQ(static_cast<std::uint32_t>(session.viewMode), id - 301);
    for (std::uint32_t mode = 301; mode <= 304; ++mode) {
      EXPECT_EQ(menuChecked(mode), mode == id) << mode;
    }
  }
}

TEST_F(CommandsTest, ZoomModesAreChosenAndChecked) {
  opened(u"a.pdf");
  const std::pair<std::uint32_t, std::int32_t> modes[] = {
      {205, kFitWidth}, {206, kActualSize}, {208, kCustomFit}, {204, kFitPage}};
  for (const auto& [id, mode] : modes) {
    EXPECT_TRUE(runCommand(id));
    EXPECT_EQ(session.panes[0].zoomMode, mode);
    for (const auto& [other, unused] : modes) EXPECT_EQ(menuChecked(other), other == id) << other;
  }
}

TEST_F(CommandsTest, ZoomStepsTurnToCustomFit) {
  opened(u"a.pdf");
  const float before = session.panes[0].zoom;
  EXPECT_TRUE(runCommand(202));
  EXPECT_FLOAT_EQ(session.panes[0].zoom, before * 1.18f);
  EXPECT_TRUE(menuChecked(208));
  EXPECT_TRUE(runCommand(203));
  EXPECT_NEAR(session.panes[0].zoom, before, 1e-4);
}

TEST_F(CommandsTest, PanScrollIsToggledAndChecked) {
  session.panScrollEnabled = false;
  EXPECT_TRUE(runCommand(209));
  EXPECT_TRUE(session.panScrollEnabled);
  EXPECT_TRUE(menuChecked(209));
  EXPECT_TRUE(runCommand(209));
  EXPECT_FALSE(session.panScrollEnabled);
  EXPECT_FALSE(menuChecked(209));
}

TEST_F(CommandsTest, PanelsAreToggledAndChecked) {
  const std::pair<std::uint32_t, bool*> panels[] = {{201, &session.navigationPanelVisible},
                                                    {212, &session.binderPanelVisible},
                                                    {601, &session.stampPanelVisible}};
  for (const auto& [id, visible] : panels) {
    const bool before = *visible;
    const int layouts = standIn().window.layouts;
    EXPECT_TRUE(runCommand(id));
    EXPECT_NE(*visible, before) << id;
    EXPECT_EQ(menuChecked(id), *visible) << id;
    EXPECT_GT(standIn().window.layouts, layouts) << id;
    runCommand(id);
    EXPECT_EQ(*visible, before) << id;
  }
}

TEST_F(CommandsTest, TheAnnotationPanelExistsInSinglePageAlone) {
  for (ViewMode mode : {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    session.viewMode = mode;
    runCommand(601);
    EXPECT_FALSE(session.stampPanelVisible);
  }
}

TEST_F(CommandsTest, GroupingOfMarkupsIsSavedAtOnce) {
  session.settings.markupsUnderBookmarks = true;
  EXPECT_TRUE(runCommand(214));
  EXPECT_FALSE(session.settings.markupsUnderBookmarks);
  EXPECT_FALSE(menuChecked(214));
  EXPECT_EQ(iniValue(u"Navigation", u"MarkupsUnderBookmarks"), u"0");
}

TEST_F(CommandsTest, EqualPanesCentresTheDividerOutsideSinglePage) {
  session.paneDividerPosition = 300;
  session.viewMode = ViewMode::IndependentPages;
  refreshMenus();
  EXPECT_TRUE(menuEnabled(207));
  EXPECT_TRUE(runCommand(207));
  EXPECT_EQ(session.paneDividerPosition, 0);
}

TEST_F(CommandsTest, RefreshFromSourceIsForViewersAlone) {
  opened(u"a.pdf", 2);
  putPdf(u"a.pdf", simplePdf(5));
  runCommand(213);
  EXPECT_EQ(session.active.pageCount, 2);
  session.viewerRole = true;
  EXPECT_TRUE(runCommand(213));
  EXPECT_EQ(session.active.pageCount, 5);
}

TEST_F(CommandsTest, RotatingTurnsDocumentOrPage) {
  opened(u"a.pdf");
  EXPECT_TRUE(runCommand(210));
  EXPECT_EQ(session.panes[0].documentRotation & 3, 1u);
  EXPECT_TRUE(runCommand(211));
  EXPECT_EQ(session.active.pageRotations[0] & 3, 1u);
}

TEST_F(CommandsTest, TheShownDocumentOpensInAViewer) {
  EXPECT_TRUE(runCommand(110));
  EXPECT_THAT(standIn().processes, IsEmpty());
  opened(u"a b.pdf");
  EXPECT_TRUE(runCommand(110));
  ASSERT_EQ(standIn().processes.size(), 1u);
  EXPECT_TRUE(standIn().processes[0].commandLine.ends_with(u" --viewer \"C:\\a b.pdf\""));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(CommandsTest, AViewerThatDoesNotStartIsReported) {
  opened(u"a.pdf");
  standIn().startProcessResult = false;
  standIn().boxAnswers = {BoxAnswer::Ok};
  runCommand(110);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"Could not open a separate viewer window.");
}

TEST_F(CommandsTest, TheUserGuideOpensBesideTheProgramOrIsMissed) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  runCommand(504);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"The User Guide could not be found.");
  EXPECT_THAT(standIn().processes, IsEmpty());
  putPdf(u"Program Files\\Quillmere\\UserGuide.pdf", simplePdf(1));
  runCommand(504);
  ASSERT_EQ(standIn().processes.size(), 1u);
  EXPECT_TRUE(standIn().processes[0].commandLine.ends_with(
      u" --viewer \"C:\\Program Files\\Quillmere\\UserGuide.pdf\""));
}

TEST_F(CommandsTest, RecentDocumentsOpenByTheirPlaceInTheMenu) {
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  const std::u16string b = putPdf(u"b.pdf", simplePdf(2));
  session.settings.recentFiles = {a, b};
  runCommand(710);
  EXPECT_EQ(session.active.path, b);
  EXPECT_EQ(session.settings.recentFiles.size(), 1u);
  runCommand(711);  // no such row
  EXPECT_EQ(session.active.path, b);
  runCommand(709);
  EXPECT_EQ(session.active.path, a);
}

TEST_F(CommandsTest, AMissingRecentDocumentIsReportedAndStaysInTheMenu) {
  session.settings.recentFiles = {u"C:\\gone.pdf", u"C:\\other.pdf"};
  platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
  EXPECT_TRUE(runCommand(kCmdRecentFirst));
  ASSERT_EQ(platform::standIn().boxes.size(), 1u);
  EXPECT_EQ(platform::standIn().boxes[0].text, u"Could not open PDF.\n(PDFium error 2)");
  EXPECT_TRUE(platform::standIn().beeps.empty());
  EXPECT_EQ(session.settings.recentFiles,
            (std::vector<std::u16string>{u"C:\\gone.pdf", u"C:\\other.pdf"}));
}

TEST_F(CommandsTest, ARecentDocumentDoesNotReplaceAChangedOneUnasked) {
  openInActive(simplePdf(3), u"C:\\changed.pdf");
  markEdited(session.active);
  session.settings.recentFiles = {putPdf(u"C:\\a.pdf", simplePdf(1))};
  platform::standIn().boxAnswers = {platform::BoxAnswer::Cancel};
  EXPECT_TRUE(runCommand(kCmdRecentFirst));
  EXPECT_EQ(platform::standIn().boxes.size(), 1u);
  EXPECT_EQ(session.active.path, u"C:\\changed.pdf");
}

TEST_F(CommandsTest, ARecentDocumentOpensInTheActivePane) {
  session.viewMode = ViewMode::TwoDocuments;
  session.activePane = 1;
  session.settings.recentFiles = {putPdf(u"a.pdf", simplePdf(1))};
  runCommand(709);
  EXPECT_EQ(session.panes[1].path, u"C:\\a.pdf");
}

TEST_F(CommandsTest, OpenAsksForFilesAndCloseClosesThem) {
  standIn().openDialogAnswers = {{putPdf(u"a.pdf", simplePdf(1))}};
  EXPECT_TRUE(runCommand(101));
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
  EXPECT_TRUE(runCommand(105));
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_TRUE(runCommand(105));
}

TEST_F(CommandsTest, ExitAsksTheWindowToClose) {
  EXPECT_TRUE(runCommand(109));
  EXPECT_EQ(standIn().window.closeRequests, 1);
}

TEST_F(CommandsTest, PageCommandsWithoutADocumentChangeNothing) {
  for (ViewMode mode :
       {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    session.viewMode = mode;
    for (std::uint32_t id : {202u, 203u, 702u, 703u, 210u, 211u, 207u}) runCommand(id);
    EXPECT_FALSE(hasUnsavedChanges());
    EXPECT_FALSE(session.selection.active);
  }
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
