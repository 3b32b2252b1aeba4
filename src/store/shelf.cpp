#include "store/shelf.h"

#include "platform/files.h"
#include "platform/text.h"
#include "session/session.h"

namespace quillmere {

// Nothing is shelved yet, so there is no index to read.
void LoadShelfIndex() {}

std::u16string ShelfFilePath(const std::u16string& shelfName) {
  if (session.shelveFolder.empty() || shelfName.empty()) return {};
  return session.shelveFolder + shelfName + u".pdf";
}

const ShelfEntry* shelfEntryOf(const std::u16string& path) {
  const auto found = session.shelfIndex.find(platform::toLower(path));
  return found == session.shelfIndex.end() ? nullptr : &found->second;
}

bool IsShelved(const std::u16string& path) {
  const ShelfEntry* entry = shelfEntryOf(path);
  return entry != nullptr && entry->dirty;
}

std::u16string liveShelfCopy(const std::u16string& path) {
  if (!IsShelved(path)) return {};
  const std::u16string copy = ShelfFilePath(shelfEntryOf(path)->shelfName);
  return !copy.empty() && platform::fileExists(copy) ? copy : std::u16string();
}

void DropShelfEntry(const std::u16string& path) {
  const auto found = session.shelfIndex.find(platform::toLower(path));
  if (found == session.shelfIndex.end()) return;
  const std::u16string copy = ShelfFilePath(found->second.shelfName);
  session.shelfIndex.erase(found);
  if (!copy.empty()) platform::deleteFile(copy);
}

}  // namespace quillmere
