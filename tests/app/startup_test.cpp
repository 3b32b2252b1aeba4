#include "app/startup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "app/window_placement.h"
#include "documents/open_requests.h"
#include "platform/profile.h"
#include "store/data_folder.h"
#include "store/working_documents.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxOwner;
using platform::MutexClaim;
using platform::OtherWindow;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char16_t* kMarker =
    u"C:\\Users\\User\\AppData\\Local\\Temp\\Set Quillmere as default.pdf";

LaunchArguments launch(const std::u16string& filePath, bool viewerRole = false) {
  LaunchArguments arguments;
  arguments.filePath = filePath;
  arguments.viewerRole = viewerRole;
  return arguments;
}

OtherWindow windowOf(const std::u16string& className, platform::WindowId id,
                     bool minimised = false) {
  OtherWindow window;
  window.id = id;
  window.className = className;
  window.rect = {100, 100, 1200, 900};
  window.minimised = minimised;
  return window;
}

class DefaultMarkerTest : public SessionTest {};

TEST_F(DefaultMarkerTest, LiesInTheTemporaryFolderWithOneBackslash) {
  standIn().temporaryFolder = u"C:\\Temp\\";
  EXPECT_EQ(defaultMarkerPath(), u"C:\\Temp\\Set Quillmere as default.pdf");
  standIn().temporaryFolder = u"C:\\Temp";
  EXPECT_EQ(defaultMarkerPath(), u"C:\\Temp\\Set Quillmere as default.pdf");
}

TEST_F(DefaultMarkerTest, IsEmptyWithoutATemporaryFolder) {
  standIn().temporaryFolder.clear();
  EXPECT_EQ(defaultMarkerPath(), u"");
  EXPECT_EQ(confirmDefaultHandler(launch(u"Set Quillmere as default.pdf")), std::nullopt);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(DefaultMarkerTest, OpeningItReportsSuccess) {
  platform::putFile(kMarker, "");
  standIn().defaultHandlers[u".pdf"] = u"quillmere.pdf";
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(confirmDefaultHandler(launch(kMarker)), 0);
  EXPECT_EQ(platform::fileBytes(kMarker), std::nullopt);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  const platform::ShownBox& box = standIn().boxes[0];
  EXPECT_EQ(box.title, u"Set as Default PDF Viewer");
  EXPECT_EQ(box.text, u"Quillmere is now the Windows default PDF viewer.");
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_EQ(box.owner, BoxOwner::NoneTopmost);
}

TEST_F(DefaultMarkerTest, OpeningItReportsFailure) {
  platform::putFile(kMarker, "");
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(confirmDefaultHandler(launch(kMarker)), 0);
  EXPECT_EQ(platform::fileBytes(kMarker), std::nullopt);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Set as Default PDF Viewer");
  EXPECT_EQ(standIn().boxes[0].text,
            u"Quillmere was not set as the Windows default PDF viewer.\n\nTo make it the default, "
            u"run \"Set as Default PDF Viewer\" again and click \"Always\" when the system picker "
            u"appears.");
}

TEST_F(DefaultMarkerTest, ItsNameIsComparedIgnoringCaseInAViewerToo) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(confirmDefaultHandler(launch(
                u"c:\\users\\USER\\appdata\\local\\temp\\set quillmere AS DEFAULT.PDF", true)),
            0);
  EXPECT_EQ(standIn().boxes.size(), 1u);
}

TEST_F(DefaultMarkerTest, AMarkerThatIsGoneIsStillReported) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_EQ(confirmDefaultHandler(launch(kMarker)), 0);
  EXPECT_EQ(standIn().boxes.size(), 1u);
}

TEST_F(DefaultMarkerTest, AnyOtherFileGoesOn) {
  platform::putFile(kMarker, "");
  for (const char16_t* path : {u"", u"C:\\a.pdf", u"C:\\Set Quillmere as default.pdf"}) {
    EXPECT_EQ(confirmDefaultHandler(launch(path)), std::nullopt);
  }
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_NE(platform::fileBytes(kMarker), std::nullopt);
}

class HandOverTest : public SessionTest {
 protected:
  void anotherInstanceRuns() { standIn().mutexClaim = MutexClaim::AlreadyExists; }
};

TEST_F(HandOverTest, TheFirstInstanceKeepsTheMutexAndGoesOn) {
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), std::nullopt);
  EXPECT_THAT(standIn().mutexClaims, ElementsAre(u"Local\\Quillmere.quillmere.primary"));
  EXPECT_EQ(standIn().mutexCloses, 0);
  EXPECT_THAT(standIn().sleeps, IsEmpty());
}

TEST_F(HandOverTest, AViewerNeverTouchesTheMutex) {
  anotherInstanceRuns();
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 7)};
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf", true)), std::nullopt);
  EXPECT_THAT(standIn().mutexClaims, IsEmpty());
  EXPECT_THAT(standIn().sentPaths, IsEmpty());
  EXPECT_THAT(standIn().raisedWindows, IsEmpty());
}

TEST_F(HandOverTest, WithoutAMutexHandleTheProgramGoesOn) {
  standIn().mutexClaim = MutexClaim::Unavailable;
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 7)};
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), std::nullopt);
  EXPECT_THAT(standIn().sleeps, IsEmpty());
  EXPECT_THAT(standIn().sentPaths, IsEmpty());
}

TEST_F(HandOverTest, AFileIsSentToTheRunningInstance) {
  anotherInstanceRuns();
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 7)};
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a b.pdf")), 0);
  EXPECT_THAT(standIn().raisedWindows, ElementsAre(7u));
  ASSERT_EQ(standIn().sentPaths.size(), 1u);
  EXPECT_EQ(standIn().sentPaths[0].window, 7u);
  EXPECT_EQ(standIn().sentPaths[0].tag, 0x514D4F31u);
  EXPECT_EQ(standIn().sentPaths[0].path, u"C:\\a b.pdf");
  EXPECT_EQ(standIn().mutexCloses, 1);
  EXPECT_THAT(standIn().sleeps, IsEmpty());
}

// The instance that gets the path works in a folder of its own.
TEST_F(HandOverTest, APathIsCompletedInTheFolderOfTheProcessThatWasStarted) {
  anotherInstanceRuns();
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 7)};
  standIn().workingFolder = u"C:\\Work";
  EXPECT_EQ(handOverToRunningInstance(readCommandLine(u"a b.pdf")), 0);
  EXPECT_EQ(handOverToRunningInstance(readCommandLine(u"\"sub\\a.pdf\"")), 0);
  EXPECT_EQ(handOverToRunningInstance(readCommandLine(u"\\a.pdf")), 0);
  EXPECT_EQ(handOverToRunningInstance(readCommandLine(u"c:a.pdf")), 0);
  EXPECT_EQ(handOverToRunningInstance(readCommandLine(u"")), 0);
  std::vector<std::u16string> paths;
  for (const auto& sent : standIn().sentPaths) paths.push_back(sent.path);
  EXPECT_THAT(paths, ElementsAre(u"C:\\Work\\a b.pdf", u"C:\\Work\\sub\\a.pdf", u"C:\\a.pdf",
                                 u"C:\\Work\\a.pdf"));
}

TEST_F(HandOverTest, APathThatBecomesTooLongIsRefusedInWords) {
  standIn().workingFolder = u"C:\\" + std::u16string(20, u'w');
  const LaunchArguments arguments = readCommandLine(std::u16string(250, u'x'));
  EXPECT_EQ(arguments.filePath.size(), 274u);
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(openRequested(arguments.filePath, 0, kWorkingDocsToHead, true));
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"The file's path is too long to open.");
}

TEST_F(HandOverTest, WithoutAFileTheRunningInstanceIsOnlyRaised) {
  anotherInstanceRuns();
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 7, true)};
  EXPECT_EQ(handOverToRunningInstance(launch(u"")), 0);
  EXPECT_THAT(standIn().raisedWindows, ElementsAre(7u));
  EXPECT_FALSE(standIn().otherWindows[0].minimised);
  EXPECT_THAT(standIn().sentPaths, IsEmpty());
  EXPECT_EQ(standIn().mutexCloses, 1);
}

TEST_F(HandOverTest, AWindowThatIsBeingMadeIsWaitedFor) {
  anotherInstanceRuns();
  standIn().onSleep = [] {
    if (standIn().sleeps.size() == 7) {
      standIn().otherWindows.push_back(windowOf(u"QuillmereWnd", 9));
    }
  };
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), 0);
  EXPECT_EQ(standIn().sleeps, std::vector<std::uint32_t>(7, 50));
  ASSERT_EQ(standIn().sentPaths.size(), 1u);
  EXPECT_EQ(standIn().sentPaths[0].window, 9u);
}

TEST_F(HandOverTest, AfterFiftyRoundsTheProgramBecomesASecondMainWindow) {
  anotherInstanceRuns();
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), std::nullopt);
  EXPECT_EQ(standIn().sleeps, std::vector<std::uint32_t>(50, 50));
  EXPECT_THAT(standIn().sentPaths, IsEmpty());
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_FALSE(session.ownsPrimaryName);
}

TEST_F(HandOverTest, AnInstanceThatHasGoneMeanwhileLeavesTheNameAndTheShelfToThisOne) {
  anotherInstanceRuns();
  standIn().onSleep = [] {
    if (standIn().sleeps.size() == 7) standIn().mutexClaim = MutexClaim::Owned;
  };
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), std::nullopt);
  EXPECT_EQ(standIn().mutexCloses, 1);
  EXPECT_TRUE(session.ownsPrimaryName);
}

TEST_F(HandOverTest, AWindowThatComesAfterTheLastRoundIsTooLate) {
  anotherInstanceRuns();
  standIn().onSleep = [] {
    if (standIn().sleeps.size() == 50) {
      standIn().otherWindows.push_back(windowOf(u"QuillmereWnd", 9));
    }
  };
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), std::nullopt);
  EXPECT_THAT(standIn().sentPaths, IsEmpty());
}

TEST_F(HandOverTest, AViewerWindowNeverReceivesAPath) {
  anotherInstanceRuns();
  standIn().otherWindows = {windowOf(u"QuillmereViewerWnd", 3), windowOf(u"QuillmereWnd", 4)};
  EXPECT_EQ(handOverToRunningInstance(launch(u"C:\\a.pdf")), 0);
  ASSERT_EQ(standIn().sentPaths.size(), 1u);
  EXPECT_EQ(standIn().sentPaths[0].window, 4u);
}

class ShortcutOfferTest : public SessionTest {
 protected:
  static std::int32_t promptShown() {
    return platform::readProfileInteger(u"Onboarding", u"DesktopShortcutPromptShown", 0,
                                        GetIniPath());
  }
};

TEST_F(ShortcutOfferTest, AsksOnceEver) {
  standIn().boxAnswers = {BoxAnswer::No};
  offerDesktopShortcut();
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Welcome to Quillmere");
  EXPECT_EQ(standIn().boxes[0].text,
            u"Add Quillmere to your desktop?\n\nA desktop shortcut makes it easy to launch "
            u"Quillmere without searching the Start menu.\n\nYou can also do this later from Edit "
            u"> Settings.");
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::YesNo);
  EXPECT_EQ(promptShown(), 1);
  EXPECT_THAT(standIn().shortcuts, IsEmpty());
  offerDesktopShortcut();
  EXPECT_EQ(standIn().boxes.size(), 1u);
}

TEST_F(ShortcutOfferTest, YesMakesTheShortcut) {
  standIn().boxAnswers = {BoxAnswer::Yes};
  offerDesktopShortcut();
  ASSERT_EQ(standIn().shortcuts.size(), 1u);
  EXPECT_EQ(standIn().shortcuts[0].path, u"C:\\Users\\User\\Desktop\\Quillmere.lnk");
  EXPECT_EQ(standIn().shortcuts[0].description, u"Quillmere PDF Viewer");
  EXPECT_EQ(promptShown(), 1);
}

TEST_F(ShortcutOfferTest, AFailedShortcutIsNotOfferedAgain) {
  standIn().shortcutResult = false;
  standIn().boxAnswers = {BoxAnswer::Yes};
  offerDesktopShortcut();
  EXPECT_EQ(promptShown(), 1);
}

TEST_F(ShortcutOfferTest, AViewerAsksToo) {
  session.viewerRole = true;
  standIn().boxAnswers = {BoxAnswer::No};
  offerDesktopShortcut();
  EXPECT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(promptShown(), 1);
}

TEST_F(ShortcutOfferTest, TheSettingsFileIsUtf16WhoeverWritesItFirst) {
  session.viewerRole = true;
  standIn().boxAnswers = {BoxAnswer::No};
  offerDesktopShortcut();
  const std::optional<std::string> bytes = platform::fileBytes(GetIniPath());
  ASSERT_TRUE(bytes.has_value());
  EXPECT_TRUE(bytes->starts_with("\xFF\xFE"));
}

TEST_F(ShortcutOfferTest, WithoutADataFolderNobodyIsAsked) {
  standIn().localAppDataFolder.clear();
  offerDesktopShortcut();
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

class ViewerSurroundingsTest : public SessionTest {};

TEST_F(ViewerSurroundingsTest, TellMainWindowViewersAndScreen) {
  standIn().otherWindows = {windowOf(u"QuillmereViewerWnd", 1), windowOf(u"QuillmereWnd", 2),
                            windowOf(u"QuillmereViewerWnd", 3)};
  standIn().captionHeight = 31;
  const ViewerSurroundings surroundings = viewerSurroundings();
  EXPECT_EQ(surroundings.mainWindow, (platform::ScreenRect{100, 100, 1200, 900}));
  EXPECT_EQ(surroundings.workArea, standIn().workArea);
  EXPECT_EQ(surroundings.viewerCount, 2);
  EXPECT_EQ(surroundings.captionHeight, 31);
}

TEST_F(ViewerSurroundingsTest, OnlyTheExactClassNameCountsAsViewer) {
  standIn().otherWindows = {windowOf(u"quillmereviewerwnd", 1),
                            windowOf(u"QuillmereViewerWnd2", 2)};
  EXPECT_EQ(viewerSurroundings().viewerCount, 0);
}

TEST_F(ViewerSurroundingsTest, AMinimisedMainWindowIsNoAnchor) {
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 2, true)};
  EXPECT_EQ(viewerSurroundings().mainWindow, std::nullopt);
  EXPECT_EQ(viewerSurroundings().workArea, standIn().workArea);
}

TEST_F(ViewerSurroundingsTest, AMainWindowWithUnknownPlaceIsNoAnchor) {
  standIn().otherWindows = {windowOf(u"QuillmereWnd", 2)};
  standIn().otherWindows[0].rectKnown = false;
  EXPECT_EQ(viewerSurroundings().mainWindow, std::nullopt);
}

TEST_F(ViewerSurroundingsTest, WithoutAMainWindowThereIsNoAnchor) {
  EXPECT_EQ(viewerSurroundings().mainWindow, std::nullopt);
}

// Requests as another process may send them.

std::optional<std::u16string> handedOver(std::u16string_view text) {
  return handedOverPath(kOpenFileTag, text.data(), text.size() * sizeof(char16_t));
}

TEST(HandedOverPathTest, ThePathEndsAtItsFirstZeroOrWithTheRequest) {
  using namespace std::string_view_literals;
  EXPECT_EQ(handedOver(u"C:\\a.pdf\0"sv), u"C:\\a.pdf");
  EXPECT_EQ(handedOver(u"C:\\a.pdf"sv), u"C:\\a.pdf");
  EXPECT_EQ(handedOver(u"C:\\a.pdf\0\0\0"sv), u"C:\\a.pdf");
  EXPECT_EQ(handedOver(u"C:\\a.pdf\0b"sv), u"C:\\a.pdf");
  EXPECT_EQ(handedOver(u"\0"sv), u"");
}

TEST(HandedOverPathTest, HalfAUnitAtTheEndIsNotRead) {
  const char bytes[] = {'a', 0, 'b'};
  EXPECT_EQ(handedOverPath(kOpenFileTag, bytes, 3), u"a");
  EXPECT_EQ(handedOverPath(kOpenFileTag, bytes + 1, 2), std::u16string(1, u'\x6200'));
}

TEST(HandedOverPathTest, WhatIsNoRequestHasNoPath) {
  const std::u16string path = u"C:\\a.pdf";
  const std::size_t size = path.size() * sizeof(char16_t);
  EXPECT_EQ(handedOverPath(kOpenFileTag + 1, path.data(), size), std::nullopt);
  EXPECT_EQ(handedOverPath(0, path.data(), size), std::nullopt);
  EXPECT_EQ(handedOverPath(kOpenFileTag, nullptr, size), std::nullopt);
  EXPECT_EQ(handedOverPath(kOpenFileTag, path.data(), 1), std::nullopt);
  EXPECT_EQ(handedOverPath(kOpenFileTag, path.data(), 0), std::nullopt);
}

}  // namespace
}  // namespace quillmere::test
