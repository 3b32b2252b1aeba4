#include "documents/shelve.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "annot/placements.h"
#include "annot/write_placements.h"
#include "base/limits.h"
#include "base/text_format.h"
#include "documents/document_loader.h"
#include "documents/save.h"
#include "documents/save_target.h"
#include "nav/idle_reading.h"
#include "platform/file_properties.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/gesture.h"
#include "session/loaded_file.h"
#include "session/page_memory.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/binder_library.h"
#include "store/probe_path.h"
#include "store/shelf.h"
#include "store/sibling_file.h"
#include "store/write_document_copy.h"
#include "ui/boxes.h"
#include "view/render.h"
#include "view/rotation.h"

namespace quillmere {

namespace {

// Some loaded binder must list it too: the exit asks about nothing else.
bool openedFromLoadedBinder(int pane) {
  const std::u16string& path = pathOf(pane);
  const auto opened = session.documentBinders.find(platform::toLower(path));
  return opened != session.documentBinders.end() && FindBinder(opened->second) != kNoBinder &&
         IsFileInOtherBinder(path, kNoBinder);
}

// Once the window closes for good, the user has decided about all of it.
bool belongsOnShelf(int pane) {
  return keepsShelf() && !session.leaving && documentOf(pane) != nullptr &&
         openedFromLoadedBinder(pane);
}

// What is not known leaves the entry as it was.
void setStamp(ShelfEntry& entry, const std::optional<platform::FileStamp>& stamp) {
  if (!stamp) return;
  entry.sourceSize = stamp->size;
  entry.sourceTime = stamp->writeTime;
}

// The changes were made to the file as the user knows it, which need not be the present one:
// another program may have written to it since.
void stampEntry(ShelfEntry& entry, const DocumentSlot& slot) {
  const bool readFromOwn = samePath(slot.loadedFrom.path, slot.path);
  setStamp(entry, readFromOwn ? slot.loadedFrom.stamp : slot.knownFile);
}

// The copy before it goes last: until the index names the new one, the index in the file needs it.
void enterCopy(const DocumentSlot& slot, const std::u16string& name) {
  ShelfEntry& entry = session.shelfIndex[shelfKeyOf(slot.path)];
  stampEntry(entry, slot);
  entry.dirty = true;
  forgetSave(entry);
  const std::u16string before = std::exchange(entry.shelfName, name);
  if (SaveShelfIndex()) DeleteShelfFile(before);
}

void showAsShelved(int pane, bool ownedPlacements) {
  const FPDF_DOCUMENT document = documentOf(pane);
  dirtyOf(pane) = false;
  keepEdits(pane);
  if (ownedPlacements) loadPlacementsLater(document);
  noteDocumentRead(pane);  // all of it, for writing
  for (const int each : panesHolding(document)) {
    if (session.panes[each].page) redrawPicture(each);
  }
  readAnnotationsWhenIdle();
  pictureChanged();
  binderFilesChanged();
}

void writeIndex() {
  if (!session.leaving) SaveShelfIndex();
}

bool changedOnDisk(const ShelfEntry& entry, const std::u16string& path) {
  const auto stamp = platform::fileStamp(path);
  return stamp && stampDiffers(entry, *stamp);
}

// An earlier session saved the document, but ended before it dropped the copy.
bool alreadySaved(const ShelfEntry& entry, const std::u16string& path) {
  const auto stamp = platform::fileStamp(path);
  return stamp && caughtUp(entry, *stamp);
}

// Reasons why the changes on the shelf did not reach the document's file.
constexpr const char16_t* kNoCopy = u"No shelf copy of the changes exists.";
constexpr const char16_t* kCopyMissing = u"The shelf copy of the changes is missing.";
constexpr const char16_t* kModified = u"The file on disk has been modified since.";
constexpr const char16_t* kCopyUnreadable = u"The shelf copy could not be opened.";
constexpr const char16_t* kNotWritten = u"Writing the file failed.";
constexpr const char16_t* kNotReplaced =
    u"The file could not be replaced (it may be locked or read-only).";

bool reportUnsaved(const std::u16string& path, const char16_t* reason) {
  showNotice(
      formatText(u"Could not save '%s':\n%s%s",
                 {fileNameOf(path), reason, u"\n\nThe unsaved changes are still on its shelf."}),
      BoxIcon::Error);
  return false;
}

// Null when the copy of `entry` now stands in the place of the file; otherwise the reason why it
// does not.
const char16_t* putInPlace(const ShelfEntry& entry, const std::u16string& path) {
  if (changedOnDisk(entry, path)) return kModified;
  const DocumentHandle document = loadDocumentFile(ShelfFilePath(entry.shelfName));
  if (!document) return kCopyUnreadable;
  const std::u16string sibling = writeDocumentBeside(document.get(), path);
  if (sibling.empty()) return kNotWritten;
  platform::copyAlternateStreams(path, sibling);
  platform::copyFileProperties(path, sibling);
  const char16_t* reason = kNotReplaced;
  noteSaveBegins(path, sibling);
  if (changedOnDisk(entry, path)) {
    reason = kModified;  // while the copy was written
  } else if (takePlace(sibling, path)) {
    return nullptr;
  }
  noteSaveFailed(path);
  platform::deleteFile(sibling);
  return reason;
}

bool saveOpenDocument(int pane) {
  gatherTurns(pane);
  commitRotations(pane);
  return SaveDocumentTo(pane, std::u16string(pathOf(pane)));
}

bool saveClosedDocument(const std::u16string& path) {
  const ShelfEntry* entry = shelfEntryOf(path);
  if (entry == nullptr || !entry->dirty) return true;
  const std::u16string copy = ShelfFilePath(entry->shelfName);
  if (copy.empty()) return reportUnsaved(path, kNoCopy);
  if (!platform::fileExists(copy)) return reportUnsaved(path, kCopyMissing);
  if (onGoneShare(path)) return reportUnsaved(path, kNotWritten);
  const char16_t* reason = alreadySaved(*entry, path) ? nullptr : putInPlace(*entry, path);
  if (reason != nullptr) return reportUnsaved(path, reason);
  DropShelfCopy(path);
  return true;
}

}  // namespace

bool shelveDocument(int pane) {
  if (!belongsOnShelf(pane)) return false;
  const DocumentSlot& slot = documentSlotOf(pane);
  const FPDF_DOCUMENT document = slot.document.get();
  const std::u16string name = NewShelfName();
  const std::u16string copy = ShelfFilePath(name);
  // What PDFium reads now does not fit what it has read before.
  const auto sound = [&slot] { return sourceState(slot.loadedFrom) == SourceState::Sound; };
  if (copy.empty() || !sound()) return false;
  const DocumentWork work;
  dropGesture();
  gatherTurns(pane);
  commitRotations(pane);
  const bool ownsPlacements = session.placementDocument == document && !session.placements.empty();
  if (!writeWithPlacements(document, [&] { return WriteDocumentCopy(document, copy, sound); })) {
    DeleteShelfFile(name);
    return false;
  }
  enterCopy(slot, name);
  showAsShelved(pane, ownsPlacements);
  return true;
}

bool changesWouldBeLost(int pane) {
  gatherTurns(pane);
  return hasUnsavedChanges(pane);
}

bool ShelveCurrentDocument() {
  return shelveDocument(session.activePane);
}

void shelveChangedDocuments() {
  for (int pane = 0; pane < 2; ++pane) {
    if (changesWouldBeLost(pane)) shelveDocument(pane);
  }
}

void noteDocumentChanged(int pane) {
  keepEdits(pane);
  if (!belongsOnShelf(pane)) return;
  const std::u16string& path = pathOf(pane);
  const ShelfEntry* known = shelfEntryOf(path);
  // A copy of an entry without changes is not what the document was read from.
  const bool hasCopy = known != nullptr && known->dirty && !known->shelfName.empty();
  const bool dirty = hasCopy || hasUnsavedChanges(pane) || turnsWait(pane);
  if (dirty == (known != nullptr && known->dirty)) return;
  if (!dirty) {
    session.shelfIndex.erase(session.shelfIndex.find(shelfKeyOf(path)));
  } else {
    ShelfEntry& entry = session.shelfIndex[shelfKeyOf(path)];
    entry.dirty = true;
    if (!hasCopy) entry.shelfName.clear();
  }
  // Entries without a copy count for nothing once the program has ended: the page is seen first.
  platform::doAfterPainting(writeIndex);
}

void giveUpEdits(int pane) {
  if (documentOf(pane) != nullptr) session.editsGivenUp.insert(documentOf(pane));
}

void keepEdits(int pane) {
  session.editsGivenUp.erase(documentOf(pane));
}

bool editsGivenUp(const std::u16string& path) {
  const int pane = paneWithPath(path);
  return pane >= 0 && session.editsGivenUp.contains(documentOf(pane));
}

void settleClosedDocuments() {
  for (const std::u16string& path : std::exchange(session.givenUpPaths, {})) DropShelfEntry(path);
  deleteLeftShelfFiles();
}

bool SaveShelved(int binderIndex, int fileIndex) {
  if (session.viewerRole || !IsValidBinderFile(binderIndex, fileIndex)) return false;
  const DocumentWork work;
  const std::u16string path = binderAt(binderIndex).files[static_cast<std::size_t>(fileIndex)];
  const int pane = paneWithPath(path);
  return pane >= 0 ? saveOpenDocument(pane) : saveClosedDocument(path);
}

void DropActiveShelfEntry() {
  DropShelfEntry(pathOf(session.activePane));
  binderFilesChanged();
}

}  // namespace quillmere
