#include "documents/settle_shelf.h"

#include "platform/files.h"
#include "store/shelf.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr const char16_t* kConflictText =
    u"This file has unsaved changes from a previous session, but the file on disk has been "
    u"modified since then.\n\n"
    u"  Yes      Keep your unsaved changes (discards the on-disk update)\n"
    u"  No       Use the on-disk version (discards your unsaved changes)\n"
    u"  Cancel  Don't open anything";

// A stored 0 means that the value was not known; a document that cannot be queried counts as
// unchanged.
bool changedOnDisk(const ShelfEntry& entry, const std::u16string& path) {
  const auto stamp = platform::fileStamp(path);
  if (!stamp) return false;
  return (entry.sourceSize != 0 && entry.sourceSize != stamp->size) ||
         (entry.sourceTime != 0 && entry.sourceTime != stamp->writeTime);
}

}  // namespace

ShelfDecision settleShelfCopy(const std::u16string& path) {
  ShelfDecision decision;
  decision.loadPath = path;
  const ShelfEntry* entry = shelfEntryOf(path);
  if (entry == nullptr || !entry->dirty || entry->shelfName.empty()) return decision;

  const std::u16string copy = liveShelfCopy(path);
  if (copy.empty()) {
    DropShelfEntry(path);
    return decision;
  }
  if (changedOnDisk(*entry, path)) {
    const BoxAnswer answer =
        showBox(kConflictText, u"Conflicting Versions", BoxButtons::YesNoCancel, BoxIcon::Warning);
    if (answer == BoxAnswer::No) {
      DropShelfEntry(path);
      return decision;
    }
    if (answer != BoxAnswer::Yes) {
      decision.opens = false;
      return decision;
    }
  }
  decision.loadPath = copy;
  return decision;
}

}  // namespace quillmere
