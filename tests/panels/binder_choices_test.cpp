#include "panels/binder_choices.h"

#include "panels/binder_panel_test.h"
#include "platform/files.h"
#include "platform/sound.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::kNoTreeRow;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BinderChoicesTest : public BinderPanelTest {
 protected:
  // The control's part of a choice by mouse or keyboard. False when the move was vetoed.
  static bool choose(std::int32_t value) {
    if (!mayMoveBinderSelection(value)) return false;
    select(value);
    binderSelectionMoved(value, true);
    return true;
  }
  // The control's part of a click, in its order.
  static void click(std::int32_t value) {
    pressBinderTree();
    const bool selected = tree().selected == rowWith(value);
    clickBinderRow(value, selected);
    if (!selected) choose(value);
    deliverPosted();
  }
};

TEST_F(BinderChoicesTest, AClickOpensTheDocumentFromItsBinder) {
  click(file(1, 1));
  EXPECT_EQ(session.active.path, u"C:\\b.pdf");
  EXPECT_EQ(session.documentBinders[u"c:\\b.pdf"], u"C:\\Binders\\Work.lst");
  EXPECT_THAT(filesOf(0), SizeIs(2));
}

TEST_F(BinderChoicesTest, ADocumentInUseKeepsItsPlace) {
  click(file(0, 1));
  EXPECT_EQ(session.active.path, u"C:\\second.pdf");
  EXPECT_THAT(filesOf(0), ElementsAre(u"C:\\used.pdf", u"C:\\second.pdf"));
}

TEST_F(BinderChoicesTest, TheKeyboardOpensWhatItMovesToOnce) {
  choose(file(1, 0));
  ASSERT_EQ(session.active.path, u"C:\\a.pdf");
  choose(head(1));
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
  platform::deleteFile(u"C:\\a.pdf");
  choose(file(1, 0));
  EXPECT_THAT(standIn().beeps, IsEmpty());
  choose(file(1, 1));
  EXPECT_EQ(session.active.path, u"C:\\b.pdf");
}

TEST_F(BinderChoicesTest, WhatTheProgramSelectsNeitherAsksNorOpens) {
  opened(u"open.pdf");
  session.active.dirty = true;
  {
    const OwnTreeChange own;
    EXPECT_TRUE(mayMoveBinderSelection(file(1, 0)));
    binderSelectionMoved(file(1, 0), true);
  }
  binderSelectionMoved(file(1, 0), false);
  EXPECT_EQ(session.active.path, u"C:\\open.pdf");
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(BinderChoicesTest, AMoveToADocumentAsksAboutUnsavedChangesAndCancelStays) {
  opened(u"open.pdf");
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(choose(file(1, 0)));
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_NE(standIn().boxes.front().text.find(u"\"open.pdf\""), std::u16string::npos);
  EXPECT_EQ(session.active.path, u"C:\\open.pdf");
}

TEST_F(BinderChoicesTest, AfterTheAnswerTheOpenDoesNotAskAgain) {
  opened(u"open.pdf");
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(choose(file(1, 0)));
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
  EXPECT_THAT(standIn().boxes, SizeIs(1));
}

TEST_F(BinderChoicesTest, AMoveToAnyOtherRowAsksNothing) {
  opened(u"open.pdf");
  session.active.dirty = true;
  for (const std::int32_t value : {head(1), addDocument(1), newBinder(), -1}) {
    EXPECT_TRUE(mayMoveBinderSelection(value));
  }
}

TEST_F(BinderChoicesTest, AClickOnTheSelectedDocumentOpensItAgainAndAsks) {
  click(file(1, 0));
  opened(u"open.pdf");
  deliverPosted();
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  click(file(1, 0));
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
  EXPECT_THAT(standIn().boxes, SizeIs(1));
}

TEST_F(BinderChoicesTest, OnePressOpensADocumentOnce) {
  platform::deleteFile(u"C:\\a.pdf");
  click(file(1, 0));
  clickBinderRow(file(1, 0), true);
  EXPECT_THAT(standIn().beeps, ElementsAre(platform::Sound::Exclamation));
  click(file(1, 0));
  EXPECT_THAT(standIn().beeps, SizeIs(2));
}

TEST_F(BinderChoicesTest, ADocumentThatTheOtherPaneShowsIsNotOpenedTwiceByAClick) {
  openTwo();
  filesOf(1)[0] = right_;
  BuildBinderTree();
  setActivePane(0);
  click(file(1, 0));
  EXPECT_TRUE(inTwoDocuments());
  EXPECT_EQ(session.panes[0].path, left_);
}

TEST_F(BinderChoicesTest, EnterOpensWhatTheOtherPaneShowsInThisOne) {
  openTwo();
  filesOf(1)[0] = right_;
  BuildBinderTree();
  setActivePane(0);
  select(file(1, 0));
  enterOnBinderRow();
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(session.active.path, right_);
}

TEST_F(BinderChoicesTest, EnterOpensAgainAndAsks) {
  choose(file(1, 0));
  opened(u"open.pdf");
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  enterOnBinderRow();
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
}

TEST_F(BinderChoicesTest, EnterOnAHeadOrOnNothingDoesNothing) {
  select(head(1));
  enterOnBinderRow();
  tree().selected = kNoTreeRow;
  enterOnBinderRow();
  EXPECT_EQ(session.active.document, nullptr);
}

TEST_F(BinderChoicesTest, AddDocumentAsksForDocumentsOfItsBinder) {
  const std::u16string added = putPdf(u"added.pdf", simplePdf(1));
  standIn().openDialogAnswers = {{added}};
  click(addDocument(2));
  EXPECT_THAT(filesOf(2), ElementsAre(added));
  EXPECT_EQ(standIn().openDialogs.back().title, u"Add PDFs to Binder");
  EXPECT_TRUE(standIn().openDialogs.back().allowSeveral);
  EXPECT_EQ(rows().back(), u" added");
  EXPECT_THAT(onDisk(u"C:\\Binders\\Rest.lst").files, ElementsAre(added));
}

TEST_F(BinderChoicesTest, EnterOnTheMarkerRowsActsAsAClick) {
  standIn().openDialogAnswers = {{}};
  select(addDocument(1));
  enterOnBinderRow();
  EXPECT_THAT(standIn().openDialogs, SizeIs(1));
  standIn().saveDialogAnswers = {u""};
  select(newBinder());
  enterOnBinderRow();
  EXPECT_THAT(standIn().saveDialogs, SizeIs(1));
}

TEST_F(BinderChoicesTest, MovingOntoAMarkerRowDoesNothing) {
  EXPECT_TRUE(choose(newBinder()));
  EXPECT_TRUE(choose(addDocument(1)));
  EXPECT_THAT(standIn().saveDialogs, IsEmpty());
  EXPECT_THAT(standIn().openDialogs, IsEmpty());
}

TEST_F(BinderChoicesTest, ARowLeadsToItsDocumentEvenBeforeTheTreeFollows) {
  filesOf(0).insert(filesOf(0).begin(), putPdf(u"new.pdf", simplePdf(1)));
  choose(file(0, 1));
  EXPECT_EQ(session.active.path, u"C:\\second.pdf");
  filesOf(0).clear();
  choose(file(0, 0));
  EXPECT_EQ(session.active.path, u"C:\\second.pdf");
}

TEST_F(BinderChoicesTest, AMissingDocumentGivesTheBeepAloneAndIsDimmed) {
  platform::deleteFile(u"C:\\a.pdf");
  click(file(1, 0));
  EXPECT_THAT(standIn().beeps, ElementsAre(platform::Sound::Exclamation));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(binderRowDimmed(file(1, 0)));
}

TEST_F(BinderChoicesTest, PageKeysMoveAmongTheRowsOfABinder) {
  select(file(1, 1));
  moveToBinderSibling(true);
  EXPECT_EQ(selectedText(), u"c");
  EXPECT_EQ(session.active.path, u"C:\\c.pdf");
  moveToBinderSibling(false);
  EXPECT_EQ(row(tree().selected).content.entry, addDocument(1));
  EXPECT_EQ(session.active.path, u"C:\\c.pdf");
  select(file(0, 1));
  moveToBinderSibling(false);
  EXPECT_EQ(session.active.path, u"C:\\used.pdf");
}

TEST_F(BinderChoicesTest, PageKeysMoveAmongTheHeads) {
  select(head(1));
  moveToBinderSibling(true);
  EXPECT_EQ(selectedText(), u"Rest");
  moveToBinderSibling(false);
  EXPECT_EQ(row(tree().selected).content.entry, newBinder());
  select(addDocument(2));
  moveToBinderSibling(true);
  EXPECT_EQ(row(tree().selected).content.entry, addDocument(2));
  tree().selected = kNoTreeRow;
  moveToBinderSibling(true);
  EXPECT_EQ(tree().selected, kNoTreeRow);
}

TEST_F(BinderChoicesTest, APageKeyToADocumentAsksFirst) {
  opened(u"open.pdf");
  deliverPosted();
  session.active.dirty = true;
  select(file(1, 0));
  standIn().boxAnswers = {BoxAnswer::Cancel};
  moveToBinderSibling(true);
  EXPECT_EQ(selectedText(), u"a");
  EXPECT_EQ(session.active.path, u"C:\\open.pdf");
}

TEST_F(BinderChoicesTest, DeleteAsksBeforeItRemovesADocument) {
  select(file(1, 0));
  standIn().boxAnswers = {BoxAnswer::No};
  deleteOnBinderRow(false);
  EXPECT_THAT(filesOf(1), SizeIs(3));
  standIn().boxAnswers = {BoxAnswer::Yes};
  deleteOnBinderRow(false);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\b.pdf", u"C:\\c.pdf"));
  EXPECT_EQ(selectedText(), u"b");
  EXPECT_TRUE(platform::fileExists(u"C:\\a.pdf"));
}

TEST_F(BinderChoicesTest, DeleteWithShiftAsksNothing) {
  select(file(1, 0));
  deleteOnBinderRow(true);
  EXPECT_THAT(filesOf(1), SizeIs(2));
}

TEST_F(BinderChoicesTest, DeleteWithShiftStillAsksForAShelvedDocument) {
  ShelfEntry& entry = session.shelfIndex[u"c:\\a.pdf"];
  entry.path = u"c:\\a.pdf";
  entry.dirty = true;
  entry.shelfName = u"copy";
  select(file(1, 0));
  standIn().boxAnswers = {BoxAnswer::Cancel};
  deleteOnBinderRow(true);
  EXPECT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_THAT(filesOf(1), SizeIs(3));
}

TEST_F(BinderChoicesTest, DeleteOnAHeadClosesOrDeletesTheBinder) {
  select(head(1));
  deleteOnBinderRow(false);
  EXPECT_THAT(dialogScript().closeOrDeleteQuestions, ElementsAre(u"Work"));
  EXPECT_THAT(session.binderLibrary, SizeIs(3));
  dialogScript().closeOrDeleteAnswers = {CloseOrDelete::Close};
  deleteOnBinderRow(true);
  EXPECT_THAT(session.binderLibrary, SizeIs(2));
  EXPECT_TRUE(platform::fileExists(u"C:\\Binders\\Work.lst"));
  EXPECT_EQ(selectedText(), u"Rest");
  dialogScript().closeOrDeleteAnswers = {CloseOrDelete::Delete};
  standIn().boxAnswers = {BoxAnswer::Ok};
  deleteOnBinderRow(false);
  EXPECT_FALSE(platform::fileExists(u"C:\\Binders\\Rest.lst"));
  EXPECT_THAT(rows(),
              ElementsAre(u"\u2795 New Binder...", u"Working Documents", u" used", u" second"));
}

TEST_F(BinderChoicesTest, DeleteDoesNothingOnOtherRows) {
  for (const std::int32_t value : {head(0), addDocument(1), newBinder()}) {
    select(value);
    deleteOnBinderRow(false);
  }
  tree().selected = kNoTreeRow;
  deleteOnBinderRow(false);
  EXPECT_THAT(dialogScript().closeOrDeleteQuestions, IsEmpty());
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(session.binderLibrary, SizeIs(3));
}

TEST_F(BinderChoicesTest, OnlyTheHeadOfACustomBinderCanBeRenamed) {
  EXPECT_TRUE(mayRenameBinderRow(head(1)));
  for (const std::int32_t value : {head(0), file(1, 0), addDocument(1), newBinder(), -1}) {
    EXPECT_FALSE(mayRenameBinderRow(value));
  }
  session.viewerRole = true;
  EXPECT_FALSE(mayRenameBinderRow(head(1)));
}

TEST_F(BinderChoicesTest, ARenamedBinderIsShownAndSelectedOnceTheEditIsOver) {
  select(file(0, 0));
  {
    const BinderTreeGuard edit;
    EXPECT_TRUE(finishBinderRowRename(head(1), u" Play "));
  }
  deliverPosted();
  EXPECT_EQ(selectedText(), u"Play");
  EXPECT_EQ(binderAt(1).path, u"C:\\Binders\\Play.lst");
  EXPECT_TRUE(platform::fileExists(u"C:\\Binders\\Play.lst"));
}

TEST_F(BinderChoicesTest, ARefusedOrUnchangedNameLeavesTheTree) {
  const int clearings = tree().clearings;
  EXPECT_FALSE(finishBinderRowRename(head(1), u"Work"));
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(finishBinderRowRename(head(1), u"a?"));
  EXPECT_FALSE(finishBinderRowRename(head(0), u"Other"));
  EXPECT_FALSE(finishBinderRowRename(file(1, 0), u"Other"));
  EXPECT_EQ(tree().clearings, clearings);
}

}  // namespace
}  // namespace quillmere::test
