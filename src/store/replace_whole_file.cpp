#include "store/replace_whole_file.h"

#include "base/text_format.h"
#include "platform/files.h"

namespace quillmere {

namespace {

// Processes that ended while writing leave names behind; if there are more of them, something else
// is wrong.
constexpr int kMostNamesTried = 100;

// A new file beside `path`, so that it can take its place in one step.
struct Sibling {
  platform::FileInWritingHandle file;  // null when none could be created
  std::u16string path;
};

Sibling startSibling(const std::u16string& path) {
  const std::u16string folder = path.substr(0, path.find_last_of(u"\\/") + 1);
  Sibling sibling;
  for (int n = 1; n <= kMostNamesTried && !sibling.file; ++n) {
    sibling.path = formatText(u"%s~quillmere%d.tmp", {folder, decimal(n)});
    sibling.file.reset(platform::startNewFile(sibling.path));
    if (!sibling.file && !platform::fileExists(sibling.path)) break;
  }
  return sibling;
}

}  // namespace

Replacement replaceWholeFile(const std::u16string& path,
                             const std::function<bool(platform::FileInWriting&)>& write) {
  Sibling sibling = startSibling(path);
  if (!sibling.file) return Replacement::NoSibling;
  const bool written = write(*sibling.file) && platform::flushFile(*sibling.file);
  const bool closed = platform::closeFile(sibling.file.release());
  if (written && closed && platform::replaceFile(sibling.path, path)) return Replacement::Done;
  platform::deleteFile(sibling.path);
  return Replacement::Failed;
}

}  // namespace quillmere
