#ifndef _WIN32

#include <fpdf_edit.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <set>
#include <string>

#include "app/exit.h"
#include "documents/document_loader.h"
#include "documents/save.h"
#include "documents/shelve.h"
#include "store/shelf.h"
#include "support/shelf_flow_test.h"
#include "view/rotation.h"

// A process that works on documents is ended at a random point, and the next one looks at what it
// left. scripts/check-kills runs this with a real document and shows what is left to qpdf.
namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::FileCall;
using platform::standIn;

// What the process tells once it has come so far.
enum Milestone : char {
  kFirstShelved = 'a',
  kFirstSaved = 'b',
  kSecondShelved = 'c',
  kLeft = 'd',
  kCalled = '.',     // the platform was called
  kReplacing = 'r',  // a file is about to be replaced by one of which the digest follows
};

// A process ends before its n-th call of the platform. If that writes a block, only the first
// bytes of it reach the file.
struct End {
  int call = 0;
  std::uint64_t bytes = 0;
};
constexpr End kNoEnd{-1, 0};

struct Ended {
  int calls = 0;                // of the platform, up to the end
  std::set<char> milestones;    // that were reached
  std::set<std::string> files;  // digests of what may have taken the place of a document
};

const char* setting(const char* name) {
  return std::getenv(name);
}

std::string bytesOfFile(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string digestOf(const std::string& bytes) {
  std::string digits = std::to_string(std::hash<std::string>()(bytes));
  digits.insert(0, 20 - digits.size(), '0');
  return digits;
}

class KillTest : public ShelfFlowTest {
 protected:
  KillTest() {
    const char* path = setting("QUILLMERE_KILL_DOCUMENT");
    original_ = path != nullptr ? bytesOfFile(path) : platform::fileBytes(kC).value_or("");
    const char* points = setting("QUILLMERE_KILL_POINTS");
    points_ = points != nullptr ? std::atoi(points) : 100;
    startOver(original_);
    pages_ = FPDF_GetPageCount(loadDocumentFile(kA).get());
    marksAtFirst_ = marksIn(kA);
  }

  static Ended workUntil(End end) {
    int ends[2] = {};
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
      close(ends[0]);
      work(end, ends[1]);
    }
    close(ends[1]);
    std::string told;
    char part[4096];
    ssize_t got = 0;
    while ((got = read(ends[0], part, sizeof part)) > 0) {
      told.append(part, static_cast<std::size_t>(got));
    }
    close(ends[0]);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    return understood(told);
  }

  // The user prefers the newer file where a save got through and its shelf entry did not go.
  void startNext() {
    standIn().chooseAnswer = [](const platform::ShownBox& box) {
      return box.buttons == platform::BoxButtons::YesNoCancel ? BoxAnswer::No : BoxAnswer::Ok;
    };
    restart();
  }

  // The file is byte for byte as it was, or as one that was ready to take its place.
  void expectOldOrNew(const std::u16string& path, const Ended& ended) {
    const std::string bytes = platform::fileBytes(path).value_or("");
    const bool isOld = bytes == original_;
    EXPECT_TRUE(isOld || ended.files.contains(digestOf(bytes)));
    const DocumentHandle document = loadDocumentFile(path);
    ASSERT_NE(document, nullptr) << "a file that does not open";
    EXPECT_EQ(FPDF_GetPageCount(document.get()), pages_);
    if (!isOld) leaveForReaders(bytes);
  }

  void expectShelvedWorkAgain(const Ended& ended) {
    const auto reached = [&ended](char what) { return ended.milestones.contains(what); };
    openFile(1, 0);
    const int first = marks() - marksAtFirst_;
    EXPECT_GE(first, reached(kFirstShelved) ? 1 : 0);
    EXPECT_LE(first, 2);
    if (reached(kFirstSaved)) {
      EXPECT_EQ(first, 2);
    }
    openFile(1, 1);
    const int second = marks() - marksAtFirst_;
    EXPECT_GE(second, 0);
    EXPECT_LE(second, 1);
    if (!reached(kSecondShelved)) return;
    EXPECT_EQ(second, 1);
    EXPECT_EQ(FPDFPage_GetRotation(session.panes[0].page.get()), 1);
  }

  int points_ = 0;
  std::string original_;

 private:
  static Ended understood(const std::string& told) {
    Ended ended;
    for (std::size_t at = 0; at < told.size(); ++at) {
      if (told[at] == kCalled) {
        ++ended.calls;
      } else if (told[at] == kReplacing) {
        ended.files.insert(told.substr(at + 1, digestOf({}).size()));
        at += digestOf({}).size();
      } else {
        ended.milestones.insert(told[at]);
      }
    }
    return ended;
  }

  // Files of the same bytes are left once.
  static void leaveForReaders(const std::string& bytes) {
    const char* folder = setting("QUILLMERE_KILL_FOLDER");
    if (folder == nullptr) return;
    std::ofstream file(std::filesystem::path(folder) / (digestOf(bytes) + ".pdf"),
                       std::ios::binary);
    file << bytes;
    EXPECT_TRUE(file.good());
  }

  [[noreturn]] static void work(End end, int out) {
    const auto tell = [out](const std::string& what) {
      static_cast<void>(!write(out, what.data(), what.size()));
    };
    int calls = 0;
    standIn().refuseFileCall = [&calls, end, tell](FileCall kind) {
      if (++calls == end.call) {
        if (kind != FileCall::Write) _exit(0);
        standIn().diskFree = end.bytes;
      } else if (calls > end.call && end.call > 0) {
        _exit(0);
      }
      tell({kCalled});
      if (kind != FileCall::Replace) return false;
      for (const char16_t* sibling : {u"C:\\a.pdf.tmp", u"C:\\b.pdf.tmp"}) {
        const auto bytes = platform::fileBytes(sibling);
        if (bytes) tell(std::string{kReplacing} + digestOf(*bytes));
      }
      return false;
    };
    standIn().chooseAnswer = [](const platform::ShownBox&) { return BoxAnswer::Ok; };
    shelveFile(1, 0);
    openFile(1, 1);
    tell({kFirstShelved});
    openFile(1, 0);
    mark();
    openFile(1, 1);  // a second copy takes the place of the first
    openFile(1, 0);
    SaveCommand();
    tell({kFirstSaved});
    openFile(1, 1);
    mark();
    rotatePage(0);
    openFile(1, 2);
    tell({kSecondShelved});
    answerDialog({u"b.pdf  -  Work"});
    if (settleBeforeClose()) tearDown();
    tell({kLeft});
    _exit(0);
  }

  int pages_ = 0;
  int marksAtFirst_ = 0;
};

TEST_F(KillTest, WhereverTheProcessEndsFilesAreWholeAndShelvedWorkIsOfferedAgain) {
  const Ended whole = workUntil(kNoEnd);
  ASSERT_EQ(whole.milestones.size(), 4u);
  ASSERT_GT(whole.calls, 30);
  std::mt19937 random(14);
  std::uniform_int_distribution<int> anyCall(1, whole.calls);
  std::uniform_int_distribution<std::uint64_t> anyBytes(0, 32 << 10);
  for (int point = 0; point < points_; ++point) {
    const End end{anyCall(random), anyBytes(random)};
    SCOPED_TRACE(testing::Message() << "ended at call " << end.call << ", byte " << end.bytes);
    startOver(original_);
    const Ended ended = workUntil(end);
    startNext();
    expectOldOrNew(kA, ended);
    expectOldOrNew(kB, ended);
    expectShelvedWorkAgain(ended);
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace quillmere::test

#endif
