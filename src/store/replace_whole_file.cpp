#include "store/replace_whole_file.h"

#include "platform/files.h"
#include "store/sibling_file.h"

namespace quillmere {

Replacement replaceWholeFile(const std::u16string& path,
                             const std::function<bool(platform::FileInWriting&)>& write) {
  SiblingFile sibling = startSibling(path);
  if (!sibling.file) return Replacement::NoSibling;
  const bool written = write(*sibling.file);
  const bool finished = finishSibling(sibling);
  if (written && finished && takePlace(sibling.path, path)) return Replacement::Done;
  platform::deleteFile(sibling.path);
  return Replacement::Failed;
}

}  // namespace quillmere
