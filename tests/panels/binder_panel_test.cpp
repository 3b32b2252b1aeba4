#include "panels/binder_panel_test.h"

#include "platform/files.h"
#include "session/changes.h"
#include "store/working_documents.h"

namespace quillmere::test {
namespace {

using platform::kNoTreeRow;
using platform::setVolume;
using platform::VolumeState;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(BinderPanelTest, EachBinderHasAHeadAndARowForEachDocument) {
  EXPECT_THAT(rows(), ElementsAre(u"\u2795 New Binder...", u"Working Documents", u" used",
                                  u" second", u"Work", u" \u2795 Add Document...", u" a", u" b",
                                  u" c", u"Rest", u" \u2795 Add Document..."));
  for (const std::size_t binder : {0, 1, 2}) EXPECT_TRUE(row(rowWith(head(binder))).expanded);
}

TEST_F(BinderPanelTest, WithoutBindersTheFirstRowStandsAlone) {
  session.binderLibrary.clear();
  BuildBinderTree();
  EXPECT_THAT(rows(), ElementsAre(u"\u2795 New Binder..."));
}

TEST_F(BinderPanelTest, RowsCarryBinderAndDocumentInTheirValues) {
  EXPECT_EQ(row(rowWith(0x0000FFFD)).content.text, u"\u2795 New Binder...");
  EXPECT_EQ(row(rowWith(0x0000FFFF)).content.text, u"Working Documents");
  EXPECT_EQ(row(rowWith(0x00000001)).content.text, u"second");
  EXPECT_EQ(row(rowWith(0x0001FFFE)).content.text, u"\u2795 Add Document...");
  EXPECT_EQ(row(rowWith(0x00010002)).content.text, u"c");
  EXPECT_EQ(row(rowWith(0x0002FFFF)).content.text, u"Rest");
}

TEST_F(BinderPanelTest, BoldBindersAndDocumentsAreBold) {
  binderAt(1).views[platform::toLower(filesOf(1)[1])].bold = true;
  binderAt(2).bold = true;
  BuildBinderTree();
  EXPECT_TRUE(row(rowWith(head(0))).content.bold);
  EXPECT_FALSE(row(rowWith(head(1))).content.bold);
  EXPECT_TRUE(row(rowWith(head(2))).content.bold);
  EXPECT_FALSE(row(rowWith(file(1, 0))).content.bold);
  EXPECT_TRUE(row(rowWith(file(1, 1))).content.bold);
}

TEST_F(BinderPanelTest, RowsOfACollapsedHeadAreMadeWhenItIsExpanded) {
  binderAt(1).collapsed = true;
  BuildBinderTree();
  EXPECT_EQ(rowWith(file(1, 0)), kNoTreeRow);
  EXPECT_TRUE(row(rowWith(head(1))).content.expandable);
  EXPECT_FALSE(row(rowWith(head(1))).expanded);
  fillBinderHead(head(1));
  EXPECT_EQ(row(rowWith(file(1, 2))).content.text, u"c");
  const std::size_t count = tree().rows.size();
  fillBinderHead(head(1));
  EXPECT_EQ(tree().rows.size(), count);
}

TEST_F(BinderPanelTest, WorkingDocumentsWithoutDocumentsCannotBeExpanded) {
  filesOf(0).clear();
  BuildBinderTree();
  EXPECT_FALSE(row(rowWith(head(0))).content.expandable);
}

TEST_F(BinderPanelTest, DocumentsBeyondWhatRowsCanCountAreKeptButNotShown) {
  filesOf(2).assign(65'600, u"C:\\many.pdf");
  BuildBinderTree();
  EXPECT_NE(rowWith(file(2, 65'532)), kNoTreeRow);
  EXPECT_EQ(row(rowWith(addDocument(2))).content.text, u"\u2795 Add Document...");
  EXPECT_EQ(tree().children[rowWith(head(2))].size(), 65'534u);
  EXPECT_EQ(filesOf(2).size(), 65'600u);
}

TEST_F(BinderPanelTest, ExpandingAndCollapsingAHeadIsKeptInItsFile) {
  binderHeadToggled(head(1), true);
  EXPECT_TRUE(onDisk(u"C:\\Binders\\Work.lst").collapsed);
  binderHeadToggled(head(1), false);
  EXPECT_FALSE(onDisk(u"C:\\Binders\\Work.lst").collapsed);
}

TEST_F(BinderPanelTest, AHeadThatIsAsItWasIsNotWritten) {
  platform::deleteFile(u"C:\\Binders\\Work.lst");
  binderHeadToggled(head(1), false);
  EXPECT_FALSE(platform::fileExists(u"C:\\Binders\\Work.lst"));
}

TEST_F(BinderPanelTest, WhatTheProgramExpandsIsNotTakenForTheUser) {
  const OwnTreeChange own;
  binderHeadToggled(head(1), true);
  EXPECT_FALSE(binderAt(1).collapsed);
}

TEST_F(BinderPanelTest, AViewerKeepsNoFileOfWhatItCollapses) {
  session.viewerRole = true;
  platform::deleteFile(u"C:\\Binders\\Work.lst");
  binderHeadToggled(head(1), true);
  EXPECT_TRUE(binderAt(1).collapsed);
  EXPECT_FALSE(platform::fileExists(u"C:\\Binders\\Work.lst"));
}

TEST_F(BinderPanelTest, CollapsingAllKeepsItInTheFilesThatWereExpanded) {
  binderAt(2).collapsed = true;
  platform::deleteFile(u"C:\\Binders\\Rest.lst");
  BuildBinderTree();
  collapseAllBinders();
  for (const std::size_t binder : {0, 1, 2}) EXPECT_FALSE(row(rowWith(head(binder))).expanded);
  EXPECT_TRUE(onDisk(u"C:\\Binders\\Work.lst").collapsed);
  EXPECT_TRUE(onDisk(u"C:\\WorkingDocs.lst").collapsed);
  EXPECT_FALSE(platform::fileExists(u"C:\\Binders\\Rest.lst"));
}

TEST_F(BinderPanelTest, ARebuildSelectsTheSameDocumentWhereverItIsNow) {
  select(file(0, 1));
  AddToWorkingDocuments(filesOf(0)[1], kWorkingDocsToHead);
  deliverPosted();
  EXPECT_EQ(selectedText(), u"second");
  EXPECT_EQ(row(tree().selected).content.entry, file(0, 0));
}

TEST_F(BinderPanelTest, ARebuildKeepsTheSelectedHeadAndMarkerRows) {
  for (const std::int32_t value : {newBinder(), head(1), addDocument(2)}) {
    select(value);
    BuildBinderTree();
    EXPECT_EQ(row(tree().selected).content.entry, value);
  }
  tree().selected = kNoTreeRow;
  BuildBinderTree();
  EXPECT_EQ(tree().selected, kNoTreeRow);
}

TEST_F(BinderPanelTest, TheSecondOfTwoEqualPathsStaysSelected) {
  filesOf(1).push_back(filesOf(1)[0]);
  BuildBinderTree();
  select(file(1, 3));
  BuildBinderTree();
  EXPECT_EQ(row(tree().selected).content.entry, file(1, 3));
}

TEST_F(BinderPanelTest, WhatTakesThePlaceOfASelectedRowThatIsGoneIsSelected) {
  select(file(1, 1));
  filesOf(1).erase(filesOf(1).begin() + 1);
  BuildBinderTree();
  EXPECT_EQ(selectedText(), u"c");
  filesOf(1).pop_back();
  BuildBinderTree();
  EXPECT_EQ(selectedText(), u"a");
  filesOf(1).clear();
  BuildBinderTree();
  EXPECT_EQ(row(tree().selected).content.entry, addDocument(1));
  session.binderLibrary.erase(session.binderLibrary.begin() + 1);
  BuildBinderTree();
  EXPECT_EQ(selectedText(), u"Rest");
}

TEST_F(BinderPanelTest, ADocumentSelectedInABinderThatWasCollapsedGivesWayToTheHead) {
  select(file(1, 1));
  binderAt(1).collapsed = true;
  BuildBinderTree();
  EXPECT_EQ(selectedText(), u"Work");
}

TEST_F(BinderPanelTest, ARebuildKeepsTheScrollPlace) {
  tree().top = rowWith(file(1, 1));
  filesOf(0).insert(filesOf(0).begin(), u"C:\\new.pdf");
  BuildBinderTree();
  EXPECT_EQ(row(tree().top).content.text, u"b");
  EXPECT_EQ(tree().updates, 0);
}

TEST_F(BinderPanelTest, WhileTheControlWorksARebuildWaitsAndManyAreOne) {
  const int clearings = tree().clearings;
  {
    const BinderTreeGuard outer;
    {
      const BinderTreeGuard inner;
      BuildBinderTree();
      BuildBinderTree();
    }
    EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 0);
    EXPECT_EQ(tree().clearings, clearings);
  }
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 1);
  deliverPosted();
  EXPECT_EQ(tree().clearings, clearings + 1);
  { const BinderTreeGuard another; }
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 0);
}

TEST_F(BinderPanelTest, ARebuildThatIsDeliveredToABusyTreeWaitsAgain) {
  const int clearings = tree().clearings;
  {
    const BinderTreeGuard guard;
    AddToWorkingDocuments(u"C:\\new.pdf", kWorkingDocsToHead);
    deliverPosted();
    EXPECT_EQ(tree().clearings, clearings);
  }
  deliverPosted();
  EXPECT_EQ(rows()[2], u" new");
}

TEST_F(BinderPanelTest, AWaitingRebuildCarriesTheRowToSelect) {
  select(file(1, 0));
  {
    const BinderTreeGuard guard;
    BuildBinderTree();
    SelectBinderHead(2);
    EXPECT_EQ(selectedText(), u"a");
  }
  deliverPosted();
  EXPECT_EQ(selectedText(), u"Rest");
  BuildBinderTree();
  EXPECT_EQ(selectedText(), u"Rest");
}

TEST_F(BinderPanelTest, AHeadIsSelectedAtOnceWhereNoRebuildWaits) {
  SelectBinderHead(1);
  EXPECT_EQ(selectedText(), u"Work");
  SelectBinderHead(7);
  EXPECT_EQ(selectedText(), u"Work");
}

TEST_F(BinderPanelTest, AMissingDocumentIsDimmedWhenItsRowIsFirstDrawn) {
  platform::deleteFile(filesOf(1)[1]);
  BuildBinderTree();
  EXPECT_FALSE(row(rowWith(file(1, 1))).dimmed);
  EXPECT_TRUE(binderRowDimmed(file(1, 1)));
  EXPECT_TRUE(row(rowWith(file(1, 1))).dimmed);
  EXPECT_FALSE(binderRowDimmed(file(1, 0)));
  EXPECT_FALSE(binderRowDimmed(head(1)));
  EXPECT_FALSE(binderRowDimmed(addDocument(1)));
  EXPECT_FALSE(binderRowDimmed(-1));
}

TEST_F(BinderPanelTest, ARowIsTestedOnceUntilSomethingWasFound) {
  EXPECT_FALSE(binderRowDimmed(file(1, 1)));
  platform::deleteFile(filesOf(1)[1]);
  EXPECT_FALSE(binderRowDimmed(file(1, 1)));
  RepaintBinderTree();
  EXPECT_EQ(tree().repaints, 1);
  EXPECT_TRUE(binderRowDimmed(file(1, 1)));
  putPdf(u"b.pdf", simplePdf(1));
  RepaintBinderTree();
  EXPECT_FALSE(binderRowDimmed(file(1, 1)));
  EXPECT_FALSE(row(rowWith(file(1, 1))).dimmed);
}

TEST_F(BinderPanelTest, ADocumentThatCouldNotBeReachedIsDimmed) {
  session.unavailableFiles.insert(platform::toLower(filesOf(1)[0]));
  EXPECT_TRUE(binderRowDimmed(file(1, 0)));
}

TEST_F(BinderPanelTest, DocumentsOnSharesAreNeverLookedFor) {
  setVolume(u"\\\\server\\share", VolumeState::Silent);
  setVolume(u"z:", VolumeState::Silent);
  standIn().mappedDrives = u"z";
  filesOf(2) = {u"\\\\server\\share\\net.pdf", u"Z:\\mapped.pdf", u"//server/share/net.pdf"};
  BuildBinderTree();
  for (const std::uint32_t index : {0, 1, 2}) EXPECT_FALSE(binderRowDimmed(file(2, index)));
  session.unavailableFiles.insert(u"\\\\server\\share\\net.pdf");
  RepaintBinderTree();
  EXPECT_TRUE(binderRowDimmed(file(2, 0)));
  setVolume(u"\\\\server\\share", VolumeState::Failing);
  setVolume(u"z:", VolumeState::Failing);
}

TEST_F(BinderPanelTest, WhatAnOpenFindsOutIsPainted) {
  const int repaints = tree().repaints;
  binderFilesChanged();
  EXPECT_EQ(tree().repaints, repaints + 1);
}

}  // namespace
}  // namespace quillmere::test
