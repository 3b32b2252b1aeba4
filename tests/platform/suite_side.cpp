#include "platform_suite/suite_side.h"

#include "stand_in.h"

namespace quillmere::platform {

std::u16string makeScratchFolder() {
  resetStandIn();
  putFolder(u"C:\\Scratch");
  return u"C:\\Scratch\\";
}

void removeScratchFolder(const std::u16string&) {
  resetStandIn();
}

void workIn(const std::u16string& folder) {
  standIn().workingFolder = folder.substr(0, folder.find_last_not_of(u'\\') + 1);
}

void putBytes(const std::u16string& path, const std::string& bytes) {
  putFile(path, bytes);
}

std::string bytesOf(const std::u16string& path) {
  return fileBytes(path).value_or("");
}

FileLock::FileLock(const std::u16string& path, LockKind kind) : path_(path) {
  setOtherUse(path, kind == LockKind::Exclusive ? OtherUse::Exclusive : OtherUse::SharedWriter);
}

FileLock::~FileLock() {
  setOtherUse(path_, OtherUse::Nobody);
}

}  // namespace quillmere::platform
