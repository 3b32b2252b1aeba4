#include "platform/instances.h"

#include <cstdlib>

#include "platform/text.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using InstancesSuite = PlatformSuite;

TEST_F(InstancesSuite, TheFirstClaimOwnsTheNameAndLaterOnesFindIt) {
  const std::u16string name = u"Local\\Quillmere.suite." + fromUtf8(std::to_string(std::rand()));
  EXPECT_EQ(claimPrimaryMutex(name), MutexClaim::Owned);
  EXPECT_EQ(claimPrimaryMutex(name), MutexClaim::AlreadyExists);
  closePrimaryMutex();
  EXPECT_EQ(claimPrimaryMutex(name), MutexClaim::AlreadyExists);
  closePrimaryMutex();
  EXPECT_EQ(claimPrimaryMutex(name + u".other"), MutexClaim::Owned);
}

TEST_F(InstancesSuite, AClassThatNobodyHasIsNotFound) {
  EXPECT_EQ(findTopWindow(u"QuillmereNoSuchClass"), 0u);
  EXPECT_EQ(countTopWindows(u"QuillmereNoSuchClass"), 0);
  closeTopWindows(u"QuillmereNoSuchClass");
}

TEST_F(InstancesSuite, WorkAreasHaveASize) {
  const ScreenRect primary = primaryWorkArea();
  EXPECT_LT(primary.left, primary.right);
  EXPECT_LT(primary.top, primary.bottom);
  const std::optional<ScreenRect> nearest = workAreaNearest({-9000, -9000, -8000, -8000});
  ASSERT_TRUE(nearest);
  EXPECT_LT(nearest->left, nearest->right);
  EXPECT_GT(captionHeight(), 0);
}

}  // namespace
}  // namespace quillmere::platform
