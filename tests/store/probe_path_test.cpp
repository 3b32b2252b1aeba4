#include "store/probe_path.h"

#include <gtest/gtest.h>

#include <chrono>
#include <vector>

#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::setVolume;
using platform::standIn;
using platform::VolumeState;

constexpr const char16_t* kShare = u"\\\\server\\share";
constexpr const char16_t* kNetworkFile = u"\\\\server\\share\\a.pdf";

class ProbePathTest : public SessionTest {
 protected:
  ~ProbePathTest() override {
    setVolume(kShare, VolumeState::Failing);
    platform::waitForDetachedThreads();
  }
};

TEST_F(ProbePathTest, ALocalFileIsThereOrMissing) {
  const std::u16string path = putPdf(u"a.pdf", "x");
  EXPECT_EQ(probePath(path, 1000), ProbeResult::Available);
  EXPECT_EQ(probePath(u"C:\\b.pdf", 1000), ProbeResult::Missing);
  EXPECT_EQ(probePath(u"C:\\no folder\\b.pdf", 1000), ProbeResult::Missing);
}

TEST_F(ProbePathTest, ALetterThatIsMappedLaterCountsOnceDrivesAreForgotten) {
  setVolume(u"Z:", VolumeState::Present);
  EXPECT_FALSE(onNetwork(u"Z:\\a.pdf"));
  standIn().mappedDrives = u"zy";
  EXPECT_FALSE(onNetwork(u"z:\\b.pdf"));
  EXPECT_TRUE(onNetwork(u"Y:\\a.pdf")) << "another letter";
  forgetDrives();
  EXPECT_TRUE(onNetwork(u"z:\\b.pdf"));
}

TEST_F(ProbePathTest, ALetterWithoutADriveMayStandForAShareLater) {
  setVolume(u"Z:", VolumeState::Failing, 3);
  EXPECT_FALSE(onNetwork(u"Z:\\a.pdf"));
  standIn().mappedDrives = u"z";
  EXPECT_TRUE(onNetwork(u"Z:\\a.pdf"));
}

TEST_F(ProbePathTest, ADriveThatIsNoLongerMappedIsLocalAtOnce) {
  standIn().mappedDrives = u"z";
  EXPECT_TRUE(onNetwork(u"Z:\\a.pdf"));
  standIn().mappedDrives.clear();
  EXPECT_FALSE(onNetwork(u"Z:\\a.pdf"));
}

TEST_F(ProbePathTest, AFolderIsThereToo) {
  platform::putFolder(u"C:\\folder");
  EXPECT_EQ(probePath(u"C:\\folder", 1000), ProbeResult::Available);
}

TEST_F(ProbePathTest, ALocalPathIsNeverUnavailable) {
  setVolume(u"Z:", VolumeState::Failing, 21);
  EXPECT_EQ(probePath(u"Z:\\a.pdf", 1000), ProbeResult::Missing);
  EXPECT_EQ(probePath(u"", 1000), ProbeResult::Missing);
}

TEST_F(ProbePathTest, LocalPathsNeedNeitherEventNorThread) {
  standIn().failEvents = true;
  standIn().failThreads = true;
  const std::u16string path = putPdf(u"a.pdf", "x");
  EXPECT_EQ(probePath(path, 0), ProbeResult::Available);
  setVolume(u"Z:", VolumeState::Failing, 53);
  EXPECT_EQ(probePath(u"Z:\\a.pdf", 0), ProbeResult::Missing);
}

TEST_F(ProbePathTest, ANetworkFileIsThereOrMissing) {
  setVolume(kShare, VolumeState::Present);
  putPdf(kNetworkFile, "x");
  EXPECT_EQ(probePath(kNetworkFile, 10000), ProbeResult::Available);
  EXPECT_EQ(probePath(u"\\\\server\\share\\b.pdf", 10000), ProbeResult::Missing);
  EXPECT_EQ(probePath(u"\\\\server\\share\\no folder\\b.pdf", 10000), ProbeResult::Missing);
}

TEST_F(ProbePathTest, ErrorsTellAMissingNetworkFileFromAnUnreachableOne) {
  const std::pair<std::uint32_t, ProbeResult> cases[] = {
      {2, ProbeResult::Missing},      {3, ProbeResult::Missing},
      {5, ProbeResult::Unavailable},  {53, ProbeResult::Unavailable},
      {67, ProbeResult::Unavailable}, {1231, ProbeResult::Unavailable},
  };
  for (const auto& [error, expected] : cases) {
    setVolume(kShare, VolumeState::Failing, error);
    EXPECT_EQ(probePath(kNetworkFile, 10000), expected) << "error " << error;
  }
}

TEST_F(ProbePathTest, ASilentServerCountsAsUnavailableOnceTheTimeIsUp) {
  setVolume(kShare, VolumeState::Silent);
  EXPECT_EQ(probePath(kNetworkFile, 30), ProbeResult::Unavailable);
}

TEST_F(ProbePathTest, AnAnswerAfterTheTimeHarmsNobody) {
  setVolume(kShare, VolumeState::Silent);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(probePath(kNetworkFile, 1), ProbeResult::Unavailable);
  setVolume(kShare, VolumeState::Present);
  EXPECT_TRUE(platform::waitForDetachedThreads());
}

TEST_F(ProbePathTest, ManyProbesShareNothing) {
  setVolume(kShare, VolumeState::Present);
  putPdf(kNetworkFile, "x");
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(probePath(kNetworkFile, 10000), ProbeResult::Available);
  }
}

TEST_F(ProbePathTest, SeveralProbesShareOneTimeout) {
  setVolume(kShare, VolumeState::Silent);
  const std::u16string local = putPdf(u"a.pdf", "x");
  std::vector<std::u16string> paths(20, kNetworkFile);
  paths.push_back(local);
  paths.push_back(u"C:\\b.pdf");
  const auto start = std::chrono::steady_clock::now();
  const std::vector<ProbeResult> results = probePaths(paths, 200);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2000));
  ASSERT_EQ(results.size(), 22u);
  EXPECT_EQ(results[0], ProbeResult::Unavailable);
  EXPECT_EQ(results[19], ProbeResult::Unavailable);
  EXPECT_EQ(results[20], ProbeResult::Available);
  EXPECT_EQ(results[21], ProbeResult::Missing);
}

TEST_F(ProbePathTest, ADriveThatIsMappedToAShareIsProbedAsOne) {
  standIn().mappedDrives = u"z";
  setVolume(u"Z:", VolumeState::Failing, 53);
  EXPECT_EQ(probePath(u"z:\\a.pdf", 10000), ProbeResult::Unavailable);
  EXPECT_TRUE(onGoneShare(u"Z:\\a.pdf"));
  EXPECT_FALSE(onGoneShare(u"C:\\a.pdf"));
}

TEST_F(ProbePathTest, AShareIsProbedWhicheverSlashesNameIt) {
  setVolume(kShare, VolumeState::Silent);
  EXPECT_EQ(probePath(u"//server/share/a.pdf", 300), ProbeResult::Unavailable);
  EXPECT_TRUE(onGoneShare(kNetworkFile));
  EXPECT_EQ(session.deafShares.size(), 1u);
  setVolume(kShare, VolumeState::Present);
  EXPECT_EQ(probePath(u"\\/Server/Share\\b.pdf", 10000), ProbeResult::Missing);
  EXPECT_TRUE(session.deafShares.empty());
}

TEST_F(ProbePathTest, AShareThatAnswersAgainIsNoLongerGone) {
  session.settings.openTimeoutSeconds = 1;
  setVolume(kShare, VolumeState::Silent);
  EXPECT_TRUE(onGoneShare(kNetworkFile));
  setVolume(kShare, VolumeState::Present);
  EXPECT_TRUE(onGoneShare(u"\\\\SERVER\\Share\\b.pdf"));  // it had no time to wake up
  EXPECT_EQ(probeWithinOpenTimeout(u"\\\\server\\share\\b.pdf"), ProbeResult::Missing);
  EXPECT_FALSE(onGoneShare(kNetworkFile));
}

TEST_F(ProbePathTest, AFileThatIsDeniedAtOnceSaysNothingAboutItsShare) {
  setVolume(kShare, VolumeState::Present);
  putPdf(kNetworkFile, "x");
  platform::setAttributeError(u"\\\\server\\share\\denied.pdf", 5);
  EXPECT_TRUE(onGoneShare(u"\\\\server\\share\\denied.pdf"));
  EXPECT_FALSE(onGoneShare(kNetworkFile));
}

class ProbeWithoutThreadTest : public ProbePathTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    standIn().failEvents = GetParam();
    standIn().failThreads = !GetParam();
  }
};

TEST_P(ProbeWithoutThreadTest, TheCallerAsksByItself) {
  setVolume(kShare, VolumeState::Present);
  putPdf(kNetworkFile, "x");
  EXPECT_EQ(probePath(kNetworkFile, 0), ProbeResult::Available);
  EXPECT_EQ(probePath(u"\\\\server\\share\\b.pdf", 0), ProbeResult::Missing);
  setVolume(kShare, VolumeState::Failing, 3);
  EXPECT_EQ(probePath(kNetworkFile, 0), ProbeResult::Missing);
  setVolume(kShare, VolumeState::Failing, 64);
  EXPECT_EQ(probePath(kNetworkFile, 0), ProbeResult::Unavailable);
}

INSTANTIATE_TEST_SUITE_P(EventOrThread, ProbeWithoutThreadTest, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& tested) {
                           return tested.param ? "NoEvent" : "NoThread";
                         });

}  // namespace
}  // namespace quillmere::test
