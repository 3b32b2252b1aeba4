#include "core/exit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "store/data_folder.h"
#include "store/working_documents.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

class ExitTest : public SessionTest {
 protected:
  static void viewersRun() {
    for (platform::WindowId id : {1u, 2u, 3u}) {
      platform::OtherWindow window;
      window.id = id;
      window.className = id == 2 ? u"Other" : u"QuillmereViewerWnd";
      standIn().otherWindows.push_back(window);
    }
  }
};

TEST_F(ExitTest, WithoutViewersNothingIsAsked) {
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ExitTest, YesClosesTheViewersToo) {
  viewersRun();
  standIn().boxAnswers = {BoxAnswer::Yes};
  EXPECT_TRUE(settleBeforeClose());
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"Close All Viewer Windows?");
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::YesNo);
  EXPECT_THAT(standIn().windowsAskedToClose, ElementsAre(1u, 3u));
}

TEST_F(ExitTest, NoLeavesTheViewersOpen) {
  viewersRun();
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(standIn().windowsAskedToClose, IsEmpty());
}

TEST_F(ExitTest, AViewerClosesWithoutAWord) {
  viewersRun();
  session.viewerRole = true;
  session.settings.restoreOpenDocs = false;
  platform::putFile(WorkingDocsPath(), "x");
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_NE(platform::fileBytes(WorkingDocsPath()), std::nullopt);
}

TEST_F(ExitTest, TheListOfDocumentsInUseGoesUnlessItIsRestored) {
  platform::putFile(WorkingDocsPath(), "x");
  session.settings.restoreOpenDocs = true;
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_NE(platform::fileBytes(WorkingDocsPath()), std::nullopt);
  session.settings.restoreOpenDocs = false;
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_EQ(platform::fileBytes(WorkingDocsPath()), std::nullopt);
}

TEST_F(ExitTest, UnsavedEditsAreNotAskedAbout) {
  session.active.dirty = true;
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ExitTest, LoggingOffSavesTheSettingsWithoutAQuestion) {
  session.leftPanelWidth = 234;
  settleForLogoff();
  EXPECT_NE(platform::fileBytes(GetIniPath()), std::nullopt);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
