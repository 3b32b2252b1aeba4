#include "store/sibling_file.h"

#include <gmock/gmock.h>

#include <numeric>
#include <string>

#include "platform/files.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::fileBytes;
using platform::FileCall;
using platform::OtherUse;
using platform::standIn;
using testing::IsEmpty;
using testing::SizeIs;

class TakePlaceTest : public SessionTest {
 protected:
  TakePlaceTest() {
    platform::putFile(kFile, "old");
    platform::putFile(kSibling, "new");
  }
  static void expectBothUnchanged() {
    EXPECT_EQ(*fileBytes(kFile), "old");
    EXPECT_EQ(*fileBytes(kSibling), "new");
  }
  static constexpr const char16_t* kFile = u"C:\\docs\\a.pdf";
  static constexpr const char16_t* kSibling = u"C:\\docs\\a.pdf.tmp";
};

TEST_F(TakePlaceTest, AFileThatIsFreeIsReplacedAtOnce) {
  EXPECT_TRUE(takePlace(kSibling, kFile));
  EXPECT_EQ(*fileBytes(kFile), "new");
  EXPECT_EQ(fileBytes(kSibling), std::nullopt);
  EXPECT_THAT(standIn().sleeps, IsEmpty());
}

TEST_F(TakePlaceTest, WaitsForAProgramThatHoldsTheFileForAMoment) {
  platform::setOtherUse(kFile, OtherUse::Exclusive);
  standIn().onSleep = [] {
    if (standIn().sleeps.size() == 3) platform::setOtherUse(kFile, OtherUse::Nobody);
  };
  EXPECT_TRUE(takePlace(kSibling, kFile));
  EXPECT_EQ(*fileBytes(kFile), "new");
  EXPECT_THAT(standIn().sleeps, SizeIs(3));
}

TEST_F(TakePlaceTest, WaitsForAProgramThatHoldsTheSibling) {
  platform::setOtherUse(kSibling, OtherUse::Exclusive);
  standIn().onSleep = [] { platform::setOtherUse(kSibling, OtherUse::Nobody); };
  EXPECT_TRUE(takePlace(kSibling, kFile));
  EXPECT_EQ(*fileBytes(kFile), "new");
}

TEST_F(TakePlaceTest, GivesUpAfterAboutASecond) {
  platform::setOtherUse(kFile, OtherUse::Exclusive);
  EXPECT_FALSE(takePlace(kSibling, kFile));
  const auto& sleeps = standIn().sleeps;
  const auto waited = std::accumulate(sleeps.begin(), sleeps.end(), 0u);
  EXPECT_GE(waited, 500u);
  EXPECT_LE(waited, 1000u);
  platform::setOtherUse(kFile, OtherUse::Nobody);
  expectBothUnchanged();
}

TEST_F(TakePlaceTest, DoesNotWaitForAReadOnlyFileOrAFolder) {
  platform::setReadOnly(kFile, true);
  EXPECT_FALSE(takePlace(kSibling, kFile));
  platform::setReadOnly(kFile, false);
  expectBothUnchanged();
  platform::putFolder(u"C:\\docs\\folder");
  EXPECT_FALSE(takePlace(kSibling, u"C:\\docs\\folder"));
  EXPECT_FALSE(takePlace(u"C:\\docs\\none.tmp", kFile));
  expectBothUnchanged();
  EXPECT_THAT(standIn().sleeps, IsEmpty());
}

TEST_F(TakePlaceTest, WhatAnotherProgramWritesMeanwhileIsNotReplaced) {
  platform::setOtherUse(kFile, OtherUse::Exclusive);
  standIn().onSleep = [] {
    platform::putFile(kFile, "theirs");
    platform::setOtherUse(kFile, OtherUse::Nobody);
  };
  EXPECT_FALSE(takePlace(kSibling, kFile));
  EXPECT_EQ(*fileBytes(kFile), "theirs");
  EXPECT_EQ(*fileBytes(kSibling), "new");
}

TEST_F(TakePlaceTest, AFileThatDoesNotExistIsMade) {
  EXPECT_TRUE(takePlace(kSibling, u"C:\\docs\\b.pdf"));
  EXPECT_EQ(*fileBytes(u"C:\\docs\\b.pdf"), "new");
}

}  // namespace
}  // namespace quillmere::test
