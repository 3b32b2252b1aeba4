#include "documents/save_test.h"

#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <gmock/gmock.h>

#include "annot/placements.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/save.h"
#include "platform/text.h"
#include "session/document_slots.h"
#include "session/gesture.h"
#include "store/binder_library.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/render.h"
#include "view/rotation.h"

namespace quillmere::test {

using platform::BoxAnswer;
using platform::BoxIcon;
using platform::fileBytes;
using platform::namesIn;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::u16string SaveTest::kReplaceFailed =
    u"Saved to temporary file but could not replace original.";

void SaveTest::mark(int pane, int page) {
  const PageHandle handle(FPDF_LoadPage(documentOf(pane), page));
  FPDFPage_CloseAnnot(FPDFPage_CreateAnnot(handle.get(), FPDF_ANNOT_HIGHLIGHT));
  markEdited(documentSlotOf(pane));
}

namespace {

int marksOn(FPDF_DOCUMENT document, int page) {
  const PageHandle handle(FPDF_LoadPage(document, page));
  return handle ? FPDFPage_GetAnnotCount(handle.get()) : -1;
}

}  // namespace

int SaveTest::marksIn(const std::u16string& path, int page) {
  const auto bytes = fileBytes(path);
  if (!bytes) return -1;
  const DocumentHandle document = loadDocument(*bytes);
  return document ? marksOn(document.get(), page) : -1;
}

int SaveTest::marksOf(int pane, int page) {
  return marksOn(documentOf(pane), page);
}

void SaveTest::placeText(int pane, int page) {
  if (session.placementDocument != documentOf(pane)) LoadPlacements(documentOf(pane));
  Placement text;
  text.kind = PlacementKind::TextDrop;
  text.x = 100;
  text.y = 200;
  text.width = 100;
  text.height = 20;
  text.text = u"Paid";
  session.placements[page].push_back(text);
}

bool SaveTest::save(int pane) {
  return SaveDocumentTo(pane, pathOf(pane));
}

void SaveTest::expectNotices(int count) {
  standIn().boxAnswers.assign(static_cast<std::size_t>(count), BoxAnswer::Ok);
}

std::vector<std::u16string> SaveTest::boxTexts() {
  std::vector<std::u16string> texts;
  for (const platform::ShownBox& box : standIn().boxes) texts.push_back(box.text);
  return texts;
}

namespace {

// To the document's own file.

TEST_F(SaveTest, ASaveWritesTheEditsAndOpensTheFileAgain) {
  const std::u16string path = opened(u"docs\\a.pdf");
  mark(0, 1);
  ASSERT_TRUE(hasUnsavedChanges());
  SaveCommand();
  EXPECT_THAT(boxTexts(), IsEmpty());
  EXPECT_EQ(marksIn(path, 1), 1);
  EXPECT_EQ(marksOf(0, 1), 1);
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_FALSE(session.active.altered);
  EXPECT_EQ(session.active.path, path);
  EXPECT_EQ(session.active.loadedFrom.path, path);
  EXPECT_EQ(session.active.loadedFrom.stamp, platform::fileStamp(path));
  EXPECT_THAT(namesIn(u"C:\\docs"), ElementsAre(u"a.pdf"));
  EXPECT_TRUE(platform::isHeld(path));
}

TEST_F(SaveTest, PagesZoomPanAndZoomModeOfBothPanesComeBack) {
  opened(u"a.pdf", 6);
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 4, false);
  goToPage(1, 2, false);
  for (int pane : {0, 1}) {
    PaneSlot& slot = session.panes[pane];
    slot.zoom = 1.25f;
    slot.panX = 11.0f + static_cast<float>(pane);
    slot.panY = -22;
    slot.zoomMode = kCustomFit;
    renderPane(pane);
  }
  mark(0);
  ASSERT_TRUE(save());
  for (int pane : {0, 1}) {
    const PaneSlot& slot = session.panes[pane];
    EXPECT_EQ(slot.currentPage, pane == 0 ? 4 : 2);
    EXPECT_EQ(slot.openPage, slot.currentPage);
    EXPECT_EQ(slot.zoom, 1.25f);
    EXPECT_EQ(slot.panX, 11.0f + static_cast<float>(pane));
    EXPECT_EQ(slot.panY, -22);
    EXPECT_EQ(slot.zoomMode, kCustomFit);
    EXPECT_NE(slot.pageBitmap, nullptr);
  }
}

TEST_F(SaveTest, InBookBothPagesComeBack) {
  opened(u"a.pdf", 6);
  setViewMode(ViewMode::Book);
  goToPage(0, 2, false);
  mark(0, 3);
  ASSERT_TRUE(save());
  EXPECT_EQ(session.panes[0].openPage, 2);
  EXPECT_EQ(session.panes[1].openPage, 3);
  EXPECT_NE(session.panes[1].pageBitmap, nullptr);
}

TEST_F(SaveTest, APathThatDiffersInLetterCaseAloneIsTheSameFile) {
  const std::u16string path = opened(u"docs\\a.pdf");
  mark(0);
  ASSERT_TRUE(SaveDocumentTo(0, u"C:\\DOCS\\A.PDF"));
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_THAT(namesIn(u"C:\\docs"), ElementsAre(u"a.pdf"));
  EXPECT_EQ(session.active.path, path);
  EXPECT_FALSE(session.active.altered) << "the file was opened again";
}

TEST_F(SaveTest, AShortNameIsTheSameFile) {
  standIn().shortNames = {{u"reallo~1.pdf", u"Really long name.pdf"}};
  const std::u16string path = opened(u"docs\\Really long name.pdf");
  mark(0);
  ASSERT_TRUE(SaveDocumentTo(0, u"C:\\docs\\REALLO~1.PDF"));
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_THAT(namesIn(u"C:\\docs"), ElementsAre(u"Really long name.pdf"));
  EXPECT_EQ(session.active.path, path);
  EXPECT_FALSE(session.active.altered) << "the file was opened again";
}

TEST_F(SaveTest, AShortNameOfAFileInTheOtherPaneIsNoTarget) {
  standIn().shortNames = {{u"righ~1.pdf", u"right.pdf"}};
  openTwo();
  mark(0);
  expectNotices(1);
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\RIGH~1.PDF"));
  EXPECT_EQ(marksIn(right_), 0);
}

TEST_F(SaveTest, AViewPastTheLastPageLandsOnTheLastPage) {
  opened(u"a.pdf", 5);
  goToPage(0, 4, false);
  FPDFPage_Delete(documentOf(0), 4);
  markEdited(session.active);
  ASSERT_TRUE(save());
  EXPECT_EQ(session.active.pageCount, 4);
  EXPECT_EQ(session.panes[0].currentPage, 3);
  EXPECT_EQ(session.panes[0].openPage, 3);
}

TEST_F(SaveTest, InTwoDocumentsTheOtherPaneIsNotTouched) {
  openTwo();
  mark(0);
  mark(1);
  const PaneSlot& other = session.panes[1];
  const FPDF_DOCUMENT document = other.document.get();
  const FPDF_PAGE page = other.page.get();
  const auto* bitmap = other.pageBitmap.get();
  ASSERT_NE(bitmap, nullptr);
  ASSERT_TRUE(save(0));
  EXPECT_EQ(other.document.get(), document);
  EXPECT_EQ(other.page.get(), page);
  EXPECT_EQ(other.pageBitmap.get(), bitmap);
  EXPECT_TRUE(other.dirty);
  EXPECT_EQ(marksIn(left_), 1);
  EXPECT_EQ(marksIn(right_), 0);
}

TEST_F(SaveTest, TheInactivePaneCanBeSaved) {
  openTwo();
  mark(1);
  ASSERT_EQ(session.activePane, 0);
  ASSERT_TRUE(save(1));
  EXPECT_EQ(marksIn(right_), 1);
  EXPECT_FALSE(hasUnsavedChanges(1));
  EXPECT_NE(session.panes[1].pageBitmap, nullptr);
}

TEST_F(SaveTest, PlacementsBecomeAnnotationsOfTheFile) {
  const std::u16string path = opened(u"a.pdf");
  placeText(0, 1);
  ASSERT_TRUE(hasUnsavedChanges());
  SaveCommand();
  EXPECT_EQ(marksIn(path, 1), 1);
  EXPECT_FALSE(hasUnsavedChanges());
  readWaitingPlacements();
  EXPECT_EQ(session.placementDocument, documentOf(0));
  ASSERT_THAT(session.placements[1], SizeIs(1));
  EXPECT_FALSE(session.placements[1][0].pending());
  EXPECT_EQ(session.selectedPlacementPage, -1);
}

TEST_F(SaveTest, PlacementsOfTheOtherDocumentStayPending) {
  openTwo();
  placeText(1);
  mark(0);
  ASSERT_TRUE(save(0));
  EXPECT_TRUE(hasUnsavedChanges(1));
  EXPECT_EQ(session.placementDocument, documentOf(1));
  EXPECT_EQ(marksOf(1), 0);
}

TEST_F(SaveTest, TheSearchGoesOnAndTheSelectionEnds) {
  opened(u"a.pdf");
  session.find.query = u"Page";
  session.find.results = {{0, 0, 4}};
  session.find.currentIndex = 0;
  session.selection.active = true;
  session.selection.pane = 0;
  mark(0);
  ASSERT_TRUE(save());
  EXPECT_EQ(session.find.query, u"Page");
  EXPECT_THAT(session.find.results, SizeIs(1));
  EXPECT_FALSE(session.selection.active);
}

TEST_F(SaveTest, ADragEndsBeforeItsPageCloses) {
  opened(u"a.pdf");
  beginGesture(Gesture::Pan, 10, 10);
  ASSERT_TRUE(save());
  EXPECT_EQ(session.gesture.kind, Gesture::None);
}

TEST_F(SaveTest, ThreeSavesInARowAddNothingTwice) {
  const std::u16string path = opened(u"a.pdf");
  for (int n = 1; n <= 3; ++n) {
    mark(0);
    placeText(0, 1);
    ASSERT_TRUE(save());
    EXPECT_EQ(marksIn(path), n);
    EXPECT_EQ(marksIn(path, 1), n);
  }
}

TEST_F(SaveTest, AVersionTwoDocumentStaysOne) {
  std::string bytes = simplePdf(2);
  bytes.replace(0, 8, "%PDF-2.0");
  const std::u16string path = u"C:\\document.pdf";
  ASSERT_TRUE(open(bytes));
  mark(0);
  ASSERT_TRUE(save());
  EXPECT_TRUE(fileBytes(path)->starts_with("%PDF-2.0"));
  EXPECT_EQ(marksIn(path), 1);
}

TEST_F(SaveTest, AnOlderVersionStaysToo) {
  std::string bytes = simplePdf(2);
  bytes.replace(0, 8, "%PDF-1.3");
  ASSERT_TRUE(open(bytes));
  ASSERT_TRUE(save());
  EXPECT_TRUE(fileBytes(u"C:\\document.pdf")->starts_with("%PDF-1.3"));
}

// Turns.

class SaveTurnsTest : public SaveTest {
 protected:
  SaveTurnsTest() : path(opened(u"a.pdf")) { rotateDocument(0); }
  int turnsInFile() {
    const DocumentHandle document = loadDocument(*fileBytes(path));
    const PageHandle page(FPDF_LoadPage(document.get(), 0));
    return FPDFPage_GetRotation(page.get());
  }
  std::u16string path;
};

TEST_F(SaveTurnsTest, YesWritesThem) {
  standIn().boxAnswers = {BoxAnswer::Yes};
  SaveCommand();
  EXPECT_EQ(turnsInFile(), 1);
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_EQ(session.panes[0].documentRotation, 0u);
}

TEST_F(SaveTurnsTest, NoWritesTheRestAndKeepsThemPending) {
  session.shelfIndex[u"c:\\a.pdf"] = {u"c:\\a.pdf", true, u"", 0, 0};
  mark(0);
  standIn().boxAnswers = {BoxAnswer::No};
  SaveCommand();
  EXPECT_EQ(turnsInFile(), 0);
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_TRUE(hasUnsavedChanges());
  EXPECT_FALSE(session.active.dirty);
  EXPECT_EQ(session.panes[0].documentRotation, 1u);
  EXPECT_THAT(session.shelfIndex, SizeIs(1));
}

TEST_F(SaveTurnsTest, CancelWritesNothing) {
  mark(0);
  const auto before = *fileBytes(path);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  SaveCommand();
  EXPECT_EQ(*fileBytes(path), before);
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(SaveTurnsTest, SaveAsAsksAfterItsDialog) {
  std::size_t boxesAtDialog = 99;
  standIn().onSaveDialog = [&] { boxesAtDialog = standIn().boxes.size(); };
  standIn().saveDialogAnswers = {u"C:\\b.pdf"};
  standIn().boxAnswers = {BoxAnswer::Cancel};
  SaveAsCommand();
  EXPECT_EQ(boxesAtDialog, 0u);
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Save Rotation");
  EXPECT_EQ(fileBytes(u"C:\\b.pdf"), std::nullopt);
}

// The shelf.

TEST_F(SaveTest, ASaveTakesTheDocumentOffTheShelf) {
  opened(u"a.pdf");
  session.shelfIndex[u"c:\\a.pdf"] = {u"c:\\a.pdf", true, u"", 0, 0};
  mark(0);
  SaveCommand();
  EXPECT_THAT(session.shelfIndex, IsEmpty());
}

TEST_F(SaveTest, SaveAsOntoTheOwnFileLeavesTheShelfAlone) {
  const std::u16string path = opened(u"a.pdf");
  session.shelfIndex[u"c:\\a.pdf"] = {u"c:\\a.pdf", true, u"", 0, 0};
  mark(0);
  standIn().saveDialogAnswers = {path};
  SaveAsCommand();
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_FALSE(session.active.altered) << "the file was opened again";
  EXPECT_THAT(session.shelfIndex, SizeIs(1));
}

TEST_F(SaveTest, TurnsThatSaveAsLeavesOutAreNotedForTheNewPath) {
  BinderFile working;
  working.path = u"C:\\WorkingDocs.lst";
  working.isWorkingDocuments = true;
  session.binderLibrary = {working};
  opened(u"a.pdf");
  rotateDocument(0);
  standIn().saveDialogAnswers = {u"C:\\b.pdf"};
  standIn().boxAnswers = {BoxAnswer::No};
  SaveAsCommand();
  EXPECT_TRUE(hasUnsavedChanges());
  ASSERT_EQ(session.shelfIndex.size(), 1u);
  EXPECT_EQ(session.shelfIndex.begin()->path, u"c:\\b.pdf");
  EXPECT_TRUE(session.shelfIndex.begin()->dirty);
}

TEST_F(SaveTest, ADocumentFromAShelfCopyIsWrittenToItsOwnFile) {
  const std::u16string path = putPdf(u"a.pdf", simplePdf(2));
  const std::u16string copy = putPdf(u"Shelve\\copy.pdf", simplePdf(3));
  session.shelveFolder = u"C:\\Shelve\\";
  ASSERT_TRUE(open(copy, {.displayPath = path}));
  mark(0, 2);
  SaveCommand();
  EXPECT_EQ(marksIn(path, 2), 1);
  EXPECT_EQ(marksIn(copy, 2), 0);
  EXPECT_EQ(session.active.loadedFrom.path, path);
  EXPECT_FALSE(platform::isHeld(copy));
}

// Questions before anything is written.

TEST_F(SaveTest, WithoutADocumentBothCommandsSaySo) {
  expectNotices(2);
  SaveCommand();
  SaveAsCommand();
  EXPECT_THAT(boxTexts(), ElementsAre(u"No document is open.", u"No document is open."));
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Warning);
  EXPECT_EQ(standIn().boxes[0].title, u"Quillmere");
  EXPECT_THAT(standIn().saveDialogs, IsEmpty());
}

TEST_F(SaveTest, WithoutAPathSaveAsksForSaveAs) {
  opened(u"a.pdf");
  session.active.path.clear();
  expectNotices(1);
  SaveCommand();
  EXPECT_THAT(boxTexts(), ElementsAre(u"No file path is known. Use Save As."));
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Warning);
}

TEST_F(SaveTest, AViewerSavesNothingAndSaysNothing) {
  const std::u16string path = opened(u"a.pdf");
  mark(0);
  session.viewerRole = true;
  SaveCommand();
  SaveAsCommand();
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), IsEmpty());
  EXPECT_THAT(standIn().saveDialogs, IsEmpty());
  EXPECT_EQ(marksIn(path), 0);
}

TEST_F(SaveTest, APathOf260UnitsIsTooLongAndOneOf259IsNot) {
  opened(u"a.pdf");
  mark(0);
  const std::u16string folder = u"C:\\" + std::u16string(100, u'f') + u"\\";
  platform::putFolder(folder);
  const auto pathOfLength = [&](std::size_t units) {
    return folder + std::u16string(units - folder.size() - 4, u'n') + u".pdf";
  };
  expectNotices(1);
  EXPECT_FALSE(SaveDocumentTo(0, pathOfLength(260)));
  EXPECT_THAT(boxTexts(), ElementsAre(u"The destination path is too long."));
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
  EXPECT_TRUE(session.active.dirty);
  // The second save writes a sibling whose path is longer still.
  const std::u16string longest = pathOfLength(259);
  ASSERT_TRUE(SaveDocumentTo(0, longest));
  mark(0);
  ASSERT_TRUE(save());
  EXPECT_EQ(marksIn(longest), 2);
  EXPECT_THAT(namesIn(folder), SizeIs(1));
}

// To another file.

class SaveAsTest : public SaveTest {
 protected:
  SaveAsTest() {
    const std::u16string name = u"docs\\a.pdf";
    a = opened(name);
    b = u"C:\\docs\\b.pdf";
  }
  static void saveAs(const std::u16string& path) {
    standIn().saveDialogAnswers = {path};
    SaveAsCommand();
  }
  std::u16string a;
  std::u16string b;
};

TEST_F(SaveAsTest, TheDialogAsksForAPdfFile) {
  saveAs(u"");
  ASSERT_THAT(standIn().saveDialogs, SizeIs(1));
  const platform::SaveDialogRequest& request = standIn().saveDialogs[0];
  ASSERT_THAT(request.filters, SizeIs(1));
  EXPECT_EQ(request.filters[0].name, u"PDF Files");
  EXPECT_EQ(request.filters[0].pattern, u"*.pdf");
  EXPECT_EQ(request.defaultExtension, u"pdf");
  EXPECT_EQ(request.name, u"a.pdf");
  EXPECT_THAT(boxTexts(), IsEmpty()) << "cancelling says nothing";
  EXPECT_EQ(session.active.path, a);
}

TEST_F(SaveAsTest, TheDocumentGetsTheNewPathAndItsOldFileStays) {
  mark(0);
  placeText(0, 1);
  const FPDF_DOCUMENT document = documentOf(0);
  saveAs(b);
  EXPECT_EQ(session.active.path, b);
  EXPECT_EQ(documentOf(0), document) << "it stays open";
  EXPECT_EQ(session.active.loadedFrom.path, a);
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_TRUE(session.active.altered);
  EXPECT_EQ(marksIn(b), 1);
  EXPECT_EQ(marksIn(b, 1), 1);
  EXPECT_EQ(marksIn(a), 0);
  readWaitingPlacements();
  ASSERT_THAT(session.placements[1], SizeIs(1));
  EXPECT_FALSE(session.placements[1][0].pending());
  EXPECT_NE(session.panes[0].pageBitmap, nullptr);
  EXPECT_NE(standIn().window.title.find(u"b.pdf"), std::u16string::npos);
}

TEST_F(SaveAsTest, TheNewPathJoinsTheDocumentsInUse) {
  BinderFile working;
  working.path = u"C:\\WorkingDocs.lst";
  working.isWorkingDocuments = true;
  session.binderLibrary = {working};
  session.documentBinders[u"c:\\docs\\a.pdf"] = u"C:\\other.lst";
  session.settings.recentFiles = {b};
  saveAs(b);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(b));
  EXPECT_EQ(session.documentBinders.count(u"c:\\docs\\a.pdf"), 0u);
  EXPECT_EQ(session.documentBinders[u"c:\\docs\\b.pdf"], u"C:\\WorkingDocs.lst");
  EXPECT_THAT(session.settings.recentFiles, IsEmpty());
}

TEST_F(SaveAsTest, FromAToBAndBackToAReplacesA) {
  mark(0);
  saveAs(b);
  mark(0);
  saveAs(a);
  EXPECT_THAT(boxTexts(), IsEmpty());
  EXPECT_EQ(session.active.path, a);
  EXPECT_EQ(session.active.loadedFrom.path, a);
  EXPECT_EQ(marksIn(a), 2);
  EXPECT_EQ(marksIn(b), 1);
  EXPECT_THAT(namesIn(u"C:\\docs"), ElementsAre(u"a.pdf", u"b.pdf"));
}

TEST_F(SaveAsTest, ASaveAfterItWritesTheNewFile) {
  saveAs(b);
  mark(0);
  SaveCommand();
  EXPECT_EQ(marksIn(b), 1);
  EXPECT_EQ(marksIn(a), 0);
  EXPECT_EQ(session.active.loadedFrom.path, b);
  EXPECT_FALSE(platform::isHeld(a));
}

TEST_F(SaveAsTest, AnExistingFileIsReplacedWhole) {
  platform::putFile(b, std::string(50000, 'x'));
  platform::setProperties(b, {0, 5, u"readers"});
  mark(0);
  saveAs(b);
  EXPECT_EQ(marksIn(b), 1);
  EXPECT_EQ(platform::propertiesOf(b), (platform::FileProperties{0, 5, u"readers"}));
}

TEST_F(SaveAsTest, ATargetThatMayNotBeWrittenStays) {
  mark(0);
  const auto expectRefused = [&](const char* why) {
    standIn().boxes.clear();
    expectNotices(1);
    saveAs(b);
    EXPECT_THAT(boxTexts(), ElementsAre(u"Failed to save PDF.")) << why;
    EXPECT_EQ(*fileBytes(b), "older") << why;
    EXPECT_EQ(session.active.path, a) << why;
    EXPECT_TRUE(session.active.dirty) << why;
    EXPECT_THAT(namesIn(u"C:\\docs"), ElementsAre(u"a.pdf", u"b.pdf")) << why;
  };
  platform::putFile(b, "older");
  platform::setReadOnly(b, true);
  expectRefused("read-only");
  platform::setReadOnly(b, false);
  platform::setOtherUse(b, platform::OtherUse::Exclusive);
  expectRefused("locked");
  platform::setOtherUse(b, platform::OtherUse::Nobody);
  platform::setProperties(b, {platform::kAttributeHidden, 0, u""});
  expectRefused("hidden");
  platform::setProperties(b, {platform::kAttributeSystem, 0, u""});
  expectRefused("system");
  platform::setProperties(b, {});
  standIn().diskFree = 300;
  expectRefused("full disk");
}

TEST_F(SaveAsTest, AFolderThatWentAwayIsNoTarget) {
  mark(0);
  expectNotices(1);
  saveAs(u"C:\\gone\\b.pdf");
  EXPECT_THAT(boxTexts(), ElementsAre(u"Failed to save PDF."));
  EXPECT_EQ(session.active.path, a);
}

TEST_F(SaveTest, AFileOfTheOtherPaneIsNoTarget) {
  openTwo();
  const std::string before = *fileBytes(right_);
  mark(0);
  expectNotices(1);
  EXPECT_FALSE(SaveDocumentTo(0, u"C:/RIGHT.pdf"));
  EXPECT_THAT(boxTexts(), ElementsAre(u"Failed to save PDF."));
  EXPECT_EQ(*fileBytes(right_), before);
  EXPECT_TRUE(session.panes[0].dirty);
}

TEST_F(SaveTest, AFileThatTheOtherPaneStillReadsIsNoTarget) {
  openTwo();
  ASSERT_TRUE(SaveDocumentTo(1, u"C:\\elsewhere.pdf"));
  mark(0);
  expectNotices(1);
  EXPECT_FALSE(SaveDocumentTo(0, right_));
  EXPECT_THAT(boxTexts(), ElementsAre(u"Failed to save PDF."));
  EXPECT_EQ(session.panes[0].path, left_);
}

TEST_F(SaveTest, CopiesOnTheShelfAreNoTargets) {
  opened(u"a.pdf");
  session.shelveFolder = u"C:\\Shelve\\";
  platform::putFile(u"C:\\Shelve\\copy.pdf", "edits");
  mark(0);
  expectNotices(1);
  EXPECT_FALSE(SaveDocumentTo(0, u"c:\\x\\..\\shelve\\copy.pdf"));
  EXPECT_EQ(*fileBytes(u"C:\\Shelve\\copy.pdf"), "edits");
}

}  // namespace
}  // namespace quillmere::test
