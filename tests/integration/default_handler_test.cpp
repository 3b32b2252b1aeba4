#include "integration/default_handler.h"

#include <gtest/gtest.h>

#include "platform/stand_in.h"

namespace quillmere::test {
namespace {

class DefaultHandlerTest : public ::testing::Test {
 protected:
  void SetUp() override { platform::resetStandIn(); }

  static void userChose(const char16_t* identifier) {
    platform::standIn().registry[{
        u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\.pdf\\UserChoice",
        u"ProgId"}] = identifier;
  }
  static void effectiveIs(const char16_t* identifier) {
    platform::standIn().defaultHandlers[u".pdf"] = identifier;
  }
  static void packageBehind(const std::u16string& identifier, const char16_t* package) {
    platform::standIn()
        .registry[{u"Software\\Classes\\" + identifier + u"\\Application", u"AppUserModelID"}] =
        package;
  }
};

TEST_F(DefaultHandlerTest, NobodyHasChosen) {
  EXPECT_FALSE(IsDefaultPdfHandler());
}

TEST_F(DefaultHandlerTest, TheUsersChoiceDecidesWhateverItsCase) {
  userChose(u"QuillMere.PDF");
  effectiveIs(u"other.pdf");
  EXPECT_TRUE(IsDefaultPdfHandler());
}

TEST_F(DefaultHandlerTest, TheEffectiveDefaultDecidesToo) {
  userChose(u"other.pdf");
  effectiveIs(u"quillmere.pdf");
  EXPECT_TRUE(IsDefaultPdfHandler());
}

TEST_F(DefaultHandlerTest, AnotherProgramIsNotThisOne) {
  userChose(u"quillmere.pdfx");
  effectiveIs(u"other.pdf");
  EXPECT_FALSE(IsDefaultPdfHandler());
}

TEST_F(DefaultHandlerTest, APackagedProgramIsFoundByItsPackage) {
  platform::standIn().packageIdentity = u"Quillmere_abc!App";
  userChose(u"AppXmadeup");
  packageBehind(u"AppXmadeup", u"Quillmere_abc!App");
  EXPECT_TRUE(IsDefaultPdfHandler());
}

TEST_F(DefaultHandlerTest, AnotherPackageIsNotThisOne) {
  platform::standIn().packageIdentity = u"Quillmere_abc!App";
  effectiveIs(u"AppXmadeup");
  packageBehind(u"AppXmadeup", u"Other_abc!App");
  EXPECT_FALSE(IsDefaultPdfHandler());
}

TEST_F(DefaultHandlerTest, OutsideAPackageNoPackageMatches) {
  userChose(u"AppXmadeup");
  packageBehind(u"AppXmadeup", u"");
  EXPECT_FALSE(IsDefaultPdfHandler());
}

}  // namespace
}  // namespace quillmere::test
