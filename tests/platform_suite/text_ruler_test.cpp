#include "platform/text_ruler.h"

#include <string>

#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using TextRulerSuite = PlatformSuite;

double width(const std::u16string& text, int size = 40, bool bold = false) {
  const TextRulerHandle ruler(createTextRuler(size, bold));
  return measureText(*ruler, text);
}

TEST_F(TextRulerSuite, WidthsAreThoseOfHelvetica) {
  // Advances in thousandths: H 722, e 556, l 222, o 556.
  EXPECT_NEAR(width(u"Hello"), 40 * 2.278, 3);
  EXPECT_NEAR(width(u"0123456789"), 40 * 5.56, 4);
}

TEST_F(TextRulerSuite, NothingHasNoWidth) {
  EXPECT_EQ(width(u""), 0);
}

TEST_F(TextRulerSuite, BlanksAtTheEndDoNotCount) {
  EXPECT_NEAR(width(u"word   "), width(u"word"), 0.5);
  EXPECT_GT(width(u"two words"), width(u"twowords"));
}

TEST_F(TextRulerSuite, BoldAndLargerTextIsWider) {
  EXPECT_GT(width(u"some text", 40, true), width(u"some text"));
  EXPECT_NEAR(width(u"some text", 80), 2 * width(u"some text"), 4);
  EXPECT_GT(width(u"some text", 0), 0);
}

TEST_F(TextRulerSuite, ALongerTextIsNeverNarrower) {
  const TextRulerHandle ruler(createTextRuler(40, false));
  const std::u16string text = u"Some words, \u00FC\u03B1\u4E2D \U0001F600 and a fi\uFB01.";
  double before = 0;
  for (std::size_t length = 1; length <= text.size(); ++length) {
    const double now = measureText(*ruler, std::u16string_view(text).substr(0, length));
    EXPECT_GE(now, before) << length;
    before = now;
  }
}

}  // namespace
}  // namespace quillmere::platform
