#include <gmock/gmock.h>

#include <set>

#include "annot/annot_test.h"
#include "annot/markups.h"
#include "annot/notes.h"
#include "app/commands.h"
#include "base/text_format.h"
#include "dialogs/dialog_script.h"
#include "documents/modes.h"
#include "nav/find_bar.h"
#include "view/navigation.h"

// As long as marks are in memory alone, nothing that is done with the document may take one away.
namespace quillmere::test {
namespace {

constexpr int kPages = 200;
constexpr int kMarks = 500;

class NothingLostTest : public AnnotTest {
 protected:
  void markPages() {
    for (int i = 0; i < kMarks; ++i) {
      goToPage(0, i * 7 % kPages, false);
      selectText(i % 2 == 0 ? u"Quill" : u"page");
      i % 3 == 0 ? strikeSelectionThrough() : highlightSelection();
      if (i % 5 == 0) noteNewestMark(i);
    }
  }
  static std::u16string noteOf(int mark) { return u"note " + decimal(mark); }
  static void noteNewestMark(int mark) {
    setView(0, 1.0f, 40.0f, 20.0f);
    pick(middleOf(marksOn(documentOf(0), pane(0).openPage).back()));
    dialogScript().noteAnswers = {noteOf(mark)};
    EditMarkupNote();
  }
  static std::set<std::u16string> notesOf(FPDF_DOCUMENT document) {
    std::set<std::u16string> notes;
    for (int page = 0; page < kPages; ++page) {
      for (const FoundMark& mark : marksOn(document, page)) notes.insert(mark.note);
    }
    return notes;
  }
  static void search() {
    OpenFindBar();
    platform::standIn().findBar.field = u"Quill";
    findFieldChanged();
    CloseFindBar();
  }
};

TEST_F(NothingLostTest, MarksOutlastSearchesPageTurnsAndChangesOfMode) {
  openLines({"Quill and page", "a second line"}, kPages);
  markPages();
  ASSERT_EQ(countMarks(documentOf(0)), kMarks);
  search();
  for (int turn = 0; turn < 500; ++turn) goToPage(0, turn * 11 % kPages, false);
  for (const ViewMode mode : {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments,
                              ViewMode::Book, ViewMode::SinglePage}) {
    setViewMode(mode);
    for (int turn = 0; turn < 70; ++turn) goToPage(0, turn % kPages, false);
    search();
  }
  EXPECT_TRUE(dirtyOf(0));
  EXPECT_TRUE(documentSlotOf(0).altered);
  EXPECT_EQ(countMarks(documentOf(0)), kMarks);
  const DocumentHandle copy = loadDocument(savedCopy(documentOf(0)));
  EXPECT_EQ(countMarks(copy.get()), kMarks);
  std::set<std::u16string> wanted{u""};
  for (int mark = 0; mark < kMarks; mark += 5) wanted.insert(noteOf(mark));
  EXPECT_EQ(notesOf(documentOf(0)), wanted);
  EXPECT_EQ(notesOf(copy.get()), wanted);
}

}  // namespace
}  // namespace quillmere::test
