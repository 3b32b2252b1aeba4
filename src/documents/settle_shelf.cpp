#include "documents/settle_shelf.h"

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

std::optional<platform::FileStamp> knownStamp(const ShelfEntry& entry) {
  if (entry.sourceSize == 0 || entry.sourceTime == 0) return std::nullopt;
  return platform::FileStamp{entry.sourceSize, entry.sourceTime};
}

}  // namespace

ShelfDecision settleShelfCopy(const std::u16string& path) {
  ShelfDecision decision;
  decision.loadPath = path;
  shelfIndexKnown();
  const ShelfEntry* entry = shelfEntryOf(path);
  if (entry == nullptr || !entry->dirty || entry->shelfName.empty()) return decision;

  const std::u16string copy = liveShelfCopy(path);
  if (copy.empty()) {
    DropShelfEntry(path);
    return decision;
  }
  // A document that cannot be queried counts as unchanged.
  const auto stamp = platform::fileStamp(path);
  if (stamp && caughtUp(*entry, *stamp)) {
    DropShelfEntry(path);
    return decision;
  }
  if (stamp && stampDiffers(*entry, *stamp)) {
    const BoxAnswer answer =
        showBox(kConflictText, u"Conflicting Versions", BoxButtons::YesNoCancel, BoxIcon::Warning);
    decision.opens = answer == BoxAnswer::Yes || answer == BoxAnswer::No;
    decision.givesUpCopy = answer == BoxAnswer::No;
    if (answer != BoxAnswer::Yes) return decision;
    decision.overruled = stamp;
  }
  decision.known = decision.overruled ? decision.overruled : knownStamp(*entry);
  decision.loadPath = copy;
  return decision;
}

void followShelfDecision(const std::u16string& path, const ShelfDecision& decision) {
  ShelfEntry* entry = shelfEntryOf(path);
  if (entry == nullptr) return;
  // Without a copy, the entry is about edits that were lost when the document last closed.
  if (decision.givesUpCopy || entry->shelfName.empty()) return DropShelfEntry(path);
  if (!decision.overruled) return;
  // The same question about the same state of the file is not asked twice.
  entry->sourceSize = decision.overruled->size;
  entry->sourceTime = decision.overruled->writeTime;
  SaveShelfIndex();
}

}  // namespace quillmere
