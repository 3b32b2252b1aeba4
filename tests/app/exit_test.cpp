#include "app/exit.h"

#include <fpdfview.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "documents/open_requests.h"
#include "session/document_slots.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "support/settings_file.h"
#include "view/navigation.h"

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

TEST_F(ExitTest, AWindowThatIsClosedBelowAQuestionOpensNothingAnyMore) {
  const std::u16string first = putPdf(u"first.pdf", simplePdf(1));
  const std::u16string second = putPdf(u"second.pdf", simplePdf(2));
  openRequested(first, 0, kWorkingDocsToHead, true);
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  standIn().onBox = [&](const platform::ShownBox&) {
    openHandedOver(second);
    tearDown();
  };
  openRequested(second, 0, kWorkingDocsToHead, true);
  deliverPosted();
  EXPECT_EQ(session.active.document, nullptr);
  FPDF_InitLibrary();  // tearDown() has shut it down
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

TEST_F(ExitTest, TheViewOfTheOpenDocumentIsKeptAndBringsNoUnwantedListBack) {
  for (const bool restored : {true, false}) {
    session.settings.restoreOpenDocs = restored;
    const std::u16string path = putPdf(u"a.pdf", simplePdf(3));
    openRequested(path, 0, kWorkingDocsToHead, true);
    goToPage(0, 2, false);
    EXPECT_TRUE(settleBeforeClose());
    tearDown();
    FPDF_InitLibrary();
    const std::string list = platform::fileBytes(WorkingDocsPath()).value_or("");
    EXPECT_EQ(list.find("a.pdf\tpage=2\t") != std::string::npos, restored) << list;
    EXPECT_EQ(platform::fileExists(WorkingDocsPath()), restored);
  }
}

TEST_F(ExitTest, AListThatStillHadToBeWrittenIsNotLost) {
  standIn().window.paintsLater = true;
  openRequested(putPdf(u"a.pdf", simplePdf(3)), 0, kWorkingDocsToHead, true);
  clearDocument(session.active);
  ASSERT_FALSE(platform::fileExists(WorkingDocsPath()));
  EXPECT_TRUE(settleBeforeClose());
  tearDown();
  FPDF_InitLibrary();
  EXPECT_NE(platform::fileBytes(WorkingDocsPath()).value_or("").find("a.pdf"), std::string::npos);
}

TEST_F(ExitTest, AListThatStillHadToBeWrittenIsNotLostByLoggingOff) {
  standIn().window.paintsLater = true;
  openRequested(putPdf(u"a.pdf", simplePdf(3)), 0, kWorkingDocsToHead, true);
  clearDocument(session.active);
  settleForLogoff();
  EXPECT_NE(platform::fileBytes(WorkingDocsPath()).value_or("").find("a.pdf"), std::string::npos);
}

TEST_F(ExitTest, ASecondMainWindowLeavesTheListOfDocumentsInUseAlone) {
  platform::putFile(WorkingDocsPath(), "x");
  session.ownsPrimaryName = false;
  session.settings.restoreOpenDocs = false;
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_EQ(platform::fileBytes(WorkingDocsPath()), "x");
}

TEST_F(ExitTest, LoggingOffKeepsTheView) {
  const std::u16string path = putPdf(u"a.pdf", simplePdf(3));
  openRequested(path, 0, kWorkingDocsToHead, true);
  goToPage(0, 1, false);
  settleForLogoff();
  EXPECT_NE(platform::fileBytes(WorkingDocsPath()).value_or("").find("\tpage=1\t"),
            std::string::npos);
}

TEST_F(ExitTest, UnsavedEditsAreNotAskedAbout) {
  session.active.dirty = true;
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ExitTest, LoggingOffSavesTheSettingsWithoutAQuestion) {
  session.leftPanelWidth = 234;
  settleForLogoff();
  EXPECT_EQ(iniValue(u"Panels", u"NavWidth"), u"234");
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
