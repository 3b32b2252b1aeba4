#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "app/exit.h"
#include "documents/close.h"
#include "documents/discard.h"
#include "documents/modes.h"
#include "documents/shelve.h"
#include "documents/unsaved_files.h"
#include "platform/text.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::FileCall;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

// Each call of the platform fails once, in each flow that moves unsaved changes.
class ShelfFaultsTest : public ShelfFlowTest {
 protected:
  using Step = std::function<void()>;

  // Has a.pdf with its mark wherever `flow` can leave it, and finds it there.
  void expectMarkWhicheverCallFails(const Step& prepare, const Step& flow) {
    standIn().chooseAnswer = [](const platform::ShownBox& box) {
      return box.buttons == BoxButtons::YesNoCancel ? BoxAnswer::Cancel : BoxAnswer::Ok;
    };
    failEachCall(prepare, flow, [this] { expectMark(); });
  }

  // Runs `flow` with its first call failing, then its second one, and so on until none was left to
  // fail, each time with `check` afterwards.
  void failEachCall(const Step& prepare, const Step& flow, const Step& check) {
    bool failed = true;
    int call = 0;
    while (failed) {
      SCOPED_TRACE(testing::Message() << "call " << ++call);
      startOver(simplePdf(3));
      prepare();
      standIn().boxes.clear();
      int calls = 0;
      standIn().refuseFileCall = [&calls, call](FileCall) { return ++calls == call; };
      flow();
      standIn().refuseFileCall = {};
      failed = calls >= call;
      check();
      closeAllDocuments();
      for (const char16_t* path : {kA, kB, kC}) EXPECT_FALSE(platform::isHeld(path));
      for (const std::u16string& name : shelfFiles()) {
        EXPECT_FALSE(platform::isHeld(session.shelveFolder + name));
      }
      if (HasFailure()) return;
    }
    EXPECT_GT(call, 5);
  }

  // Answers boxes with these titles, and notices with OK.
  static void answer(const std::u16string& title, BoxAnswer answer) {
    standIn().chooseAnswer = [=](const platform::ShownBox& box) {
      if (box.title == title) return answer;
      return box.buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
    };
  }

  static std::vector<std::u16string> notices() {
    std::vector<std::u16string> texts;
    for (const platform::ShownBox& box : standIn().boxes) {
      if (box.buttons == BoxButtons::Ok) texts.push_back(box.text);
    }
    return texts;
  }

  // The changes of a document are either given up for good, or all there with a word about it.
  void expectGivenUpOrKept(const char16_t* path, int file) {
    SCOPED_TRACE(testing::Message() << "file " << file);
    EXPECT_EQ(marksIn(path), 0) << "the file itself never changes";
    if (!IsShelved(path)) {
      EXPECT_THAT(notices(), IsEmpty());
      restart();
      openFile(1, file);
      EXPECT_EQ(marks(), 0) << "what was given up does not come back";
    } else {
      EXPECT_THAT(notices(), ElementsAre(u"Could not open PDF.\n(PDFium error 2)"));
      answer(u"Conflicting Versions", BoxAnswer::Yes);
      openFile(1, file);
      EXPECT_EQ(marks(), 1);
      EXPECT_TRUE(session.documentBinders.contains(platform::toLower(path)));
    }
  }

 private:
  // A user who looks for the mark in this session finds it.
  void expectMark() {
    if (session.leaving) restart();
    if (session.active.path != kA || session.active.document == nullptr) openFile(1, 0);
    EXPECT_EQ(marks(), 1);
  }
};

TEST_F(ShelfFaultsTest, LeavingADocumentLosesNothing) {
  const auto edit = [this] {
    openFile(1, 0);
    mark();
  };
  expectMarkWhicheverCallFails(edit, [this] { openFile(1, 1); });
}

TEST_F(ShelfFaultsTest, LeavingADocumentThatWasReadFromItsCopyLosesNothing) {
  const auto shelve = [this] {
    shelveFile(1, 0);
    openFile(1, 1);
    openFile(1, 0);
    ASSERT_TRUE(ShelveCurrentDocument());
  };
  expectMarkWhicheverCallFails(shelve, [this] { openFile(1, 1); });
}

TEST_F(ShelfFaultsTest, SavingFromTheShelfLosesNothing) {
  const auto shelve = [this] {
    shelveFile(1, 0);
    openFile(1, 1);
  };
  expectMarkWhicheverCallFails(shelve, [] { SaveAll(); });
}

TEST_F(ShelfFaultsTest, SavingAnOpenDocumentFromTheShelfLosesNothing) {
  expectMarkWhicheverCallFails([this] { shelveFile(1, 0); }, [] { SaveAll(); });
}

TEST_F(ShelfFaultsTest, ClosingTheWindowLosesNothing) {
  const auto shelve = [this] {
    shelveFile(1, 0);
    openFile(1, 1);
    answerDialog({u"a.pdf  -  Work"});
  };
  expectMarkWhicheverCallFails(shelve, [] { settleBeforeClose(); });
}

TEST_F(ShelfFaultsTest, LoggingOffLosesNothing) {
  const auto edit = [this] {
    openFile(1, 0);
    mark();
  };
  expectMarkWhicheverCallFails(edit, [] { settleForLogoff(); });
}

TEST_F(ShelfFaultsTest, DiscardingADocumentGivesItsChangesUpOrKeepsThem) {
  const auto discard = [] {
    answer(u"Discard Changes", BoxAnswer::Ok);
    DiscardActive();
  };
  failEachCall([this] { shelveFile(1, 0); }, discard, [this] { expectGivenUpOrKept(kA, 0); });
}

TEST_F(ShelfFaultsTest, DiscardingAllGivesChangesUpOrKeepsThem) {
  const auto shelve = [this] {
    shelveFile(1, 0);
    shelveFile(1, 2);
  };
  const auto discard = [] {
    answer(u"Discard All", BoxAnswer::Yes);
    DiscardAll();
  };
  const auto check = [this] {
    EXPECT_FALSE(IsShelved(kA)) << "it is not open, so nothing has to be loaded";
    expectGivenUpOrKept(kC, 2);
  };
  failEachCall(shelve, discard, check);
}

TEST_F(ShelfFaultsTest, ChoosingTheFileOnDiskGivesTheCopyUpOrKeepsIt) {
  const auto shelve = [this] {
    shelveFile(1, 0);
    restart();
    platform::setWriteTime(kA, 132'000'000'000'000'000u);
  };
  const auto choose = [this] {
    answer(u"Conflicting Versions", BoxAnswer::No);
    openFile(1, 0);
  };
  const auto check = [this] {
    // Without a stamp of the file there is no conflict to ask about.
    if (IsShelved(kA) && marks() == 1) {
      EXPECT_THAT(standIn().boxes, IsEmpty());
    } else {
      expectGivenUpOrKept(kA, 0);
    }
  };
  failEachCall(shelve, choose, check);
}

TEST_F(ShelfFaultsTest, LeavingTwoDocumentsKeepsTheLeftOneAndTheRightOnesEarlierCopy) {
  const auto edit = [this] {
    shelveFile(1, 1);
    setViewMode(ViewMode::TwoDocuments);
    openFile(1, 0);
    mark(0);
    setActivePane(1);
    openFile(1, 1);
    mark(1);
    setActivePane(0);
  };
  const auto check = [this] {
    EXPECT_THAT(standIn().boxes, IsEmpty());
    EXPECT_EQ(session.active.path, kA);
    EXPECT_EQ(marks(), 1);
    EXPECT_TRUE(hasUnsavedChanges());
    EXPECT_GE(marksIn(copyOf(kB)), 1);
    EXPECT_EQ(marksIn(kB), 0);
    EXPECT_TRUE(IsShelved(kB));
    restart();
    openFile(1, 1);
    EXPECT_GE(marks(), 1);
    EXPECT_THAT(standIn().boxes, IsEmpty());
  };
  failEachCall(
      edit, [] { setViewMode(ViewMode::SinglePage); }, check);
}

}  // namespace
}  // namespace quillmere::test
