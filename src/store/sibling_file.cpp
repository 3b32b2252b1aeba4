#include "store/sibling_file.h"

#include <optional>

#include "base/text_format.h"
#include "platform/files.h"
#include "platform/process.h"
#include "platform/text.h"

namespace quillmere {

namespace {

// Processes that ended while writing leave names behind; if there are more of them, something else
// is wrong.
constexpr int kMostNamesTried = 100;

constexpr const char16_t* kSuffix = u".tmp";

// Milliseconds between tries to replace a file, about a second together.
constexpr std::uint32_t kPauses[] = {10, 20, 40, 80, 150, 300, 400};

bool canBeReplaced(const std::u16string& path) {
  const platform::AttributeQuery query = platform::queryAttributes(path);
  constexpr std::uint32_t kForbidding = platform::kAttributeReadOnly | platform::kAttributeFolder;
  return query.attributes == platform::kInvalidAttributes || (query.attributes & kForbidding) == 0;
}

}  // namespace

SiblingFile startSibling(const std::u16string& path) {
  const std::u16string folder = path.substr(0, path.find_last_of(u"\\/") + 1);
  SiblingFile sibling;
  for (int n = 1; n <= kMostNamesTried && !sibling.file; ++n) {
    sibling.path = formatText(u"%s~quillmere%d.tmp", {folder, decimal(n)});
    sibling.file.reset(platform::startNewFile(sibling.path));
    if (!sibling.file && !platform::fileStamp(sibling.path)) break;
  }
  return sibling;
}

SiblingFile startNamedSibling(const std::u16string& path) {
  SiblingFile sibling;
  sibling.path = path + kSuffix;
  sibling.file.reset(platform::startNewFile(sibling.path));
  return sibling.file ? std::move(sibling) : startSibling(path);
}

bool isNamedSibling(const std::u16string& sibling, const std::u16string& path) {
  return platform::equalIgnoringCase(sibling, path + kSuffix);
}

bool finishSibling(SiblingFile& sibling) {
  const bool flushed = platform::flushFile(*sibling.file);
  return platform::closeFile(sibling.file.release()) && flushed;
}

bool takePlace(const std::u16string& sibling, const std::u16string& path) {
  const std::optional<platform::FileStamp> before = platform::fileStamp(path);
  for (const std::uint32_t pause : kPauses) {
    if (platform::replaceFile(sibling, path)) return true;
    if (!canBeReplaced(path) || !platform::fileStamp(sibling)) return false;
    platform::sleepMilliseconds(pause);
    if (platform::fileStamp(path) != before) return false;
  }
  return platform::replaceFile(sibling, path);
}

}  // namespace quillmere
