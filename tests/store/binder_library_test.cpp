#include "store/binder_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "base/text_format.h"
#include "store/binder_file.h"
#include "store/working_documents.h"
#include "support/binder_library_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::setVolume;
using platform::standIn;
using platform::VolumeState;
using testing::ElementsAre;
using testing::IsEmpty;

// Loading.

TEST_F(BinderLibraryTest, ABinderIsAppendedAndTheListSaved) {
  EXPECT_EQ(load(u"b", "C:\\x.pdf\r\n"), 0);
  EXPECT_EQ(load(u"a"), 1);
  EXPECT_THAT(names(), ElementsAre(u"b", u"a"));
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\x.pdf"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"C:\\Lists\\a.lst");
}

TEST_F(BinderLibraryTest, ABinderIsNeverLoadedTwice) {
  EXPECT_EQ(load(u"list"), 0);
  EXPECT_EQ(load(u"other"), 1);
  EXPECT_EQ(LoadBinder(u"c:\\LISTS\\LIST.lst"), 0);
  EXPECT_EQ(session.binderLibrary.size(), 2u);
}

TEST_F(BinderLibraryTest, AMissingFileAndAnEmptyPathGiveNoBinder) {
  EXPECT_EQ(LoadBinder(u"C:\\Lists\\none.lst"), kNoBinder);
  EXPECT_EQ(LoadBinder(u""), kNoBinder);
  EXPECT_EQ(FindBinder(u""), kNoBinder);
  EXPECT_THAT(session.binderLibrary, IsEmpty());
}

TEST_F(BinderLibraryTest, ARelativePathIsMadeAbsolute) {
  standIn().workingFolder = u"C:\\Lists";
  platform::putFile(listPath(u"here"), "");
  EXPECT_EQ(LoadBinder(u"here.lst"), 0);
  EXPECT_EQ(session.binderLibrary[0].path, listPath(u"here"));
}

TEST_F(BinderLibraryTest, TheFiftyFirstCustomBinderIsRefused) {
  LoadWorkingDocuments();
  loadMany(50);
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(load(u"one more"), kTooManyBinders);
  expectBox(u"Binder Limit",
            u"Cannot load another binder \u00E2\u20AC\u201D the maximum of 50 binders is already "
            u"loaded.\n\nClose a binder first (right-click the binder name in the Binder Library "
            u"panel \u2192 Close Binder).",
            BoxIcon::Information);
  EXPECT_EQ(session.binderLibrary.size(), 51u);
  EXPECT_EQ(LoadBinder(listPath(u"many7")), 8);  // one that is loaded is still found
}

TEST_F(BinderLibraryTest, AShareThatDoesNotAnswerGivesNoBinderWithinTheTimeout) {
  session.settings.openTimeoutSeconds = 1;
  setVolume(kShare, VolumeState::Silent);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(LoadBinder(u"\\\\nas\\lists\\a.lst"), kNoBinder);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

// Making.

TEST_F(BinderLibraryTest, ANewBinderIsAnEmptyFile) {
  platform::putFile(listPath(u"new"), "C:\\old.pdf\r\n");
  EXPECT_EQ(CreateBinder(listPath(u"new")), 0);
  EXPECT_EQ(platform::fileBytes(listPath(u"new")), "");
  EXPECT_THAT(session.binderLibrary[0].files, IsEmpty());
}

TEST_F(BinderLibraryTest, MakingALoadedBinderLeavesItAlone) {
  load(u"list", "C:\\a.pdf\r\n");
  EXPECT_EQ(CreateBinder(u"C:\\lists\\LIST.LST"), 0);
  EXPECT_EQ(platform::fileBytes(listPath(u"list")), "C:\\a.pdf\r\n");
  EXPECT_EQ(session.binderLibrary[0].files.size(), 1u);
}

TEST_F(BinderLibraryTest, MakingABinderThatWasLockedAtTheStartLeavesItsFileAlone) {
  load(u"list", "C:\\a.pdf\r\n");
  platform::setOtherUse(listPath(u"list"), platform::OtherUse::Exclusive);
  restart();
  ASSERT_EQ(session.absentBinders.size(), 1u);
  platform::setOtherUse(listPath(u"list"), platform::OtherUse::Nobody);
  EXPECT_GE(CreateBinder(listPath(u"list")), 0);
  EXPECT_EQ(platform::fileBytes(listPath(u"list")), "C:\\a.pdf\r\n");
  EXPECT_THAT(session.absentBinders, IsEmpty());
}

TEST_F(BinderLibraryTest, MakingABinderThatIsStillLockedIsTold) {
  load(u"list", "C:\\a.pdf\r\n");
  platform::setOtherUse(listPath(u"list"), platform::OtherUse::Exclusive);
  restart();
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(CreateBinder(listPath(u"list")), kNoBinder);
  expectBox(u"Add New Binder", u"Could not create the binder file.", BoxIcon::Error);
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"1");
  platform::setOtherUse(listPath(u"list"), platform::OtherUse::Nobody);
  EXPECT_EQ(platform::fileBytes(listPath(u"list")), "C:\\a.pdf\r\n");
}

TEST_F(BinderLibraryTest, ABinderThatIsBackLoadsAtTheLimitToo) {
  loadMany(49);
  platform::putFile(listPath(u"back"), "");
  session.absentBinders = {{listPath(u"back"), u""}};
  EXPECT_EQ(LoadBinder(listPath(u"back")), 49);
  EXPECT_THAT(session.absentBinders, IsEmpty());
}

TEST_F(BinderLibraryTest, AtTheLimitMakingABinderLeavesTheChosenFileAlone) {
  loadMany(50);
  platform::putFile(listPath(u"kept"), "C:\\a.pdf\r\n");
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(CreateBinder(listPath(u"kept")), kTooManyBinders);
  EXPECT_EQ(platform::fileBytes(listPath(u"kept")), "C:\\a.pdf\r\n");
}

TEST_F(BinderLibraryTest, ABinderThatCannotBeMadeIsTold) {
  platform::putFile(listPath(u"locked"), "kept");
  platform::setReadOnly(listPath(u"locked"), true);
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(CreateBinder(listPath(u"locked")), kNoBinder);
  expectBox(u"Add New Binder", u"Could not create the binder file.", BoxIcon::Error);
  EXPECT_EQ(platform::fileBytes(listPath(u"locked")), "kept");
}

// Adding.

TEST_F(BinderLibraryTest, FilesAreAddedAtTheEndAndWritten) {
  load(u"list", "C:\\a.pdf\r\n");
  AddFilesToBinder(0, {u"C:\\b.pdf", u"", u"C:\\no such file.pdf"});
  EXPECT_EQ(linesOnDisk(u"list"), "C:\\a.pdf\r\nC:\\b.pdf\r\nC:\\no such file.pdf\r\n");
  EXPECT_FALSE(session.binderLibrary[0].dirty);
}

TEST_F(BinderLibraryTest, FilesThatTheBinderHoldsAreSkippedWithoutAWrite) {
  load(u"list", "C:\\a.pdf\r\n");
  AddFilesToBinder(0, {u"c:\\A.PDF"});
  EXPECT_EQ(platform::fileBytes(listPath(u"list")), "C:\\a.pdf\r\n");
  AddFilesToBinder(0, {u"C:\\b.pdf", u"C:\\B.pdf"});
  EXPECT_EQ(session.binderLibrary[0].files.size(), 2u);
}

TEST_F(BinderLibraryTest, RelativePathsEnterABinderAsAbsoluteOnes) {
  load(u"list");
  standIn().workingFolder = u"C:\\Texts";
  AddFilesToBinder(0, {u"a.pdf", u"C:/Texts/A.pdf"});
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\Texts\\a.pdf"));
}

TEST_F(BinderLibraryTest, PathsAsLongAsTheSystemOpensSurviveFilesAndSettings) {
  const std::u16string document = u"C:\\" + std::u16string(252, u'd') + u".pdf";
  const std::u16string folder = u"C:\\" + std::u16string(248, u'f');
  const std::u16string list = folder + u"\\abc.lst";
  ASSERT_EQ(document.size(), 259u);
  ASSERT_EQ(list.size(), 260u - 1u);
  platform::putFile(list, "");
  ASSERT_EQ(LoadBinder(list), 0);
  AddFilesToBinder(0, {document});
  session.binderLibrary[0].views[u"c" + document.substr(1)] = {999999, -12345.6f, 12345.6f, 99.9f,
                                                               3,      true,      true};
  ASSERT_TRUE(WriteBinderFile(session.binderLibrary[0]));
  restart();
  ASSERT_THAT(names(), ElementsAre(u"Working Documents", u"abc"));
  EXPECT_EQ(session.binderLibrary[1].path, list);
  EXPECT_THAT(session.binderLibrary[1].files, ElementsAre(document));
  ASSERT_EQ(session.binderLibrary[1].views.size(), 1u);
  EXPECT_EQ(session.binderLibrary[1].views.begin()->second.page, 999999);
  EXPECT_EQ(session.binderLibrary[1].views.begin()->second.zoom, 99.9f);
}

TEST_F(BinderLibraryTest, TheLimitOfABinderIsTold) {
  std::string text;
  for (int i = 0; i < 999; ++i) text += "C:\\" + std::to_string(i) + ".pdf\r\n";
  load(u"list", text);
  standIn().boxAnswers = {BoxAnswer::Ok};
  AddFilesToBinder(0, {u"C:\\x.pdf", u"C:\\5.pdf", u"C:\\y.pdf", u"C:\\z.pdf"});
  expectBox(u"Binder File Limit",
            u"Added 1 file(s). 2 not added because the binder is at its limit of 1000 files.\n\n"
            u"Split larger collections across multiple binders.",
            BoxIcon::Information);
  EXPECT_EQ(session.binderLibrary[0].files.size(), 1000u);
  EXPECT_EQ(session.binderLibrary[0].files.back(), u"C:\\x.pdf");
}

TEST_F(BinderLibraryTest, AFailedSaveIsToldAndKeepsTheChangeInMemory) {
  load(u"list");
  platform::setReadOnly(listPath(u"list"), true);
  standIn().boxAnswers = {BoxAnswer::Ok};
  AddFilesToBinder(0, {u"C:\\a.pdf"});
  EXPECT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(session.binderLibrary[0].files.size(), 1u);
  EXPECT_TRUE(session.binderLibrary[0].dirty);
}

// Removing.

TEST_F(BinderLibraryTest, ARemovedFileTakesItsViewAlong) {
  load(u"list", "C:\\a.pdf\tpage=3\r\nC:\\b.pdf\tpage=4\r\n");
  RemoveFileRecord(0, 0);
  EXPECT_EQ(linesOnDisk(u"list"), "C:\\b.pdf\tpage=4\r\n");
  EXPECT_EQ(session.binderLibrary[0].views.size(), 1u);
  EXPECT_THAT(session.settings.recentFiles, IsEmpty());
  RemoveFileRecord(0, 1);
  RemoveFileRecord(1, 0);
  EXPECT_EQ(session.binderLibrary[0].files.size(), 1u);
}

TEST_F(BinderLibraryTest, AFileOfTheDocumentsInUseBecomesARecentOne) {
  LoadWorkingDocuments();
  session.binderLibrary[0].files = {u"C:\\a.pdf", u"C:\\b.pdf"};
  session.settings.recentFiles = {u"C:\\old.pdf"};
  RemoveFileRecord(0, 1);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\b.pdf", u"C:\\old.pdf"));
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\a.pdf"));
}

TEST_F(BinderLibraryTest, RemovingAllMakesTheFirstFileTheNewestRecentOne) {
  LoadWorkingDocuments();
  session.binderLibrary[0].files = {u"C:\\a.pdf", u"C:\\b.pdf", u"c:\\A.pdf"};
  RemoveAllFileRecords(0);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf"));
  EXPECT_THAT(session.binderLibrary[0].files, IsEmpty());
  EXPECT_EQ(platform::fileBytes(WorkingDocsPath()), kBinderMark + "# collapsed=0\r\n# bold=1\r\n");
}

TEST_F(BinderLibraryTest, RemovingAllIsOneWrite) {
  load(u"a", "C:\\a.pdf\r\nC:\\b.pdf\r\nC:\\c.pdf\r\n");
  int writes = 0;
  standIn().refuseFileCall = [&writes](platform::FileCall call) {
    if (call == platform::FileCall::Replace) ++writes;
    return false;
  };
  RemoveAllFileRecords(0);
  EXPECT_EQ(writes, 1);
  EXPECT_EQ(linesOnDisk(u"a"), "");
}

// Names.

TEST_F(BinderLibraryTest, ARenameMovesTheFileAndEverythingThatKnowsItsPath) {
  load(u"old", "C:\\a.pdf\r\n");
  session.documentBinders[u"c:\\a.pdf"] = u"C:\\Lists\\OLD.lst";
  session.documentBinders[u"c:\\b.pdf"] = u"C:\\Lists\\other.lst";
  EXPECT_TRUE(FinishBinderRename(0, u" \tnew name "));
  EXPECT_EQ(session.binderLibrary[0].name, u"new name");
  EXPECT_EQ(session.binderLibrary[0].path, listPath(u"new name"));
  EXPECT_FALSE(platform::fileExists(listPath(u"old")));
  EXPECT_EQ(platform::fileBytes(listPath(u"new name")), "C:\\a.pdf\r\n");
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], listPath(u"new name"));
  EXPECT_EQ(session.documentBinders[u"c:\\b.pdf"], u"C:\\Lists\\other.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), listPath(u"new name"));
}

TEST_F(BinderLibraryTest, TheSameNameIsNoRename) {
  load(u"list");
  EXPECT_FALSE(FinishBinderRename(0, u"  list\t"));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(RenameBinder(0, u"list"));
}

TEST_F(BinderLibraryTest, ABadNameIsToldAndChangesNothing) {
  load(u"list");
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  EXPECT_FALSE(FinishBinderRename(0, u" \t "));
  expectBox(u"Rename Binder", u"The name cannot be empty.", BoxIcon::Warning);
  EXPECT_FALSE(FinishBinderRename(0, u"a."));
  expectBox(u"Rename Binder", u"The name cannot end with a space or period.", BoxIcon::Warning);
  EXPECT_EQ(session.binderLibrary[0].name, u"list");
  EXPECT_TRUE(platform::fileExists(listPath(u"list")));
}

TEST_F(BinderLibraryTest, ANameThatIsTakenIsRefused) {
  load(u"list");
  platform::putFile(listPath(u"Taken"), "kept");
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(FinishBinderRename(0, u"taken"));
  expectBox(u"Rename Binder", u"A binder named 'taken' already exists.", BoxIcon::Warning);
  EXPECT_EQ(platform::fileBytes(listPath(u"Taken")), "kept");
}

TEST_F(BinderLibraryTest, ANameOfABinderWhoseFileIsAwayIsTakenToo) {
  load(u"list");
  load(u"away");
  platform::deleteFile(listPath(u"away"));
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(FinishBinderRename(0, u"Away"));
  expectBox(u"Rename Binder", u"A binder named 'Away' already exists.", BoxIcon::Warning);
  EXPECT_TRUE(platform::fileExists(listPath(u"list")));
}

TEST_F(BinderLibraryTest, ARenameThatChangesLetterCaseAlonePasses) {
  load(u"list");
  EXPECT_TRUE(FinishBinderRename(0, u"LIST"));
  EXPECT_THAT(platform::namesIn(u"C:\\Lists"), ElementsAre(u"LIST.lst"));
  EXPECT_EQ(session.binderLibrary[0].name, u"LIST");
}

TEST_F(BinderLibraryTest, ARenameThatTheSystemRefusesIsTold) {
  load(u"list");
  standIn().boxAnswers = {BoxAnswer::Ok};
  const std::u16string tooLong(250, u'n');
  EXPECT_FALSE(FinishBinderRename(0, tooLong));
  expectBox(u"Rename Binder",
            u"Could not rename the binder file:\n\n    C:\\Lists\\list.lst\n    -> C:\\Lists\\" +
                tooLong + u".lst\n\nThe binder name was not changed.",
            BoxIcon::Error);
  EXPECT_EQ(session.binderLibrary[0].path, listPath(u"list"));
}

TEST_F(BinderLibraryTest, TheDocumentsInUseKeepTheirName) {
  LoadWorkingDocuments();
  EXPECT_FALSE(FinishBinderRename(0, u"x"));
  EXPECT_FALSE(RenameBinder(0, u"x"));
  EXPECT_EQ(session.binderLibrary[0].name, u"Working Documents");
}

// Closing and deleting.

TEST_F(BinderLibraryTest, AClosedBinderKeepsItsFile) {
  load(u"a", "C:\\a.pdf\r\n");
  load(u"b");
  session.documentBinders[u"c:\\a.pdf"] = listPath(u"a");
  CloseBinder(0);
  EXPECT_THAT(names(), ElementsAre(u"b"));
  EXPECT_EQ(platform::fileBytes(listPath(u"a")), "C:\\a.pdf\r\n");
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], listPath(u"a"));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"1");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), listPath(u"b"));
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"");
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b"));
  EXPECT_EQ(LoadBinder(listPath(u"a")), 2);
  EXPECT_THAT(session.binderLibrary[2].files, ElementsAre(u"C:\\a.pdf"));
}

TEST_F(BinderLibraryTest, ADeletedBinderLosesItsFileAndNoDocument) {
  platform::putFile(u"C:\\a.pdf", "x");
  load(u"a", "C:\\a.pdf\r\n");
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_TRUE(DeleteBinder(0));
  expectBox(u"Confirm Delete", u"Permanently delete the binder file?\nThis cannot be undone.",
            BoxIcon::Warning);
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::OkDefaultCancel);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_FALSE(platform::fileExists(listPath(u"a")));
  EXPECT_TRUE(platform::fileExists(u"C:\\a.pdf"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"0");
}

TEST_F(BinderLibraryTest, CancelKeepsTheBinder) {
  load(u"a");
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(DeleteBinder(0));
  EXPECT_THAT(names(), ElementsAre(u"a"));
  EXPECT_TRUE(platform::fileExists(listPath(u"a")));
}

TEST_F(BinderLibraryTest, AllCustomBindersCloseTogetherWithThoseThatCouldNotBeReached) {
  LoadWorkingDocuments();
  EXPECT_FALSE(AnyCustomBinder());
  EXPECT_FALSE(CloseAllCustomBinders());
  EXPECT_EQ(iniValue(u"Binders", u"Count"), std::nullopt);  // nothing went, nothing is saved
  session.absentBinders = {{u"\\\\nas\\lists\\far.lst", u""}};
  EXPECT_TRUE(AnyCustomBinder());
  load(u"a", "C:\\a.pdf\r\n");
  load(u"b");
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"3");
  EXPECT_TRUE(CloseAllCustomBinders());
  EXPECT_THAT(names(), ElementsAre(u"Working Documents"));
  EXPECT_THAT(session.absentBinders, IsEmpty());
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"0");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"");
  EXPECT_EQ(platform::fileBytes(listPath(u"a")), "C:\\a.pdf\r\n");
  EXPECT_FALSE(AnyCustomBinder());
}

TEST_F(BinderLibraryTest, TheDocumentsInUseAreNeitherClosedNorDeleted) {
  LoadWorkingDocuments();
  CloseBinder(0);
  EXPECT_FALSE(DeleteBinder(0));
  EXPECT_EQ(session.binderLibrary.size(), 1u);
}

// Order.

TEST_F(BinderLibraryTest, AFileMovesToWhereTheMarkIs) {
  struct {
    int from;
    DropPlace place;
    int to;
    const char* order;
  } const cases[] = {
      {0, {2, true}, 2, "1203"}, {0, {2, false}, 1, "1023"}, {3, {0, false}, 0, "3012"},
      {3, {0, true}, 1, "0312"}, {1, {1, true}, 1, "0123"},  {1, {1, false}, 1, "0123"},
      {1, {0, true}, 1, "0123"}, {0, {3, true}, 3, "1230"},  {2, {99, true}, 3, "0132"},
  };
  for (const auto& entry : cases) {
    session.binderLibrary.clear();
    load(u"list", "0\r\n1\r\n2\r\n3\r\n");
    EXPECT_EQ(MoveFileInBinder(0, entry.from, entry.place), entry.to);
    std::string order;
    for (const std::u16string& file : session.binderLibrary[0].files) {
      order += static_cast<char>(file[0]);
    }
    EXPECT_EQ(order, entry.order);
  }
}

TEST_F(BinderLibraryTest, AMovedFileIsWrittenAndOneThatStaysIsNot) {
  load(u"list", "a\r\nb\r\n");
  MoveFileInBinder(0, 0, {0, true});
  EXPECT_EQ(platform::fileBytes(listPath(u"list")), "a\r\nb\r\n");
  MoveFileInBinder(0, 0, {1, true});
  EXPECT_EQ(linesOnDisk(u"list"), "b\r\na\r\n");
}

TEST_F(BinderLibraryTest, ABinderMovesAndTheListIsSaved) {
  LoadWorkingDocuments();
  load(u"a");
  load(u"b");
  load(u"c");
  EXPECT_EQ(MoveBinder(1, {3, true}), 3);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b", u"c", u"a"));
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), listPath(u"b"));
  EXPECT_EQ(MoveBinder(3, {1, false}), 1);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"a", u"b", u"c"));
}

TEST_F(BinderLibraryTest, NothingGoesAboveTheDocumentsInUse) {
  LoadWorkingDocuments();
  load(u"a");
  load(u"b");
  EXPECT_EQ(MoveBinder(2, {0, false}), 2);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"a", u"b"));
  EXPECT_EQ(MoveBinder(2, {0, true}), 1);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b", u"a"));
  EXPECT_EQ(MoveBinder(0, {2, true}), 0);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b", u"a"));
}

TEST_F(BinderLibraryTest, ABinderDroppedRightAfterItselfStays) {
  load(u"a");
  load(u"b");
  EXPECT_EQ(MoveBinder(0, {0, true}), 0);
  EXPECT_EQ(MoveBinder(1, {0, true}), 1);
  EXPECT_THAT(names(), ElementsAre(u"a", u"b"));
}

// Lookups.

TEST_F(BinderLibraryTest, AFileIsLookedForInTheOtherBinders) {
  load(u"a", "C:\\x.pdf\r\n");
  load(u"b", "c:\\X.PDF\r\nC:\\y.pdf\r\n");
  EXPECT_TRUE(IsFileInOtherBinder(u"C:\\x.pdf", 0));
  EXPECT_TRUE(IsFileInOtherBinder(u"C:\\x.pdf", 1));
  EXPECT_FALSE(IsFileInOtherBinder(u"C:\\y.pdf", 1));
  EXPECT_TRUE(IsFileInOtherBinder(u"C:\\y.pdf", kNoBinder));
}

TEST_F(BinderLibraryTest, AViewerChangesNoBinder) {
  load(u"a", "C:\\x.pdf\r\nC:\\y.pdf\r\n");
  load(u"b");
  session.viewerRole = true;
  EXPECT_EQ(CreateBinder(listPath(u"new")), kNoBinder);
  EXPECT_FALSE(RenameBinder(0, u"new"));
  EXPECT_FALSE(FinishBinderRename(0, u"new"));
  EXPECT_FALSE(DeleteBinder(0));
  platform::putFile(u"C:\\other.lst", "");
  EXPECT_EQ(LoadBinder(u"C:\\other.lst"), kNoBinder);
  EXPECT_EQ(LoadBinder(listPath(u"B")), 1);
  CloseBinder(0);
  EXPECT_FALSE(CloseAllCustomBinders());
  AddFilesToBinder(0, {u"C:\\z.pdf"});
  RemoveFileRecord(0, 0);
  RemoveAllFileRecords(0);
  MoveFileInBinder(0, 0, {1, true});
  MoveBinder(0, {1, true});
  EXPECT_THAT(names(), ElementsAre(u"a", u"b"));
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\x.pdf", u"C:\\y.pdf"));
  EXPECT_EQ(platform::fileBytes(listPath(u"a")), "C:\\x.pdf\r\nC:\\y.pdf\r\n");
  EXPECT_THAT(platform::namesIn(u"C:\\Lists"), ElementsAre(u"a.lst", u"b.lst"));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
