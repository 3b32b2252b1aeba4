#include "documents/open_binder_entry.h"

#include "documents/network_notice.h"
#include "documents/open.h"
#include "documents/restore_view.h"
#include "documents/save_target.h"
#include "platform/sound.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/binder_library.h"
#include "store/probe_path.h"
#include "store/shelf.h"

namespace quillmere {

namespace {

// The three highest file indexes mark tree rows that are not files.
constexpr int kFirstMarkerRow = 65533;

void showAvailability(const std::u16string& path, bool available) {
  const std::u16string key = platform::toLower(path);
  if (available) {
    session.unavailableFiles.erase(key);
  } else {
    session.unavailableFiles.insert(key);
  }
  binderFilesChanged();
}

void reportUnreachable(ProbeResult result) {
  if (result == ProbeResult::Missing) {
    platform::beep(platform::Sound::Exclamation);
  } else {
    showNetworkUnavailable();
  }
}

bool shownIn(int pane, const std::u16string& path) {
  return documentOf(pane) != nullptr && samePath(pathOf(pane), path);
}

bool alreadyShown(const std::u16string& path, bool otherPaneCounts) {
  if (shownIn(session.activePane, path)) return true;
  return otherPaneCounts && inTwoDocuments() && shownIn(1 - session.activePane, path);
}

// A missing document can still be opened from its unsaved changes on the shelf.
bool canBeOpened(const std::u16string& path, ProbeResult probe, bool shown) {
  if (probe == ProbeResult::Available) return true;
  if (probe != ProbeResult::Missing || shown) return false;
  shelfIndexKnown();
  return !liveShelfCopy(path).empty();
}

}  // namespace

void openBinderEntry(std::uint32_t itemData, bool askBeforeReplace, bool otherPaneCounts) {
  const int binderIndex = static_cast<int>(itemData >> 16);
  const int fileIndex = static_cast<int>(itemData & 0xFFFF);
  if (fileIndex >= kFirstMarkerRow || !IsValidBinderFile(binderIndex, fileIndex)) return;
  const BinderFile& binder = session.binderLibrary[static_cast<std::size_t>(binderIndex)];
  const std::u16string path = binder.files[static_cast<std::size_t>(fileIndex)];
  const std::u16string binderPath = binder.path;
  const WorkingDocsMode mode =
      binder.isWorkingDocuments ? kWorkingDocsKeepPlace : kWorkingDocsLeaveAlone;

  const ProbeResult probe = probeWithinOpenTimeout(path);
  const bool shown = alreadyShown(path, otherPaneCounts);
  if (!canBeOpened(path, probe, shown)) {
    reportUnreachable(probe);
    showAvailability(path, false);
    return;
  }
  if (shown) {
    showAvailability(path, true);
    return;
  }
  const DocumentWork work;
  const OpenResult result = openAsLeft(path, session.activePane, mode, askBeforeReplace);
  if (result == OpenResult::Declined) return;
  const bool opened = result == OpenResult::Opened;
  if (opened) {
    session.documentBinders[platform::toLower(path)] = binderPath;
    RestoreView(FindBinder(binderPath), path);
  }
  showAvailability(path, opened);
}

}  // namespace quillmere
