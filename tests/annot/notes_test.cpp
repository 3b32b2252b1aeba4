#include "annot/notes.h"

#include <gmock/gmock.h>

#include "annot/annot_test.h"
#include "annot/annotations.h"
#include "annot/markups.h"
#include "app/commands.h"
#include "dialogs/dialog_script.h"
#include "session/changes.h"

namespace quillmere::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class NotesTest : public AnnotTest {
 protected:
  // Opens a page with a highlight that has these entries, and picks it.
  void openMarked(const std::string& entries) {
    PdfPage page = linedPage({"Quill and page"});
    page.annotations = {"<< /Subtype /Stamp /Rect [0 0 9 9] >>",
                        highlightBox(100, 200, 180, 230, entries)};
    openPages({page});
    pick(placeOf(140, 215));
  }
  static void answer(const std::optional<std::u16string>& text) {
    dialogScript().noteAnswers.push_back(text);
  }
  static FPDF_DOCUMENT document() { return documentOf(session.activePane); }
  static std::u16string stored() { return marksOn(document(), 0).at(0).note; }
};

TEST_F(NotesTest, TheDialogAsksForTheNoteOfThePickedMark) {
  openMarked("/Contents (check this)");
  answer(std::nullopt);
  runCommand(kCmdNote);
  ASSERT_THAT(dialogScript().noteQuestions, SizeIs(1));
  EXPECT_EQ(dialogScript().noteQuestions[0].title, u"Annotation Note");
  EXPECT_EQ(dialogScript().noteQuestions[0].prompt, u"Note (shows on hover):");
  EXPECT_EQ(dialogScript().noteQuestions[0].text, u"check this");
  EXPECT_EQ(stored(), u"check this");
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(NotesTest, OkWritesTheNoteAndLeavesTheDocumentUnsaved) {
  openMarked("");
  answer(u"look here");
  EditMarkupNote();
  EXPECT_EQ(stored(), u"look here");
  EXPECT_TRUE(session.active.dirty);
  EXPECT_TRUE(session.active.altered);
}

TEST_F(NotesTest, AnUnchangedNoteIsNotWritten) {
  openMarked("/Contents (one\\ntwo) /RC (<p>one</p>)");
  answer(u"one\r\ntwo");
  EditMarkupNote();
  EXPECT_EQ(stored(), u"one\ntwo");
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(FPDFAnnot_HasKey(annotationAt(pane(0).page.get(), 1).get(), "RC"));
}

TEST_F(NotesTest, AChangedNoteTakesTheOldRichTextAway) {
  openMarked("/Contents (one) /RC (<p>one</p>)");
  answer(u"two");
  EditMarkupNote();
  EXPECT_FALSE(FPDFAnnot_HasKey(annotationAt(pane(0).page.get(), 1).get(), "RC"));
}

TEST_F(NotesTest, LinesAreShownWithBothEndsAndStoredWithOne) {
  openMarked("/Contents (a\\rb\\nc\\r\\nd\\r\\re)");
  answer(u"a\r\nb\r\n\r\nc");
  EditMarkupNote();
  EXPECT_EQ(dialogScript().noteQuestions.at(0).text, u"a\r\nb\r\nc\r\nd\r\n\r\ne");
  EXPECT_EQ(stored(), u"a\rb\r\rc");
}

TEST_F(NotesTest, AnEmptiedNoteIsEmptyAndOffersToAddOneAgain) {
  openMarked("/Contents (gone soon)");
  answer(u"");
  EditMarkupNote();
  EXPECT_EQ(stored(), u"");
  EXPECT_EQ(ReadMarkupNote(0, 1), u"");
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(NotesTest, CancellingChangesNothing) {
  openMarked("/Contents (stays)");
  answer(std::nullopt);
  EditMarkupNote();
  EXPECT_EQ(stored(), u"stays");
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(NotesTest, AViewerWritesNoNote) {
  openMarked("/Contents (stays)");
  session.viewerRole = true;
  runCommand(kCmdNote);
  EXPECT_THAT(dialogScript().noteQuestions, IsEmpty());
  answer(u"other");
  EditMarkupNote();
  EXPECT_EQ(stored(), u"stays");
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(NotesTest, ALongNoteOfAnyScriptComesBackWholeFromASavedCopy) {
  openMarked("");
  std::u16string text;
  while (text.size() < 500'000) text += u"\U0001F58B quill \u03C0\u0142\uFB01\r\n(\\)";
  answer(text);
  EditMarkupNote();
  const DocumentHandle copy = loadDocument(savedCopy(document()));
  EXPECT_EQ(shownNote(marksOn(copy.get(), 0).at(0).note), text);
}

TEST_F(NotesTest, TheNotesOfADocumentThatWentMeanwhileAreLeftAlone) {
  openMarked("/Contents (stays)");
  dialogScript().onNote = [] { documentsLeaving(); };
  answer(u"other");
  EditMarkupNote();
  EXPECT_EQ(stored(), u"stays");
}

TEST_F(NotesTest, ReadingANoteThatIsNotThereGivesNothing) {
  EXPECT_EQ(ReadMarkupNote(0, 0), u"");
  openMarked("/Contents (here)");
  EXPECT_EQ(ReadMarkupNote(0, 1), u"here");
  EXPECT_EQ(ReadMarkupNote(0, 0), u"");
  EXPECT_EQ(ReadMarkupNote(0, 9), u"");
  EXPECT_EQ(ReadMarkupNote(0, -1), u"");
  EXPECT_EQ(ReadMarkupNote(5, 0), u"");
  EXPECT_EQ(ReadMarkupNote(-1, 0), u"");
}

TEST_F(NotesTest, ANoteIsReadInEveryEncoding) {
  openMarked("/Contents <FEFF0051D83DDD8B>");
  EXPECT_EQ(ReadMarkupNote(0, 1), u"Q\U0001F58B");
}

TEST_F(NotesTest, WithNothingPickedTheNoteOfNoMarkIsWritten) {
  openMarked("/Contents (stays)");
  forgetPickedMarkup();
  answer(u"other");
  EditMarkupNote();
  EXPECT_EQ(stored(), u"stays");
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(NotesTest, ANoteIsWrittenToAMarkAlone) {
  openMarked("");
  session.markupMenuAnnot = 0;  // the stamp
  answer(u"other");
  EditMarkupNote();
  EXPECT_EQ(ReadMarkupNote(0, 0), u"");
  EXPECT_FALSE(session.active.dirty);
}

}  // namespace
}  // namespace quillmere::test
