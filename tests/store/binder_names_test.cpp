#include "store/binder_names.h"

#include <gtest/gtest.h>

#include <string>

namespace quillmere::test {
namespace {

std::u16string complaint(std::u16string_view name) {
  const char16_t* text = binderNameComplaint(name);
  return text == nullptr ? std::u16string() : std::u16string(text);
}

TEST(BinderNames, BlanksAndTabsAroundANameGo) {
  EXPECT_EQ(trimmedBinderName(u" \t My  list\t "), u"My  list");
  EXPECT_EQ(trimmedBinderName(u" \t "), u"");
  EXPECT_EQ(trimmedBinderName(u""), u"");
  EXPECT_EQ(trimmedBinderName(u"\nx"), u"\nx");
}

TEST(BinderNames, OrdinaryNamesPass) {
  for (const char16_t* name : {u"Tax 2024", u"a", u".hidden", u"\u6587\u66F8", u"a.b", u"x'y&z"}) {
    EXPECT_EQ(complaint(name), u"");
  }
}

TEST(BinderNames, AnEmptyNameIsRefused) {
  EXPECT_EQ(complaint(u""), u"The name cannot be empty.");
}

TEST(BinderNames, EveryControlCharacterIsRefused) {
  for (char16_t unit = 0; unit < 32; ++unit) {
    EXPECT_EQ(complaint(std::u16string(u"a") + unit + u"b"),
              u"The name contains an invalid control character.")
        << static_cast<int>(unit);
  }
}

TEST(BinderNames, EveryForbiddenCharacterIsRefused) {
  for (const char16_t unit : std::u16string_view(u"<>:\"/\\|?*")) {
    EXPECT_EQ(complaint(std::u16string(u"a") + unit),
              u"The name cannot contain any of these characters:\n    <  >  :  \"  /  \\  |  ?  *")
        << static_cast<int>(unit);
  }
}

TEST(BinderNames, APeriodAtTheEndIsRefused) {
  EXPECT_EQ(complaint(u"list."), u"The name cannot end with a space or period.");
  EXPECT_EQ(complaint(u"."), u"The name cannot end with a space or period.");
}

TEST(BinderNames, DevicesAreRefusedInAnyLetterCase) {
  const std::u16string refused = u"The name is a reserved Windows device name.";
  for (const char16_t* name : {u"CON", u"prn", u"Aux", u"nul"}) {
    EXPECT_EQ(complaint(name), refused);
  }
  for (char16_t digit = u'1'; digit <= u'9'; ++digit) {
    EXPECT_EQ(complaint(std::u16string(u"com") + digit), refused);
    EXPECT_EQ(complaint(std::u16string(u"Lpt") + digit), refused);
  }
}

TEST(BinderNames, NamesThatOnlyLookLikeDevicesPass) {
  for (const char16_t* name : {u"COM0", u"LPT0", u"COM10", u"CON.x", u"CONSOLE", u"COM"}) {
    EXPECT_EQ(complaint(name), u"");
  }
}

TEST(BinderNames, TheFirstThingThatIsWrongIsTold) {
  EXPECT_EQ(complaint(u"a\x01?."), u"The name contains an invalid control character.");
  EXPECT_EQ(complaint(u"a?.").substr(0, 15), u"The name cannot");
  EXPECT_NE(complaint(u"a?.").find(u'?'), std::u16string::npos);
}

}  // namespace
}  // namespace quillmere::test
