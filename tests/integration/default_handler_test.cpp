#include "integration/default_handler.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

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

class RegisterHandlerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::resetStandIn();
    platform::standIn().executable = u"D:\\My Programs\\100%s\\quillmere.exe";
  }

  static std::u16string defaultValue(const char16_t* key) {
    return platform::readUserRegistryText(key, u"").value_or(u"(absent)");
  }
};

TEST_F(RegisterHandlerTest, TheTypeItsIconItsCommandAndItsPlaceInTheListAreWritten) {
  ASSERT_TRUE(RegisterPdfHandler());
  EXPECT_EQ(defaultValue(u"Software\\Classes\\quillmere.pdf"), u"Quillmere PDF Document");
  EXPECT_EQ(defaultValue(u"Software\\Classes\\quillmere.pdf\\DefaultIcon"),
            u"\"D:\\My Programs\\100%s\\quillmere.exe\",0");
  EXPECT_EQ(defaultValue(u"Software\\Classes\\quillmere.pdf\\shell\\open\\command"),
            u"\"D:\\My Programs\\100%s\\quillmere.exe\" \"%1\"");
  using Names = std::set<std::pair<std::u16string, std::u16string>>;
  EXPECT_EQ(platform::standIn().registryNames,
            (Names{{u"Software\\Classes\\.pdf\\OpenWithProgids", u"quillmere.pdf"}}));
  EXPECT_EQ(platform::standIn().associationAnnouncements, 1);
}

TEST_F(RegisterHandlerTest, WithoutTypeOrCommandTheRegistrationFailsAndIsNotAnnounced) {
  for (const char16_t* key : {u"Software\\Classes\\quillmere.pdf",
                              u"Software\\Classes\\quillmere.pdf\\shell\\open\\command"}) {
    platform::standIn().lockedRegistryKeys = {key};
    EXPECT_FALSE(RegisterPdfHandler());
  }
  platform::standIn().lockedRegistryKeys.clear();
  platform::standIn().executable.clear();
  EXPECT_FALSE(RegisterPdfHandler());
  EXPECT_EQ(platform::standIn().associationAnnouncements, 0);
}

TEST_F(RegisterHandlerTest, IconAndListAreNotNeeded) {
  platform::standIn().lockedRegistryKeys = {u"Software\\Classes\\quillmere.pdf\\DefaultIcon",
                                            u"Software\\Classes\\.pdf\\OpenWithProgids"};
  EXPECT_TRUE(RegisterPdfHandler());
  EXPECT_EQ(platform::standIn().associationAnnouncements, 1);
}

TEST_F(RegisterHandlerTest, BeingRegisteredDoesNotMakeItTheDefault) {
  ASSERT_TRUE(RegisterPdfHandler());
  EXPECT_FALSE(IsDefaultPdfHandler());
}

}  // namespace
}  // namespace quillmere::test
