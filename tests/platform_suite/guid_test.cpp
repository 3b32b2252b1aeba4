#include "platform/guid.h"

#include <set>

#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using GuidSuite = PlatformSuite;

TEST_F(GuidSuite, AGuidIsGroupsOfLowerCaseDigits) {
  const std::u16string guid = newGuid();
  ASSERT_EQ(guid.size(), 36u);
  for (std::size_t i = 0; i < guid.size(); ++i) {
    const bool hyphen = i == 8 || i == 13 || i == 18 || i == 23;
    const bool digit = (guid[i] >= u'0' && guid[i] <= u'9') || (guid[i] >= u'a' && guid[i] <= u'f');
    EXPECT_TRUE(hyphen ? guid[i] == u'-' : digit) << i;
  }
}

TEST_F(GuidSuite, NoTwoAreTheSame) {
  std::set<std::u16string> guids;
  for (int n = 0; n < 1000; ++n) guids.insert(newGuid());
  EXPECT_EQ(guids.size(), 1000u);
}

}  // namespace
}  // namespace quillmere::platform
