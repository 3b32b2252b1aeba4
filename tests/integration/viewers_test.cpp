#include "integration/viewers.h"

#include <gtest/gtest.h>

#include "app/startup.h"
#include "platform/stand_in.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

class ViewersTest : public SessionTest {};

// The arguments that the started process receives: everything after the quoted program.
std::u16string argumentsOf(const platform::StartedProcess& process) {
  const std::u16string quoted = u"\"" + process.program + u"\" ";
  EXPECT_EQ(process.commandLine.substr(0, quoted.size()), quoted);
  return process.commandLine.substr(quoted.size());
}

TEST_F(ViewersTest, AViewerReceivesItsPathWhole) {
  for (const std::u16string path :
       {u"C:\\My Texts\\a b.pdf", u"C:\\文書\\--viewer x.pdf", u"\\\\server\\share\\🖋.pdf"}) {
    platform::standIn().processes.clear();
    ASSERT_TRUE(startViewer(path));
    ASSERT_EQ(platform::standIn().processes.size(), 1u);
    const LaunchArguments arguments =
        parseCommandLine(argumentsOf(platform::standIn().processes[0]));
    EXPECT_TRUE(arguments.viewerRole);
    EXPECT_EQ(arguments.filePath, path);
  }
}

TEST_F(ViewersTest, TheCommandLineIsProgramRoleAndPath) {
  ASSERT_TRUE(startViewer(u"C:\\a.pdf"));
  const platform::StartedProcess& process = platform::standIn().processes.at(0);
  EXPECT_EQ(process.program, u"C:\\Program Files\\Quillmere\\quillmere.exe");
  EXPECT_EQ(process.commandLine,
            u"\"C:\\Program Files\\Quillmere\\quillmere.exe\" --viewer \"C:\\a.pdf\"");
}

TEST_F(ViewersTest, WithoutAPathOrAProgramNothingStarts) {
  EXPECT_FALSE(startViewer(u""));
  platform::standIn().executable.clear();
  EXPECT_FALSE(startViewer(u"C:\\a.pdf"));
  EXPECT_TRUE(platform::standIn().processes.empty());
}

TEST_F(ViewersTest, AProcessThatDoesNotStartIsTold) {
  platform::standIn().startProcessResult = false;
  EXPECT_FALSE(startViewer(u"C:\\a.pdf"));
}

TEST_F(ViewersTest, OnlyWindowsOfTheExactClassCount) {
  platform::standIn().otherWindows = {
      {1, u"QuillmereViewerWnd", {}, false, true}, {2, u"QuillmereWnd", {}, false, true},
      {3, u"quillmereviewerwnd", {}, false, true}, {4, u"QuillmereViewerWnd2", {}, false, true},
      {5, u"QuillmereViewerWnd", {}, true, true},
  };
  EXPECT_EQ(countViewers(), 2);
  closeViewers();
  EXPECT_EQ(platform::standIn().windowsAskedToClose, (std::vector<platform::WindowId>{1, 5}));
}

TEST_F(ViewersTest, WithoutViewersNothingIsAskedToClose) {
  EXPECT_EQ(countViewers(), 0);
  closeViewers();
  EXPECT_TRUE(platform::standIn().windowsAskedToClose.empty());
}

}  // namespace
}  // namespace quillmere::test
