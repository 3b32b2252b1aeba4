#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "store/binder_library.h"
#include "store/recent_files.h"
#include "store/settings.h"
#include "store/working_documents.h"
#include "support/binder_library_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::setVolume;
using platform::standIn;
using platform::VolumeState;
using testing::ElementsAre;
using testing::IsEmpty;

class BinderRestoreTest : public BinderLibraryTest {};

// The start.

TEST_F(BinderRestoreTest, TheNextStartHasTheSameBinders) {
  load(u"b");
  load(u"a");
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b", u"a"));
  EXPECT_FALSE(session.restoringBinders);
}

TEST_F(BinderRestoreTest, ABinderWhoseFileHasGoneIsForgottenAtTheNextStart) {
  load(u"a");
  load(u"b");
  load(u"c");
  platform::deleteFile(listPath(u"b"));
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"a", u"c"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"Binders", u"Path2"), u"");
}

TEST_F(BinderRestoreTest, AStartThatDropsNothingLeavesTheListInTheFileUntouched) {
  platform::putFile(listPath(u"a"), "");
  putIni(u"[Binders]\nCount=1\nPath0=" + listPath(u"a") + u"\nPath7=C:\\Lists\\b.lst\n");
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"a"));
  EXPECT_EQ(iniValue(u"Binders", u"Path7"), u"C:\\Lists\\b.lst");
}

TEST_F(BinderRestoreTest, TheFileOfTheDocumentsInUseIsNoCustomBinder) {
  putIni(
      u"[Binders]\nCount=1\nPath0=c:\\users\\user\\appdata\\local\\quillmere\\workingdocs.LST\n");
  platform::putFile(WorkingDocsPath(), "C:\\a.pdf\r\n");
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"0");
}

TEST_F(BinderRestoreTest, ABinderOnASleepingShareKeepsItsPlaceInTheSettings) {
  putIni(
      u"[Binders]\nCount=3\nPath0=\\\\nas\\lists\\first.lst\nPath1=C:\\Lists\\a.lst\n"
      u"Path2=\\\\nas\\lists\\last.lst\n[Network]\nOpenTimeoutSeconds=1\n");
  platform::putFile(listPath(u"a"), "");
  setVolume(kShare, VolumeState::Silent);
  restart();
  EXPECT_LT(standIn().timeoutsGiven, 2000u);  // both binders share one
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"a"));
  load(u"b");
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"4");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"\\\\nas\\lists\\first.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"C:\\Lists\\a.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path2"), u"\\\\nas\\lists\\last.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path3"), u"C:\\Lists\\b.lst");

  setVolume(kShare, VolumeState::Present);
  platform::putFile(u"\\\\nas\\lists\\first.lst", "");
  RefreshAllBinders();  // now last.lst is known to be gone
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"first", u"a", u"b"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"3");
  EXPECT_THAT(session.absentBinders, IsEmpty());
}

TEST_F(BinderRestoreTest, ABinderOnAMappedDriveIsProbedAsOneOnAShare) {
  standIn().mappedDrives = u"n";
  setVolume(u"N:", VolumeState::Failing, 53);
  putIni(u"[Binders]\nCount=1\nPath0=N:\\a.lst\n");
  restart();
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"N:\\a.lst");
}

TEST_F(BinderRestoreTest, ABinderOnADriveThatIsNotConnectedIsNotForgotten) {
  putIni(u"[Binders]\nCount=3\nPath0=N:\\a.lst\nPath1=R:\\b.lst\nPath2=C:\\Lists\\gone.lst\n");
  setVolume(u"R:", VolumeState::Failing, 21);  // a reader without a card
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"N:\\a.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"R:\\b.lst");
  setVolume(u"N:", VolumeState::Present);
  RefreshAllBinders();  // now its file has gone
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"R:\\b.lst");
}

TEST_F(BinderRestoreTest, ARefreshLeavesABinderWhoseDriveWasUnplugged) {
  setVolume(u"N:", VolumeState::Present);
  platform::putFile(u"N:\\a.lst", "C:\\a.pdf\r\n");
  ASSERT_EQ(LoadBinder(u"N:\\a.lst"), 0);
  setVolume(u"N:", VolumeState::Failing, 3);
  RefreshBinder(0);
  RefreshAllBinders();
  ASSERT_EQ(session.binderLibrary.size(), 1u);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\a.pdf"));
  setVolume(u"N:", VolumeState::Present);
  platform::deleteFile(u"N:\\a.lst");
  RefreshBinder(0);
  EXPECT_THAT(session.binderLibrary, IsEmpty());
}

TEST_F(BinderRestoreTest, ABinderThatIsLockedAtTheStartIsNotForgotten) {
  load(u"a");
  load(u"b");
  platform::setOtherUse(listPath(u"a"), platform::OtherUse::Exclusive);
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b"));
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), listPath(u"a"));
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), listPath(u"b"));
  platform::setOtherUse(listPath(u"a"), platform::OtherUse::Nobody);
  EXPECT_EQ(LoadBinder(listPath(u"a")), 2);
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
}

TEST_F(BinderRestoreTest, AbsentBindersCountAtTheLimitSoThatNoneIsLost) {
  session.absentBinders = {{u"\\\\nas\\lists\\a.lst", u""}};
  loadMany(49);
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(load(u"one more"), kTooManyBinders);
}

TEST_F(BinderRestoreTest, WithoutRestoringTheBindersAreNotLoadedAndTheExitForgetsThem) {
  load(u"a");
  putIni(u"[Binders]\nRestoreOnLaunch=0\nCount=1\nPath0=C:\\Lists\\a.lst\n");
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"1");
  SaveSettings();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"0");
}

// Settings that another program has open alone when this one starts.

class UnreadSettingsTest : public BinderLibraryTest {
 protected:
  UnreadSettingsTest() {
    for (const char16_t* name : {u"a", u"b", u"new"}) platform::putFile(listPath(name), "");
    putIni(
        u"[Binders]\nCount=2\nPath0=C:\\Lists\\b.lst\nPath1=C:\\Lists\\a.lst\n"
        u"[RecentFiles]\nMaxEntries=7\nCount=1\nPath0=C:\\old.pdf\n"
        u"[Markup]\nHlOpacity=50\n[Panels]\nNavWidth=333\n[Window]\nX=40\nY=50\n");
    lockSettings(true);
    restart();
  }

  static void lockSettings(bool locked) {
    platform::setOtherUse(kIniPath,
                          locked ? platform::OtherUse::Exclusive : platform::OtherUse::Nobody);
  }
};

TEST_F(UnreadSettingsTest, KeepTheirListsAtTheExit) {
  EXPECT_THAT(names(), ElementsAre(u"Working Documents"));
  SaveSettings();  // still locked
  lockSettings(false);
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  SaveSettings();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path0"), u"C:\\old.pdf");
  restart();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b", u"a"));
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\old.pdf"));
}

TEST_F(UnreadSettingsTest, TakeInWhatWasAddedMeanwhile) {
  LoadBinder(listPath(u"new"));
  AddToRecentFiles({u"C:\\new.pdf"});
  lockSettings(false);
  EXPECT_EQ(LoadBinder(listPath(u"A")), 2);
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"3");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), listPath(u"b"));
  SaveSettings();
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path0"), u"C:\\new.pdf");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path1"), u"C:\\old.pdf");
}

TEST_F(UnreadSettingsTest, KeepTheValuesThatNobodyChanged) {
  lockSettings(false);
  session.settings.openTimeoutSeconds = 9;
  SaveSettings();
  EXPECT_EQ(iniValue(u"Markup", u"HlOpacity"), u"50");
  EXPECT_EQ(iniValue(u"RecentFiles", u"MaxEntries"), u"7");
  EXPECT_EQ(iniValue(u"Panels", u"NavWidth"), u"333");
  EXPECT_EQ(iniValue(u"Window", u"X"), u"40");
  EXPECT_EQ(iniValue(u"Network", u"OpenTimeoutSeconds"), u"9");
  EXPECT_EQ(iniValue(u"Panels", u"NavVisible"), std::nullopt);
}

TEST_F(UnreadSettingsTest, RefreshNoBinderUntilTheyCanBeRead) {
  LoadBinder(listPath(u"new"));
  RefreshAllBinders();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"new"));
  lockSettings(false);
  RefreshAllBinders();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b", u"a", u"new"));
}

// Refreshing.

TEST_F(BinderRestoreTest, ARefreshTakesOverWhatWasChangedOutside) {
  load(u"list", "C:\\a.pdf\r\n# bold=1");
  platform::putFile(listPath(u"list"), "C:\\b.pdf\r\n# collapsed=1");
  RefreshBinder(0);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\b.pdf"));
  EXPECT_TRUE(session.binderLibrary[0].collapsed);
  EXPECT_FALSE(session.binderLibrary[0].bold);
}

TEST_F(BinderRestoreTest, ABinderThatIsEditedByHandKeepsWhatIsInMemoryUntilItsRefresh) {
  load(u"list", "C:\\a.pdf\tpage=3\r\n");
  const std::string byHand = "# BOLD=1\nC:\\b.pdf\nC:\\a.pdf\tpage=7\tmode=2\njunk\tx\n";
  platform::putFile(listPath(u"list"), byHand);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\a.pdf"));
  RefreshBinder(0);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\b.pdf", u"C:\\a.pdf", u"junk"));
  EXPECT_EQ(session.binderLibrary[0].views[u"c:\\a.pdf"].page, 7);
  EXPECT_TRUE(session.binderLibrary[0].bold);
  EXPECT_FALSE(session.binderLibrary[0].dirty);
  EXPECT_EQ(platform::fileBytes(listPath(u"list")), byHand);  // a refresh only reads

  platform::putFile(listPath(u"list"), "C:\\lost.pdf\r\n");
  AddFilesToBinder(0, {u"C:\\c.pdf"});  // a change writes what is in memory, whole
  EXPECT_EQ(platform::fileBytes(listPath(u"list")),
            kBinderMark + "# collapsed=0\r\n# bold=1\r\nC:\\b.pdf\r\n" +
                "C:\\a.pdf\tpage=7\tpanX=0\tpanY=0\tzoom=1\tmode=2\r\njunk\r\nC:\\c.pdf\r\n");
}

TEST_F(BinderRestoreTest, ARefreshThatCannotReadTheFileLeavesTheBinder) {
  load(u"list", "C:\\a.pdf\r\n");
  platform::setOtherUse(listPath(u"list"), platform::OtherUse::Exclusive);
  RefreshBinder(0);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\a.pdf"));
}

TEST_F(BinderRestoreTest, ABinderWhoseFileHasGoneLeavesAtItsRefresh) {
  load(u"a");
  load(u"b");
  platform::deleteFile(listPath(u"a"));
  RefreshBinder(0);
  EXPECT_THAT(names(), ElementsAre(u"b"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"1");
}

TEST_F(BinderRestoreTest, ARefreshOfASleepingShareLeavesTheBinder) {
  setVolume(kShare, VolumeState::Present);
  platform::putFile(u"\\\\nas\\lists\\a.lst", "C:\\a.pdf\r\n");
  ASSERT_EQ(LoadBinder(u"\\\\nas\\lists\\a.lst"), 0);
  setVolume(kShare, VolumeState::Failing, 53);
  RefreshBinder(0);
  RefreshAllBinders();
  ASSERT_EQ(session.binderLibrary.size(), 1u);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\a.pdf"));
}

TEST_F(BinderRestoreTest, TheDocumentsInUseAreNotRefreshed) {
  LoadWorkingDocuments();
  session.binderLibrary[0].files = {u"C:\\a.pdf"};
  RefreshBinder(0);
  RefreshBinder(7);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\a.pdf"));
  EXPECT_TRUE(session.binderLibrary[0].isWorkingDocuments);
}

TEST_F(BinderRestoreTest, RefreshingAllFollowsTheSettings) {
  LoadWorkingDocuments();
  session.binderLibrary[0].files = {u"C:\\used.pdf"};
  load(u"a", "C:\\1.pdf\r\n");
  load(u"b", "C:\\2.pdf\r\n");
  load(u"c", "C:\\3.pdf\r\n");
  load(u"d");
  platform::putFile(listPath(u"new"), "C:\\4.pdf\r\n");
  platform::putFile(listPath(u"b"), "C:\\changed.pdf\r\n");
  platform::setOtherUse(listPath(u"c"), platform::OtherUse::Exclusive);
  platform::deleteFile(listPath(u"d"));
  putIni(
      u"[Binders]\nCount=5\nPath0=C:\\Lists\\new.lst\nPath1=C:\\Lists\\c.lst\n"
      u"Path2=C:\\Lists\\b.lst\nPath3=C:\\Lists\\d.lst\nPath4=C:\\LISTS\\B.lst\n");
  RefreshAllBinders();
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"new", u"c", u"b"));
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\used.pdf"));
  EXPECT_THAT(session.binderLibrary[2].files, ElementsAre(u"C:\\3.pdf"));
  EXPECT_THAT(session.binderLibrary[3].files, ElementsAre(u"C:\\changed.pdf"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"3");
}

// Viewers.

TEST_F(BinderRestoreTest, AViewerRefreshesBindersInMemoryAlone) {
  load(u"a", "C:\\x.pdf\r\n");
  load(u"b");
  session.viewerRole = true;
  platform::putFile(listPath(u"a"), "C:\\y.pdf\r\n");
  platform::deleteFile(listPath(u"b"));
  RefreshBinder(1);
  RefreshAllBinders();
  EXPECT_THAT(names(), ElementsAre(u"a"));
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\y.pdf"));
  EXPECT_EQ(platform::fileBytes(listPath(u"a")), "C:\\y.pdf\r\n");
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
}

TEST_F(BinderRestoreTest, AViewerWaitsForNoShareAndForgetsNoBinder) {
  putIni(
      u"[Binders]\nCount=3\nPath0=\\\\nas\\lists\\a.lst\nPath1=C:\\Lists\\gone.lst\n"
      u"Path2=C:\\Lists\\b.lst\n[Network]\nOpenTimeoutSeconds=2\n");
  platform::putFile(listPath(u"b"), "");
  setVolume(kShare, VolumeState::Silent);
  resetSession();
  session.viewerRole = true;
  LoadSettings();
  EXPECT_EQ(standIn().timeoutsGiven, 0u);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"b"));
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"3");
}

}  // namespace
}  // namespace quillmere::test
