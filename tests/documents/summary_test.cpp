#include "documents/summary.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "base/product.h"
#include "documents/modes.h"
#include "documents/open.h"
#include "documents/open_requests.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SummaryTest : public SessionTest {
 protected:
  SummaryTest() { platform::putFolder(u"C:\\out"); }

  static std::string markedPdf() {
    PdfPage page = courierPage({"marked words"});
    page.annotations = {markup("Highlight", {charactersOf(0, 0, 5)}, note(u"a note"))};
    return buildPdf({page});
  }
  static bool open(const std::u16string& path = u"C:\\papers\\paper.v2.pdf",
                   const std::string& bytes = markedPdf(), int pane = 0) {
    putPdf(path, bytes);
    return openDocument(&path, pane, kWorkingDocsLeaveAlone, false, nullptr);
  }
  static void expectBox(const std::u16string& text, platform::BoxIcon icon) {
    ASSERT_THAT(standIn().boxes, SizeIs(1));
    EXPECT_EQ(standIn().boxes[0].text, text);
    EXPECT_EQ(standIn().boxes[0].title, kProductTitle);
    EXPECT_EQ(standIn().boxes[0].icon, icon);
  }
  static std::vector<std::u16string> written() { return platform::namesIn(u"C:\\out"); }
};

TEST_F(SummaryTest, TheReportIsWrittenAndOpensInAViewer) {
  ASSERT_TRUE(open());
  standIn().saveDialogAnswers = {u"C:\\out\\my summary.pdf"};
  CreateMarkupSummary();
  EXPECT_THAT(written(), ElementsAre(u"my summary.pdf"));
  EXPECT_TRUE(platform::fileBytes(u"C:\\out\\my summary.pdf")->starts_with("%PDF"));
  ASSERT_THAT(standIn().processes, SizeIs(1));
  EXPECT_TRUE(
      standIn().processes[0].commandLine.ends_with(u" --viewer \"C:\\out\\my summary.pdf\""));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(session.active.altered);
  EXPECT_EQ(session.active.path, u"C:\\papers\\paper.v2.pdf");
}

TEST_F(SummaryTest, TheDialogProposesANameBesideTheSource) {
  ASSERT_TRUE(open());
  standIn().saveDialogAnswers = {u""};
  CreateMarkupSummary();
  ASSERT_THAT(standIn().saveDialogs, SizeIs(1));
  const platform::SaveDialogRequest& request = standIn().saveDialogs[0];
  EXPECT_EQ(request.title, u"Save Markup Summary");
  EXPECT_EQ(request.name, u"paper.v2 - Markup Summary.pdf");
  EXPECT_EQ(request.folder, u"C:\\papers");
  EXPECT_EQ(request.defaultExtension, u"pdf");
  ASSERT_THAT(request.filters, SizeIs(1));
  EXPECT_EQ(request.filters[0].name, u"PDF Files");
  EXPECT_EQ(request.filters[0].pattern, u"*.pdf");
}

TEST_F(SummaryTest, ANameWithoutAFullStopIsKeptWhole) {
  ASSERT_TRUE(open(u"C:\\my.papers\\paper"));
  standIn().saveDialogAnswers = {u""};
  CreateMarkupSummary();
  EXPECT_EQ(standIn().saveDialogs[0].name, u"paper - Markup Summary.pdf");
}

TEST_F(SummaryTest, ADocumentInTheRootOfADriveOffersThatRoot) {
  ASSERT_TRUE(open(u"C:\\paper.pdf"));
  standIn().saveDialogAnswers = {u""};
  CreateMarkupSummary();
  ASSERT_THAT(standIn().saveDialogs, SizeIs(1));
  EXPECT_EQ(standIn().saveDialogs[0].folder, u"C:\\");
  EXPECT_EQ(standIn().saveDialogs[0].name, u"paper - Markup Summary.pdf");
}

TEST_F(SummaryTest, ACancelledDialogEndsSilently) {
  ASSERT_TRUE(open());
  standIn().saveDialogAnswers = {u""};
  CreateMarkupSummary();
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(standIn().processes, IsEmpty());
  EXPECT_THAT(written(), IsEmpty());
}

TEST_F(SummaryTest, WithoutADocumentABoxSaysSo) {
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  CreateMarkupSummary();
  expectBox(u"No document is open.", platform::BoxIcon::Information);
}

TEST_F(SummaryTest, ADocumentWithoutMarkupsMakesNoReport) {
  ASSERT_TRUE(open(u"C:\\plain.pdf", simplePdf(3)));
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  CreateMarkupSummary();
  expectBox(u"This document has no highlights or strikethroughs to summarize.",
            platform::BoxIcon::Information);
  EXPECT_THAT(standIn().saveDialogs, IsEmpty());
}

TEST_F(SummaryTest, AFileThatCannotBeWrittenIsToldAndStays) {
  ASSERT_TRUE(open());
  platform::putFile(u"C:\\out\\s.pdf", "older");
  platform::setReadOnly(u"C:\\out\\s.pdf", true);
  standIn().saveDialogAnswers = {u"C:\\out\\s.pdf"};
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  CreateMarkupSummary();
  expectBox(u"Could not write the summary file.", platform::BoxIcon::Error);
  EXPECT_EQ(*platform::fileBytes(u"C:\\out\\s.pdf"), "older");
  EXPECT_THAT(written(), ElementsAre(u"s.pdf"));
  EXPECT_THAT(standIn().processes, IsEmpty());
}

TEST_F(SummaryTest, AReportThatCouldNotBeMadeIsTold) {
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  saveMarkupSummary(nullptr, u"C:\\paper.pdf");
  expectBox(u"Could not create the summary document.", platform::BoxIcon::Error);
  EXPECT_THAT(standIn().saveDialogs, IsEmpty());
  EXPECT_THAT(standIn().processes, IsEmpty());
}

TEST_F(SummaryTest, AViewerThatDoesNotStartIsTold) {
  ASSERT_TRUE(open());
  standIn().saveDialogAnswers = {u"C:\\out\\s.pdf"};
  standIn().startProcessResult = false;
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  CreateMarkupSummary();
  expectBox(u"Could not open a separate viewer window.", platform::BoxIcon::Error);
  EXPECT_THAT(written(), ElementsAre(u"s.pdf"));
}

TEST_F(SummaryTest, OpenDocumentsAndShelfCopiesAreNoTargets) {
  session.shelveFolder = u"C:\\Data\\Shelve\\";
  platform::putFile(u"C:\\Data\\Shelve\\copy.pdf", "unsaved work");
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open());
  ASSERT_TRUE(open(u"C:\\papers\\other.pdf", simplePdf(1), 1));
  setActivePane(0);
  const std::string before = *platform::fileBytes(u"C:\\papers\\paper.v2.pdf");
  const std::string other = *platform::fileBytes(u"C:\\papers\\other.pdf");
  standIn().saveDialogAnswers = {u"C:\\PAPERS\\Paper.V2.pdf", u"C:\\papers\\other.pdf",
                                 u"C:\\data\\shelve\\copy.pdf", u"C:\\out\\s.pdf"};
  standIn().boxAnswers = {platform::BoxAnswer::Ok, platform::BoxAnswer::Ok,
                          platform::BoxAnswer::Ok};
  CreateMarkupSummary();
  EXPECT_THAT(standIn().boxes, SizeIs(3));
  EXPECT_EQ(*platform::fileBytes(u"C:\\papers\\paper.v2.pdf"), before);
  EXPECT_EQ(*platform::fileBytes(u"C:\\papers\\other.pdf"), other);
  EXPECT_EQ(*platform::fileBytes(u"C:\\Data\\Shelve\\copy.pdf"), "unsaved work");
  EXPECT_THAT(written(), ElementsAre(u"s.pdf"));
}

TEST_F(SummaryTest, InTwoDocumentsTheActivePanesDocumentIsTheSource) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(u"C:\\papers\\plain.pdf", simplePdf(1), 0));
  ASSERT_TRUE(open(u"C:\\papers\\marked.pdf", markedPdf(), 1));
  setActivePane(1);
  standIn().saveDialogAnswers = {u""};
  CreateMarkupSummary();
  EXPECT_EQ(standIn().saveDialogs[0].name, u"marked - Markup Summary.pdf");
}

TEST_F(SummaryTest, FilesThatArriveWhileTheDialogIsUpWait) {
  ASSERT_TRUE(open());
  standIn().saveDialogAnswers = {u""};
  standIn().onSaveDialog = [] { openHandedOver(putPdf(u"late.pdf", simplePdf(1))); };
  CreateMarkupSummary();
  EXPECT_EQ(session.active.path, u"C:\\papers\\paper.v2.pdf");
  deliverPosted();
  EXPECT_EQ(session.active.path, u"C:\\late.pdf");
}

}  // namespace
}  // namespace quillmere::test
