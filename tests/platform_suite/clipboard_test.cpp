#include "platform/clipboard.h"

#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using ClipboardSuite = PlatformSuite;

TEST_F(ClipboardSuite, TextComesBackAsItWasSet) {
  const std::u16string texts[] = {u"one", u"two\r\nlines\twith blanks ", u"Grüße 報告 \U0001F4C4",
                                  std::u16string(100'000, u'x')};
  for (const std::u16string& text : texts) {
    ASSERT_TRUE(setClipboardText(text));
    EXPECT_EQ(clipboardText(), text);
  }
}

TEST_F(ClipboardSuite, ALaterTextReplacesTheEarlier) {
  ASSERT_TRUE(setClipboardText(u"a long earlier text"));
  ASSERT_TRUE(setClipboardText(u"x"));
  EXPECT_EQ(clipboardText(), u"x");
}

TEST_F(ClipboardSuite, EmptyTextIsText) {
  ASSERT_TRUE(setClipboardText(u"before"));
  ASSERT_TRUE(setClipboardText(u""));
  EXPECT_EQ(clipboardText(), u"");
}

}  // namespace
}  // namespace quillmere::platform
