#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "app/exit.h"
#include "documents/close.h"
#include "documents/discard.h"
#include "documents/shelve.h"
#include "documents/unsaved_files.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::FileCall;
using platform::standIn;

// Each call of the platform fails once, in each flow that moves unsaved changes.
class ShelfFaultsTest : public ShelfFlowTest {
 protected:
  using Step = std::function<void()>;

  // Has a.pdf with its mark wherever `flow` can leave it, and finds it there.
  void expectMarkWhicheverCallFails(const Step& prepare, const Step& flow) {
    standIn().chooseAnswer = [](const platform::ShownBox& box) {
      return box.buttons == BoxButtons::YesNoCancel ? BoxAnswer::Cancel : BoxAnswer::Ok;
    };
    bool failed = true;
    int call = 0;
    while (failed) {
      SCOPED_TRACE(testing::Message() << "call " << ++call);
      startOver(simplePdf(3));
      prepare();
      int calls = 0;
      standIn().refuseFileCall = [&calls, call](FileCall) { return ++calls == call; };
      flow();
      standIn().refuseFileCall = {};
      failed = calls >= call;
      expectMark();
      if (HasFailure()) return;
    }
    EXPECT_GT(call, 5);
  }

 private:
  // A user who looks for the mark in this session finds it.
  void expectMark() {
    if (session.leaving) restart();
    if (session.active.path != kA || session.active.document == nullptr) openFile(1, 0);
    EXPECT_EQ(marks(), 1);
    closeAllDocuments();
    EXPECT_FALSE(platform::isHeld(kA));
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

}  // namespace
}  // namespace quillmere::test
