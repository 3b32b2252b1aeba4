#ifndef _WIN32

#include <fpdf_edit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string>

#include "app/exit.h"
#include "documents/document_loader.h"
#include "documents/save.h"
#include "documents/shelve.h"
#include "store/shelf.h"
#include "support/shelf_flow_test.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;

// What the process that is ended tells before it goes on to the next thing.
enum Milestone : char {
  kFirstShelved = 'a',
  kFirstSaved = 'b',
  kSecondShelved = 'c',
  kLeft = 'd',
};

struct Ended {
  int calls = 0;              // of the platform, up to the end
  std::set<char> milestones;  // that were reached
};

// A process of its own that works on documents and is ended at the n-th call of the platform, with
// whatever it had not handed to the system yet.
class KillTest : public ShelfFlowTest {
 protected:
  static constexpr int kNever = -1;
  static constexpr int kRunsInShort = 100;

  static Ended workUntil(int call) {
    int ends[2] = {};
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      work(call, ends[1]);
    }
    close(ends[1]);
    Ended ended;
    std::string told;
    char byte = 0;
    while (read(ends[0], &byte, 1) == 1) told += byte;
    close(ends[0]);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    for (const char letter : told) {
      if (letter == '.') {
        ++ended.calls;
      } else {
        ended.milestones.insert(letter);
      }
    }
    return ended;
  }

  // The document, its file or its copy, is as one of the states in which a user left it.
  static void expectWholeOrOld(const std::u16string& path, int marksWhenSaved) {
    const DocumentHandle document = loadDocumentFile(path);
    ASSERT_NE(document, nullptr) << "a file that does not open";
    EXPECT_EQ(FPDF_GetPageCount(document.get()), 3);
    const int found = marksIn(path);
    EXPECT_TRUE(found == 0 || found == marksWhenSaved) << found;
  }

 private:
  [[noreturn]] static void work(int call, int out) {
    const auto tell = [out](char what) { static_cast<void>(!write(out, &what, 1)); };
    int calls = 0;
    standIn().refuseFileCall = [&calls, call, tell](platform::FileCall) {
      if (++calls == call) _exit(0);
      tell('.');
      return false;
    };
    standIn().chooseAnswer = [](const platform::ShownBox&) { return BoxAnswer::Ok; };
    shelveFile(1, 0);
    openFile(1, 1);
    tell(kFirstShelved);
    openFile(1, 0);
    mark();
    openFile(1, 1);  // a second copy takes the place of the first
    openFile(1, 0);
    SaveCommand();
    tell(kFirstSaved);
    openFile(1, 1);
    mark();
    rotatePage(0);
    openFile(1, 2);
    tell(kSecondShelved);
    answerDialog({u"b.pdf  -  Work"});
    if (settleBeforeClose()) tearDown();
    tell(kLeft);
    _exit(0);
  }
};

TEST_F(KillTest, WhereverTheProcessEndsFilesAreWholeAndShelvedWorkIsOfferedAgain) {
  const Ended whole = workUntil(kNever);
  ASSERT_EQ(whole.milestones.size(), 4u);
  ASSERT_GT(whole.calls, 30);
  const char* asked = std::getenv("QUILLMERE_LONG");
  const int runs = asked != nullptr ? whole.calls : std::min(kRunsInShort, whole.calls);
  const std::string original = platform::fileBytes(kC).value_or("");
  for (int run = 0; run < runs; ++run) {
    const int call = 1 + static_cast<int>(std::int64_t{run} * whole.calls / runs);
    SCOPED_TRACE(call);
    for (const char16_t* path : {kA, kB, kC}) platform::putFile(path, original);
    for (const std::u16string& name : platform::namesIn(session.shelveFolder)) {
      platform::deleteFile(session.shelveFolder + name);
    }
    for (const char16_t* path : {u"C:\\a.pdf.tmp", u"C:\\b.pdf.tmp"}) platform::deleteFile(path);
    const Ended ended = workUntil(call);

    // The user prefers the newer file where a save got through and its shelf entry did not go.
    standIn().chooseAnswer = [](const platform::ShownBox& box) {
      return box.buttons == platform::BoxButtons::YesNoCancel ? BoxAnswer::No : BoxAnswer::Ok;
    };
    restart();
    expectWholeOrOld(kA, 2);
    expectWholeOrOld(kB, 1);
    const bool firstShelved = ended.milestones.contains(kFirstShelved);
    openFile(1, 0);
    EXPECT_GE(marks(), firstShelved ? 1 : 0);
    if (ended.milestones.contains(kFirstSaved)) {
      EXPECT_EQ(marks(), 2);
    }
    openFile(1, 1);
    if (ended.milestones.contains(kSecondShelved)) {
      EXPECT_EQ(marks(), 1);
      EXPECT_EQ(FPDFPage_GetRotation(session.panes[0].page.get()), 1);
    }
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace quillmere::test

#endif
