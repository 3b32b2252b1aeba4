#include "stand_in.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/profile.h"

namespace quillmere::platform {
namespace {

class StandInTest : public testing::Test {
 protected:
  void SetUp() override { resetStandIn(); }
  void TearDown() override { resetStandIn(); }
};

constexpr std::uint32_t kPatience = 20'000;  // milliseconds

BoxAnswer ask(BoxButtons buttons) {
  return showMessageBox(u"Text", u"Title", buttons, BoxIcon::Warning);
}

TEST_F(StandInTest, BoxesAreAnsweredInOrderAndRecorded) {
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Cancel, BoxAnswer::Ok};
  EXPECT_EQ(ask(BoxButtons::YesNo), BoxAnswer::Yes);
  EXPECT_EQ(ask(BoxButtons::YesNoCancel), BoxAnswer::Cancel);
  EXPECT_EQ(showMessageBox(u"Last", u"T", BoxButtons::Ok, BoxIcon::Error, BoxOwner::NoneTopmost),
            BoxAnswer::Ok);
  ASSERT_EQ(standIn().boxes.size(), 3u);
  EXPECT_EQ(standIn().boxes[2].text, u"Last");
  EXPECT_EQ(standIn().boxes[2].icon, BoxIcon::Error);
  EXPECT_EQ(standIn().boxes[2].owner, BoxOwner::NoneTopmost);
}

TEST_F(StandInTest, ABoxWithoutAnAnswerFailsTheTest) {
  BoxAnswer answer = BoxAnswer::Ok;
  EXPECT_NONFATAL_FAILURE(answer = ask(BoxButtons::Ok), "no answer for the box \"Title\"");
  EXPECT_EQ(answer, BoxAnswer::Cancel);
}

TEST_F(StandInTest, AnAnswerThatTheBoxDoesNotOfferFailsTheTest) {
  standIn().boxAnswers = {BoxAnswer::Cancel};
  BoxAnswer answer = BoxAnswer::Ok;
  EXPECT_NONFATAL_FAILURE(answer = ask(BoxButtons::YesNo), "not offered");
  EXPECT_EQ(answer, BoxAnswer::Cancel);
}

TEST_F(StandInTest, AFileDialogWithoutAnAnswerFailsTheTest) {
  std::vector<std::u16string> files{u"x"};
  EXPECT_NONFATAL_FAILURE(files = chooseFilesToOpen({}), "no answer for a file dialog");
  EXPECT_TRUE(files.empty());
}

TEST_F(StandInTest, AResetForgetsFilesAndRecords) {
  putFile(u"C:\\deep\\er\\a.pdf", "x");
  beep(Sound::Default);
  setReadOnly(u"C:\\deep\\er\\a.pdf", true);
  resetStandIn();
  EXPECT_FALSE(fileExists(u"C:\\deep"));
  EXPECT_TRUE(standIn().beeps.empty());
  EXPECT_TRUE(fileExists(standIn().executable));
  putFile(u"C:\\deep\\er\\a.pdf", "x");
  EXPECT_TRUE(deleteFile(u"C:\\deep\\er\\a.pdf"));
}

TEST_F(StandInTest, UnknownSharesAndDrivesAreMissing) {
  EXPECT_EQ(queryAttributes(u"\\\\nas\\docs\\a.pdf").error, 53u);
  EXPECT_EQ(queryAttributes(u"Z:\\a.pdf").error, kErrorPathNotFound);
}

TEST_F(StandInTest, AShareThatIsPresentHoldsFiles) {
  setVolume(u"\\\\NAS\\Docs", VolumeState::Present);
  EXPECT_EQ(queryAttributes(u"\\\\nas\\docs\\a.pdf").error, kErrorFileNotFound);
  putFile(u"\\\\nas\\docs\\a.pdf", "x");
  EXPECT_TRUE(fileExists(u"\\\\nas\\DOCS\\A.pdf"));
  setVolume(u"\\\\nas\\docs", VolumeState::Failing, 64);
  EXPECT_EQ(queryAttributes(u"\\\\nas\\docs\\a.pdf").error, 64u);
  EXPECT_FALSE(readFileShared(u"\\\\nas\\docs\\a.pdf", 100));
}

struct Probe {
  Event* done = createEvent();
  std::uint32_t error = 0;
};

void runProbe(void* context) {
  auto* probe = static_cast<Probe*>(context);
  probe->error = queryAttributes(u"\\\\nas\\docs\\a.pdf").error;
  signalEvent(probe->done);
}

TEST_F(StandInTest, ASilentShareHoldsItsCallersUntilItAnswers) {
  setVolume(u"\\\\nas\\docs", VolumeState::Silent);
  Probe probe;
  ASSERT_TRUE(startDetachedThread(runProbe, &probe));
  EXPECT_FALSE(waitForEvent(probe.done, 20));
  setVolume(u"\\\\nas\\docs", VolumeState::Present);
  EXPECT_TRUE(waitForEvent(probe.done, kPatience));
  ASSERT_TRUE(waitForDetachedThreads());
  EXPECT_EQ(probe.error, kErrorFileNotFound);
  closeEvent(probe.done);
}

TEST_F(StandInTest, AResetReleasesThreadsThatWaitForASilentShare) {
  setVolume(u"\\\\nas\\docs", VolumeState::Silent);
  Probe probe;
  ASSERT_TRUE(startDetachedThread(runProbe, &probe));
  resetStandIn();
  EXPECT_TRUE(waitForEvent(probe.done, 0));
  EXPECT_EQ(probe.error, 53u);
  closeEvent(probe.done);
}

TEST_F(StandInTest, AForgottenThreadIsNotWaitedFor) {
  setVolume(u"\\\\nas\\docs", VolumeState::Silent);
  static Probe probe;  // the thread may still use it after the test
  ASSERT_TRUE(startDetachedThread(runProbe, &probe));
  forgetDetachedThreads();
  EXPECT_TRUE(waitForDetachedThreads());
  setVolume(u"\\\\nas\\docs", VolumeState::Present);
  EXPECT_TRUE(waitForEvent(probe.done, kPatience));
  EXPECT_TRUE(waitForDetachedThreads());
}

TEST_F(StandInTest, AFullDiskTakesWhatFitsAndFails) {
  standIn().diskFree = 3;
  EXPECT_FALSE(writeFile(u"C:\\a.txt", "12345", 5));
  EXPECT_EQ(fileBytes(u"C:\\a.txt"), "123");
  EXPECT_FALSE(createNewFile(u"C:\\b.txt", "1", 1));
  standIn().diskFree.reset();
  EXPECT_TRUE(writeFile(u"C:\\a.txt", "12345", 5));
}

TEST_F(StandInTest, PathsOf260UnitsReachNothing) {
  const std::u16string folder = u"C:\\folder\\";
  const std::u16string fits = folder + std::u16string(259 - folder.size(), u'n');
  putFolder(folder);
  EXPECT_TRUE(writeFile(fits.substr(0, 200), "x", 1));
  EXPECT_EQ(queryAttributes(fits).error, kErrorFileNotFound);
  EXPECT_EQ(queryAttributes(fits + u"n").error, kErrorPathNotFound);
  EXPECT_FALSE(writeFile(fits + u"n", "x", 1));
}

TEST_F(StandInTest, GivenTimesAreToldUntilTheFileChanges) {
  putFile(u"C:\\a.txt", "x");
  setWriteTime(u"C:\\a.txt", 132'223'104'000'000'001);
  EXPECT_EQ(fileStamp(u"C:\\a.txt")->writeTime, 132'223'104'000'000'001u);
  EXPECT_TRUE(writeFile(u"C:\\a.txt", "y", 1));
  EXPECT_GT(fileStamp(u"C:\\a.txt")->writeTime, 132'223'104'000'000'001u);
}

TEST_F(StandInTest, EveryWriteHasALaterTimeThanTheOneBefore) {
  std::uint64_t last = 0;
  for (int n = 0; n < 100; ++n) {
    ASSERT_TRUE(writeFile(u"C:\\a.txt", "x", 1));
    const std::uint64_t now = fileStamp(u"C:\\a.txt")->writeTime;
    ASSERT_GT(now, last);
    last = now;
  }
}

TEST_F(StandInTest, StreamsFollowTheirFile) {
  putFile(u"C:\\a.pdf:Zone.Identifier", "[ZoneTransfer]");
  EXPECT_TRUE(fileExists(u"C:\\a.pdf"));
  ASSERT_TRUE(replaceFile(u"C:\\a.pdf", u"C:\\b.pdf"));
  EXPECT_TRUE(readFileHead(u"C:\\b.pdf:zone.identifier", 100));
  EXPECT_FALSE(readFileHead(u"C:\\a.pdf:Zone.Identifier", 100));
  ASSERT_TRUE(deleteFile(u"C:\\b.pdf"));
  putFile(u"C:\\b.pdf", "x");
  EXPECT_FALSE(readFileHead(u"C:\\b.pdf:Zone.Identifier", 100));
}

TEST_F(StandInTest, StreamsAreNotListedAsFiles) {
  putFile(u"C:\\list\\b.pdf:Zone.Identifier", "x");
  putFile(u"C:\\list\\A.pdf", "x");
  EXPECT_EQ(namesIn(u"C:\\list"), (std::vector<std::u16string>{u"A.pdf", u"b.pdf"}));
}

TEST_F(StandInTest, SleepsTakeNoTimeAndMoveTheClock) {
  int sleeps = 0;
  standIn().onSleep = [&sleeps] { ++sleeps; };
  const std::uint64_t before = monotonicMilliseconds();
  for (int n = 0; n < 50; ++n) sleepMilliseconds(100'000);
  EXPECT_EQ(sleeps, 50);
  EXPECT_EQ(standIn().sleeps.size(), 50u);
  EXPECT_GE(monotonicMilliseconds(), before + 5'000'000);
}

TEST_F(StandInTest, EventsAndThreadsFailOnDemand) {
  standIn().failEvents = true;
  standIn().failThreads = true;
  EXPECT_EQ(createEvent(), nullptr);
  EXPECT_FALSE(startDetachedThread([](void*) {}, nullptr));
}

TEST_F(StandInTest, AProgramStartsWhenItIsThereOrTheTestSaysSo) {
  EXPECT_TRUE(startProcess(standIn().executable, u"\"x\""));
  EXPECT_FALSE(startProcess(u"C:\\none.exe", u"\"x\""));
  standIn().startProcessResult = false;
  EXPECT_FALSE(startProcess(standIn().executable, u"\"x\" --viewer"));
  ASSERT_EQ(standIn().processes.size(), 3u);
  EXPECT_EQ(standIn().processes[2].commandLine, u"\"x\" --viewer");
}

TEST_F(StandInTest, WithoutAWindowNothingIsRecorded) {
  standIn().window.exists = false;
  setMainWindowTitle(u"x");
  invalidateMainWindow(true);
  closeMainWindow();
  EXPECT_FALSE(mainWindowExists());
  EXPECT_EQ(mainWindowClientSize().width, 0);
  EXPECT_EQ(statusBarHeight(), 0);
  EXPECT_FALSE(mainWindowPlacement());
  EXPECT_EQ(standIn().window.title, u"");
  EXPECT_EQ(standIn().window.invalidations, 0);
  EXPECT_EQ(standIn().window.closeRequests, 0);
}

TEST_F(StandInTest, OtherWindowsAreFoundRaisedAndAskedToClose) {
  standIn().otherWindows = {{7, u"QuillmereWnd", {1, 2, 3, 4}, true, true},
                            {8, u"QuillmereViewerWnd", {5, 6, 7, 8}, false, true},
                            {9, u"QuillmereViewerWnd", {}, false, true}};
  EXPECT_EQ(findTopWindow(u"QuillmereWnd"), 7u);
  EXPECT_FALSE(visibleWindowRect(7));
  raiseWindow(7);
  EXPECT_EQ(visibleWindowRect(7), (ScreenRect{1, 2, 3, 4}));
  EXPECT_EQ(countTopWindows(u"QuillmereViewerWnd"), 2);
  closeTopWindows(u"QuillmereViewerWnd");
  EXPECT_EQ(standIn().windowsAskedToClose, (std::vector<WindowId>{8, 9}));
}

}  // namespace
}  // namespace quillmere::platform
