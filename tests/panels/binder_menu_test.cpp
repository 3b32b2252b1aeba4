#include "panels/binder_menu.h"

#include "documents/open_requests.h"
#include "panels/binder_panel_test.h"
#include "platform/files.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::kNoTreeRow;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BinderMenuTest : public BinderPanelTest {
 protected:
  // "number text", with "(off)" and "(checked)"; "-" for a separator.
  static Texts menuOf(std::int32_t value) {
    Texts lines;
    for (const MenuRow& row : binderMenu(binderRowOf(value))) {
      if (row.separator()) {
        lines.push_back(u"-");
        continue;
      }
      std::u16string line = platform::fromUtf8(std::to_string(row.command)) + u" " + row.text;
      if (!row.enabled) line += u" (off)";
      if (row.checked) line += u" (checked)";
      lines.push_back(line);
    }
    return lines;
  }
  static void chooseOn(std::int32_t value, std::uint32_t command) {
    dialogScript().menuAnswers = {command};
    ShowBinderContextMenu(10, 20, value);
    deliverPosted();
  }
  static ShelfEntry& shelve(const std::u16string& path) {
    ShelfEntry& entry = session.shelfIndex[platform::toLower(path)];
    entry.path = platform::toLower(path);
    entry.dirty = true;
    entry.shelfName = u"copy";
    return entry;
  }
};

TEST_F(BinderMenuTest, TheMenuOfTheEmptySpace) {
  EXPECT_THAT(menuOf(-1), ElementsAre(u"1 Add New Binder...", u"2 Add Existing Binder...", u"-",
                                      u"4 Refresh Binders", u"-", u"3 Collapse All", u"-",
                                      u"5 Close All Custom Binders"));
  session.binderLibrary.resize(1);
  EXPECT_EQ(menuOf(-1).back(), u"5 Close All Custom Binders (off)");
  EXPECT_EQ(menuOf(-1)[5], u"3 Collapse All");
  session.binderLibrary.clear();
  EXPECT_EQ(menuOf(-1)[5], u"3 Collapse All (off)");
}

TEST_F(BinderMenuTest, TheMenuOfTheDocumentsInUse) {
  EXPECT_THAT(menuOf(head(0)), ElementsAre(u"11 Open Document...", u"-", u"10 Close All", u"-",
                                           u"20 Bold (checked)"));
}

TEST_F(BinderMenuTest, TheMenuOfACustomBinder) {
  EXPECT_THAT(
      menuOf(head(1)),
      ElementsAre(u"1 Add Document to Binder...", u"5 Add Current Doc to Binder (off)", u"2 Rename",
                  u"20 Bold", u"-", u"6 Refresh", u"-", u"3 Close Binder", u"4 Delete Binder"));
  opened(u"open.pdf");
  EXPECT_EQ(menuOf(head(1))[1], u"5 Add Current Doc to Binder");
}

TEST_F(BinderMenuTest, TheMenuOfADocument) {
  EXPECT_THAT(
      menuOf(file(1, 0)),
      ElementsAre(u"1 Open", u"7 Open in Separate Viewer", u"6 View in Folder", u"4 Save (off)",
                  u"5 Discard Changes... (off)", u"3 Bold", u"-", u"2 Remove from Binder"));
  shelve(filesOf(0)[0]);
  binderAt(0).views[u"c:\\used.pdf"].bold = true;
  EXPECT_THAT(menuOf(file(0, 0)),
              ElementsAre(u"1 Open", u"7 Open in Separate Viewer", u"6 View in Folder", u"4 Save",
                          u"5 Discard Changes...", u"3 Bold (checked)", u"-",
                          u"2 Close from Working Docs"));
}

TEST_F(BinderMenuTest, ARightClickSelectsTheRowAndOpensNothing) {
  ShowBinderContextMenu(0, 0, file(1, 1));
  EXPECT_EQ(selectedText(), u"b");
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_THAT(dialogScript().menus, SizeIs(1));
}

TEST_F(BinderMenuTest, OnAMarkerRowARightClickActsAsALeftOne) {
  standIn().saveDialogAnswers = {u""};
  ShowBinderContextMenu(0, 0, newBinder());
  EXPECT_THAT(standIn().saveDialogs, SizeIs(1));
  standIn().openDialogAnswers = {{}};
  ShowBinderContextMenu(0, 0, addDocument(2));
  EXPECT_THAT(standIn().openDialogs, SizeIs(1));
  EXPECT_THAT(dialogScript().menus, IsEmpty());
}

TEST_F(BinderMenuTest, ARightClickAsksAboutUnsavedChangesAndCancelShowsNoMenu) {
  opened(u"open.pdf");
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  ShowBinderContextMenu(0, 0, file(1, 1));
  EXPECT_THAT(dialogScript().menus, IsEmpty());
  EXPECT_EQ(tree().selected, kNoTreeRow);
}

TEST_F(BinderMenuTest, OpenAsksOnceAboutTheSameChanges) {
  opened(u"open.pdf");
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  chooseOn(file(1, 1), 1);
  EXPECT_EQ(session.active.path, u"C:\\b.pdf");
  EXPECT_THAT(standIn().boxes, SizeIs(1));
}

TEST_F(BinderMenuTest, OpenOnTheSelectedRowAsks) {
  opened(u"open.pdf");
  deliverPosted();
  session.active.dirty = true;
  select(file(1, 1));
  standIn().boxAnswers = {BoxAnswer::Cancel};
  chooseOn(file(1, 1), 1);
  EXPECT_EQ(session.active.path, u"C:\\open.pdf");
  EXPECT_THAT(standIn().boxes, SizeIs(1));
}

TEST_F(BinderMenuTest, OpenTakesAnAnswerForItsOwnMenuOnly) {
  opened(u"open.pdf");
  deliverPosted();
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No, BoxAnswer::Cancel};
  ShowBinderContextMenu(0, 0, file(1, 1));
  chooseOn(file(1, 1), 1);
  EXPECT_THAT(standIn().boxes, SizeIs(2));
  EXPECT_EQ(session.active.path, u"C:\\open.pdf");
}

TEST_F(BinderMenuTest, ADocumentIsShownInAViewerAndInItsFolder) {
  chooseOn(file(1, 1), 7);
  ASSERT_THAT(standIn().processes, SizeIs(1));
  EXPECT_NE(standIn().processes[0].commandLine.find(u"C:\\b.pdf"), std::u16string::npos);
  chooseOn(file(1, 1), 6);
  EXPECT_THAT(standIn().shownInFolder, ElementsAre(u"C:\\b.pdf"));
}

// The shell handles messages of the program while it shows the folder.
TEST_F(BinderMenuTest, APathThatComesWhileTheFolderIsShownWaits) {
  const std::u16string other = putPdf(u"other.pdf", simplePdf(2));
  standIn().onOpenWithSystem = [&] {
    openHandedOver(other);
    EXPECT_EQ(session.active.path, u"");
  };
  chooseOn(file(1, 1), 6);
  EXPECT_THAT(standIn().shownInFolder, ElementsAre(u"C:\\b.pdf"));
  EXPECT_EQ(session.active.path, other);
}

TEST_F(BinderMenuTest, AFolderThatCannotBeShownIsReported) {
  standIn().showInFolderResult = false;
  standIn().boxAnswers = {BoxAnswer::Ok};
  chooseOn(file(1, 1), 6);
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text,
            u"This file's folder could not be opened.\n\nWindows Explorer reported a fault. Try "
            u"again if this keeps happening.");
}

TEST_F(BinderMenuTest, BoldOfADocumentIsShownAndKept) {
  chooseOn(file(1, 1), 3);
  EXPECT_TRUE(row(rowWith(file(1, 1))).content.bold);
  EXPECT_TRUE(onDisk(u"C:\\Binders\\Work.lst").views.at(u"c:\\b.pdf").bold);
  chooseOn(file(1, 1), 3);
  EXPECT_FALSE(row(rowWith(file(1, 1))).content.bold);
  EXPECT_FALSE(binderAt(1).views.at(u"c:\\b.pdf").bold);
}

TEST_F(BinderMenuTest, BoldOfABinderIsShownAndKept) {
  chooseOn(head(1), 20);
  EXPECT_TRUE(row(rowWith(head(1))).content.bold);
  EXPECT_TRUE(onDisk(u"C:\\Binders\\Work.lst").bold);
  chooseOn(head(0), 20);
  EXPECT_FALSE(row(rowWith(head(0))).content.bold);
  EXPECT_FALSE(onDisk(u"C:\\WorkingDocs.lst").bold);
}

TEST_F(BinderMenuTest, ADocumentIsRemovedWithoutAQuestion) {
  chooseOn(file(1, 1), 2);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\a.pdf", u"C:\\c.pdf"));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(rows()[7], u" c");
}

TEST_F(BinderMenuTest, ADocumentClosedFromThoseInUseIsRecent) {
  chooseOn(file(0, 0), 2);
  EXPECT_THAT(filesOf(0), ElementsAre(u"C:\\second.pdf"));
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\used.pdf"));
}

TEST_F(BinderMenuTest, SaveRebuildsTheTreeWhateverComesOfIt) {
  session.shelveFolder = u"C:\\Shelve\\";
  shelve(filesOf(1)[0]);
  standIn().boxAnswers = {BoxAnswer::Ok};  // the copy is missing
  const int clearings = tree().clearings;
  chooseOn(file(1, 0), 4);
  EXPECT_EQ(tree().clearings, clearings + 1);
}

TEST_F(BinderMenuTest, TheCurrentDocumentIsAddedAndTheBinderSelected) {
  const std::u16string path = opened(u"open.pdf");
  chooseOn(head(2), 5);
  EXPECT_THAT(filesOf(2), ElementsAre(path));
  EXPECT_EQ(selectedText(), u"Rest");
  EXPECT_EQ(rows().back(), u" open");
}

TEST_F(BinderMenuTest, RenameStartsTheEdit) {
  chooseOn(head(1), 2);
  EXPECT_EQ(tree().edited, rowWith(head(1)));
}

TEST_F(BinderMenuTest, RefreshShowsWhatTheFileHoldsNow) {
  BinderFile changed = binderAt(1);
  changed.files = {u"C:\\c.pdf"};
  WriteBinderFile(changed);
  chooseOn(head(1), 6);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\c.pdf"));
  EXPECT_EQ(rows()[6], u" c");
  platform::deleteFile(u"C:\\Binders\\Work.lst");
  chooseOn(head(1), 6);
  EXPECT_EQ(rowWith(head(2)), kNoTreeRow);
  EXPECT_EQ(rows()[4], u"Rest");
}

TEST_F(BinderMenuTest, CloseKeepsTheFileAndDeleteDeletesIt) {
  chooseOn(head(2), 3);
  EXPECT_THAT(session.binderLibrary, SizeIs(2));
  EXPECT_TRUE(platform::fileExists(u"C:\\Binders\\Rest.lst"));
  standIn().boxAnswers = {BoxAnswer::Cancel};
  chooseOn(head(1), 4);
  EXPECT_THAT(session.binderLibrary, SizeIs(2));
  standIn().boxAnswers = {BoxAnswer::Ok};
  chooseOn(head(1), 4);
  EXPECT_FALSE(platform::fileExists(u"C:\\Binders\\Work.lst"));
  EXPECT_EQ(rows().size(), 4u);
}

TEST_F(BinderMenuTest, CloseAllEmptiesTheDocumentsInUse) {
  standIn().boxAnswers = {BoxAnswer::Yes};
  chooseOn(head(0), 10);
  EXPECT_THAT(filesOf(0), IsEmpty());
  EXPECT_EQ(standIn().boxes[0].title, u"Remove All");
  EXPECT_EQ(rows()[2], u"Work");
}

TEST_F(BinderMenuTest, OpenDocumentAsksForDocumentsToOpen) {
  standIn().openDialogAnswers = {{putPdf(u"new.pdf", simplePdf(1))}};
  chooseOn(head(0), 11);
  EXPECT_EQ(session.active.path, u"C:\\new.pdf");
  EXPECT_EQ(rows()[2], u" new");
}

TEST_F(BinderMenuTest, TheMenuOfTheSpaceMakesAndLoadsBinders) {
  standIn().saveDialogAnswers = {u""};
  chooseOn(-1, 1);
  standIn().openDialogAnswers = {{}};
  chooseOn(-1, 2);
  EXPECT_THAT(standIn().saveDialogs, SizeIs(1));
  EXPECT_THAT(standIn().openDialogs, SizeIs(1));
}

TEST_F(BinderMenuTest, CollapseAllCollapsesEveryHead) {
  chooseOn(-1, 3);
  EXPECT_FALSE(row(rowWith(head(0))).expanded);
  EXPECT_TRUE(binderAt(2).collapsed);
}

TEST_F(BinderMenuTest, CloseAllCustomBindersLeavesTheDocumentsInUse) {
  chooseOn(-1, 5);
  EXPECT_THAT(rows(),
              ElementsAre(u"\u2795 New Binder...", u"Working Documents", u" used", u" second"));
  EXPECT_TRUE(platform::fileExists(u"C:\\Binders\\Work.lst"));
}

TEST_F(BinderMenuTest, ARowThatIsGoneByNowDoesNothing) {
  dialogScript().menuAnswers = {2};
  dialogScript().onMenu = [] { session.binderLibrary.resize(1); };
  ShowBinderContextMenu(0, 0, file(1, 1));
  EXPECT_THAT(session.binderLibrary, SizeIs(1));
}

}  // namespace
}  // namespace quillmere::test
