#include "panels/binder_actions.h"

#include <chrono>

#include "panels/binder_panel_test.h"
#include "platform/files.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class BinderActionsTest : public BinderPanelTest {};

TEST_F(BinderActionsTest, ANewBinderIsMadeShownAndSelected) {
  standIn().saveDialogAnswers = {u"C:\\Binders\\Plans.lst"};
  AddNewBinder();
  EXPECT_EQ(platform::fileBytes(u"C:\\Binders\\Plans.lst"), "");
  EXPECT_EQ(binderAt(3).name, u"Plans");
  EXPECT_TRUE(session.binderPanelVisible);
  EXPECT_EQ(selectedText(), u"Plans");
  const platform::SaveDialogRequest& asked = standIn().saveDialogs.back();
  EXPECT_EQ(asked.title, u"Add New Binder");
  EXPECT_EQ(asked.defaultExtension, u"lst");
  EXPECT_EQ(asked.folder, u"C:\\Binders\\");
  ASSERT_THAT(asked.filters, SizeIs(2));
  EXPECT_EQ(asked.filters[0].name, u"Binder Files (*.lst)");
  EXPECT_EQ(asked.filters[0].pattern, u"*.lst");
  EXPECT_EQ(asked.filters[1].name, u"All Files");
}

TEST_F(BinderActionsTest, ANewBinderNeedsAName) {
  standIn().saveDialogAnswers = {u""};
  AddNewBinder();
  EXPECT_THAT(session.binderLibrary, SizeIs(3));
  EXPECT_FALSE(session.binderPanelVisible);
}

TEST_F(BinderActionsTest, AFileThatCannotBeMadeIsReported) {
  standIn().saveDialogAnswers = {u"C:\\none\\Plans.lst"};
  standIn().boxAnswers = {BoxAnswer::Ok};
  AddNewBinder();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text, u"Could not create the binder file.");
  EXPECT_EQ(standIn().boxes[0].title, u"Add New Binder");
  EXPECT_THAT(session.binderLibrary, SizeIs(3));
}

TEST_F(BinderActionsTest, ALoadedBinderChosenAsNewIsShownAndKeepsItsDocuments) {
  standIn().saveDialogAnswers = {u"C:\\Binders\\WORK.lst"};
  AddNewBinder();
  EXPECT_EQ(selectedText(), u"Work");
  EXPECT_THAT(onDisk(u"C:\\Binders\\Work.lst").files, SizeIs(3));
}

TEST_F(BinderActionsTest, AViewerAsksForNoBinderThatItWouldRefuse) {
  session.viewerRole = true;
  AddNewBinder();
  EXPECT_THAT(standIn().saveDialogs, IsEmpty());
  standIn().openDialogAnswers = {{u"C:\\Binders\\Work.lst"}};
  AddExistingBinder();
  EXPECT_THAT(standIn().openDialogs, IsEmpty());
}

TEST_F(BinderActionsTest, AViewerAsksNothingAboutARowThatItWouldKeep) {
  session.viewerRole = true;
  for (const bool quick : {false, true}) {
    deleteBinderRow(headRowOf(1), quick);
    deleteBinderRow(fileRowOf(1, 0), quick);
  }
  EXPECT_THAT(dialogScript().closeOrDeleteQuestions, IsEmpty());
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(session.binderLibrary, SizeIs(3));
  EXPECT_THAT(filesOf(1), SizeIs(3));
}

TEST_F(BinderActionsTest, ExistingBindersAreLoadedAndTheLastIsSelected) {
  platform::putFile(u"C:\\One.lst", "");
  platform::putFile(u"C:\\Two.lst", "");
  standIn().openDialogAnswers = {{u"C:\\One.lst", u"C:\\Two.lst"}};
  AddExistingBinder();
  EXPECT_THAT(session.binderLibrary, SizeIs(5));
  EXPECT_EQ(selectedText(), u"Two");
  EXPECT_TRUE(session.binderPanelVisible);
  const platform::OpenDialogRequest& asked = standIn().openDialogs.back();
  EXPECT_EQ(asked.title, u"Add Existing Binder");
  EXPECT_TRUE(asked.allowSeveral);
  EXPECT_EQ(asked.folder, u"C:\\Binders\\");
  EXPECT_EQ(asked.filters[0].pattern, u"*.lst");
}

TEST_F(BinderActionsTest, BindersThatCannotBeOpenedAreToldOfOnce) {
  platform::putFile(u"C:\\One.lst", "");
  standIn().openDialogAnswers = {{u"C:\\gone.lst", u"C:\\One.lst", u"C:\\lost.lst"}};
  standIn().boxAnswers = {BoxAnswer::Ok};
  AddExistingBinder();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text, u"One or more binder files could not be opened.");
  EXPECT_EQ(standIn().boxes[0].title, u"Add Existing Binder");
  EXPECT_EQ(standIn().boxes[0].icon, platform::BoxIcon::Warning);
  EXPECT_EQ(selectedText(), u"One");
}

TEST_F(BinderActionsTest, TheBoxOfTheLimitIsNotFollowedByAnother) {
  for (int i = 0; i < 48; ++i) {
    BinderFile binder;
    binder.path = u"C:\\" + std::u16string(static_cast<std::size_t>(i) + 1, u'x') + u".lst";
    session.binderLibrary.push_back(binder);
  }
  platform::putFile(u"C:\\One.lst", "");
  standIn().openDialogAnswers = {{u"C:\\One.lst"}};
  standIn().boxAnswers = {BoxAnswer::Ok};
  const int clearings = tree().clearings;
  AddExistingBinder();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Binder Limit");
  EXPECT_EQ(tree().clearings, clearings);
  EXPECT_FALSE(session.binderPanelVisible);
}

TEST_F(BinderActionsTest, ChosenDocumentsAreAddedInTheirOrder) {
  const std::u16string first = putPdf(u"first.pdf", simplePdf(1));
  standIn().openDialogAnswers = {{first, filesOf(1)[0], first}};
  AddFilesDialog(2);
  EXPECT_THAT(filesOf(2), ElementsAre(first, filesOf(1)[0]));
  EXPECT_EQ(selectedText(), u"Rest");
}

// The gate would look at each file before its share has said that it answers.
TEST_F(BinderActionsTest, ChosenDocumentsOnASilentShareAreAddedAfterOneTimeout) {
  session.settings.openTimeoutSeconds = 1;
  platform::setVolume(u"\\\\nas\\texts", platform::VolumeState::Silent);
  Texts chosen;
  for (const char16_t* name : {u"a", u"b", u"c", u"d", u"e", u"f"}) {
    chosen.push_back(std::u16string(u"\\\\nas\\texts\\") + name + u".pdf");
  }
  standIn().openDialogAnswers = {chosen};
  const auto start = std::chrono::steady_clock::now();
  AddFilesDialog(2);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  EXPECT_EQ(standIn().threadsStarted, 6);  // one probe for each
  EXPECT_EQ(filesOf(2), chosen);
}

TEST_F(BinderActionsTest, WithoutAChosenDocumentNothingIsRebuilt) {
  standIn().openDialogAnswers = {{}};
  const int clearings = tree().clearings;
  AddFilesDialog(1);
  EXPECT_EQ(tree().clearings, clearings);
}

TEST_F(BinderActionsTest, AddingToNoBinderOrInAViewerAsksNothing) {
  AddFilesDialog(-1);
  session.viewerRole = true;
  AddFilesDialog(1);
  EXPECT_THAT(standIn().openDialogs, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
