#include "platform/font_files.h"

#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using FontFilesSuite = PlatformSuite;

TEST_F(FontFilesSuite, TheFaceOfATextHasAFile) {
  for (const std::u16string text : {u"plain", u"\u03B1\u0142\uFB01"}) {
    const std::u16string face = faceFor(text);
    EXPECT_FALSE(face.empty());
    for (const bool bold : {false, true}) {
      const std::vector<std::uint8_t> file = fontFile(face, bold);
      ASSERT_GT(file.size(), 10000u);
      EXPECT_EQ(file[0], 0);
      EXPECT_EQ(file[1], 1);
    }
  }
  EXPECT_NE(fontFile(faceFor(u"a"), false), fontFile(faceFor(u"a"), true));
}

}  // namespace
}  // namespace quillmere::platform
