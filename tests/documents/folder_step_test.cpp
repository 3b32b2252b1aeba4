#include "documents/folder_step.h"

#include <string>
#include <vector>

#include "nav/nav_test.h"

namespace quillmere::test {
namespace {

class FolderStepTest : public NavTest {
 protected:
  static std::u16string inFolder(const std::u16string& name) { return u"C:\\folder\\" + name; }
  static void put(const std::u16string& name) { putPdf(inFolder(name), simplePdf(1)); }
  static bool show(const std::u16string& name, int paneIndex = 0) {
    return open(inFolder(name), {.pane = paneIndex});
  }
  // Every list that a document may join.
  struct Lists {
    std::vector<std::vector<std::u16string>> binders;
    std::vector<std::u16string> recentFiles;
    std::size_t documentBinders;
    bool operator==(const Lists&) const = default;
  };
  static Lists lists() {
    Lists all{{}, session.settings.recentFiles, session.documentBinders.size()};
    for (const BinderFile& binder : session.binderLibrary) all.binders.push_back(binder.files);
    return all;
  }
  static std::u16string shown(int paneIndex = 0) { return pathOf(paneIndex); }
};

TEST_F(FolderStepTest, StepsGoByNameIgnoringCase) {
  for (const auto* name : {u"b.pdf", u"C.pdf", u"A.PDF", u"d.pdf"}) put(name);
  ASSERT_TRUE(show(u"b.pdf"));
  StepInFolder(1);
  EXPECT_EQ(shown(), inFolder(u"C.pdf"));
  StepInFolder(1);
  EXPECT_EQ(shown(), inFolder(u"d.pdf"));
  StepInFolder(-1);
  StepInFolder(-1);
  StepInFolder(-1);
  EXPECT_EQ(shown(), inFolder(u"A.PDF"));
}

TEST_F(FolderStepTest, NothingLiesBeyondTheEnds) {
  put(u"a.pdf");
  put(u"b.pdf");
  ASSERT_TRUE(show(u"b.pdf"));
  StepInFolder(1);
  EXPECT_EQ(shown(), inFolder(u"b.pdf"));
  ASSERT_TRUE(show(u"a.pdf"));
  StepInFolder(-1);
  EXPECT_EQ(shown(), inFolder(u"a.pdf"));
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

TEST_F(FolderStepTest, AFolderWithOneDocumentLeadsNowhere) {
  put(u"only.pdf");
  ASSERT_TRUE(show(u"only.pdf"));
  const FPDF_DOCUMENT document = documentOf(0);
  StepInFolder(1);
  StepInFolder(-1);
  EXPECT_EQ(documentOf(0), document);
}

TEST_F(FolderStepTest, OtherFilesAndFoldersAreLeftOut) {
  put(u"a.pdf");
  put(u"c.pdf");
  putPdf(inFolder(u"b.txt"), "text");
  putPdf(inFolder(u"b.pdf.bak"), "text");
  putPdf(inFolder(u"bb.pdf\\inside.pdf"), simplePdf(1));
  ASSERT_TRUE(show(u"a.pdf"));
  StepInFolder(1);
  EXPECT_EQ(shown(), inFolder(u"c.pdf"));
}

TEST_F(FolderStepTest, TheNeighbourOfTheOtherPaneIsSkipped) {
  for (const auto* name : {u"a.pdf", u"b.pdf", u"c.pdf"}) put(name);
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(show(u"a.pdf", 0));
  ASSERT_TRUE(show(u"B.PDF", 1));
  StepInFolder(1);
  EXPECT_EQ(shown(0), inFolder(u"c.pdf"));
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
}

TEST_F(FolderStepTest, ASkippedLastNeighbourLeadsNowhere) {
  put(u"a.pdf");
  put(u"b.pdf");
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(show(u"a.pdf", 0));
  ASSERT_TRUE(show(u"b.pdf", 1));
  StepInFolder(1);
  EXPECT_EQ(shown(0), inFolder(u"a.pdf"));
}

TEST_F(FolderStepTest, TheActivePaneStepsInTwoDocuments) {
  for (const auto* name : {u"a.pdf", u"b.pdf", u"c.pdf"}) put(name);
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(show(u"a.pdf", 0));
  ASSERT_TRUE(show(u"b.pdf", 1));
  setActivePane(1);
  StepInFolder(1);
  EXPECT_EQ(shown(0), inFolder(u"a.pdf"));
  EXPECT_EQ(shown(1), inFolder(u"c.pdf"));
}

TEST_F(FolderStepTest, IndependentPagesSplit) {
  put(u"a.pdf");
  put(u"b.pdf");
  ASSERT_TRUE(show(u"a.pdf"));
  setViewMode(ViewMode::IndependentPages);
  StepInFolder(1);
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_EQ(session.panes[0].path, inFolder(u"b.pdf"));
  EXPECT_EQ(session.panes[1].path, inFolder(u"a.pdf"));
}

TEST_F(FolderStepTest, UnsavedChangesAreAskedAbout) {
  put(u"a.pdf");
  put(u"b.pdf");
  ASSERT_TRUE(show(u"a.pdf"));
  const FPDF_DOCUMENT document = documentOf(0);
  session.active.dirty = true;
  platform::standIn().boxAnswers = {platform::BoxAnswer::Cancel};
  StepInFolder(1);
  EXPECT_EQ(platform::standIn().boxes.size(), 1u);
  EXPECT_EQ(documentOf(0), document);
  EXPECT_EQ(shown(), inFolder(u"a.pdf"));
}

TEST_F(FolderStepTest, TheFileJoinsNoList) {
  put(u"a.pdf");
  put(u"b.pdf");
  BinderFile working;
  working.isWorkingDocuments = true;
  working.files = {inFolder(u"a.pdf"), inFolder(u"z.pdf")};
  session.binderLibrary = {working, BinderFile{}};
  session.settings.recentFiles = {inFolder(u"b.pdf"), inFolder(u"a.pdf"), inFolder(u"z.pdf")};
  ASSERT_TRUE(show(u"a.pdf"));
  const Lists before = lists();
  StepInFolder(1);
  EXPECT_EQ(shown(), inFolder(u"b.pdf"));
  EXPECT_EQ(lists(), before);
}

TEST_F(FolderStepTest, AVanishedFolderIsTold) {
  put(u"a.pdf");
  ASSERT_TRUE(show(u"a.pdf"));
  session.active.path = u"C:\\gone\\a.pdf";
  platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
  StepInFolder(1);
  ASSERT_EQ(platform::standIn().boxes.size(), 1u);
  EXPECT_EQ(platform::standIn().boxes[0].text,
            u"Could not read the folder.\nIt may have been moved or renamed.");
  EXPECT_EQ(platform::standIn().boxes[0].icon, platform::BoxIcon::Warning);
  EXPECT_EQ(platform::standIn().boxes[0].title, u"Quillmere");
}

TEST_F(FolderStepTest, ARenamedFileIsTold) {
  put(u"a.pdf");
  ASSERT_TRUE(show(u"a.pdf"));
  session.active.path = inFolder(u"renamed.pdf");
  platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
  StepInFolder(1);
  ASSERT_EQ(platform::standIn().boxes.size(), 1u);
  EXPECT_EQ(
      platform::standIn().boxes[0].text,
      u"Could not locate the current file in its folder.\nIt may have been renamed or moved.");
}

TEST_F(FolderStepTest, AnEmptyFolderSaysNothing) {
  put(u"a.pdf");
  putPdf(u"C:\\empty\\note.txt", "text");
  ASSERT_TRUE(show(u"a.pdf"));
  session.active.path = u"C:\\empty\\a.pdf";
  StepInFolder(1);
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

TEST_F(FolderStepTest, WithoutADocumentNothingHappens) {
  StepInFolder(1);
  session.active.path = u"nameonly.pdf";
  StepInFolder(1);
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

}  // namespace
}  // namespace quillmere::test
