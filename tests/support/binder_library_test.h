#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/text_format.h"
#include "store/binder_library.h"
#include "support/settings_file.h"

namespace quillmere::test {

inline const std::string kBinderMark = "\xEF\xBB\xBF";
inline const std::string kPlainBinderHead = "# collapsed=0\r\n# bold=0\r\n";
inline constexpr const char16_t* kShare = u"\\\\nas\\lists";

// A test of binders whose files lie in one folder. It fails when a scripted answer is left over.
class BinderLibraryTest : public SessionTest {
 protected:
  BinderLibraryTest() { platform::putFolder(u"C:\\Lists"); }

  ~BinderLibraryTest() override {
    platform::setVolume(kShare, platform::VolumeState::Failing);
    platform::waitForDetachedThreads();
    EXPECT_THAT(platform::standIn().boxAnswers, testing::IsEmpty());
  }

  static std::u16string listPath(const std::u16string& name) {
    return u"C:\\Lists\\" + name + u".lst";
  }

  static int load(const std::u16string& name, std::string_view bytes = "") {
    platform::putFile(listPath(name), bytes);
    return LoadBinder(listPath(name));
  }

  static void loadMany(int count) {
    for (int i = 0; i < count; ++i) {
      EXPECT_GE(load(u"many" + decimal(i)), 0) << i;
    }
  }

  static std::vector<std::u16string> names() {
    std::vector<std::u16string> all;
    for (const BinderFile& binder : session.binderLibrary) all.push_back(binder.name);
    return all;
  }

  static std::string linesOnDisk(const std::u16string& name) {
    const std::string bytes = platform::fileBytes(listPath(name)).value_or("");
    const std::string head = kBinderMark + kPlainBinderHead;
    return bytes.starts_with(head) ? bytes.substr(head.size()) : "(other head) " + bytes;
  }

  static void expectBox(const char16_t* title, const std::u16string& text, platform::BoxIcon icon) {
    ASSERT_FALSE(platform::standIn().boxes.empty());
    EXPECT_EQ(platform::standIn().boxes.back().title, title);
    EXPECT_EQ(platform::standIn().boxes.back().text, text);
    EXPECT_EQ(platform::standIn().boxes.back().icon, icon);
  }
};

}  // namespace quillmere::test
