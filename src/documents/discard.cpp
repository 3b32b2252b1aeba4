#include "documents/discard.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/limits.h"
#include "base/text_format.h"
#include "documents/network_notice.h"
#include "documents/open.h"
#include "documents/restore_view.h"
#include "documents/shelve.h"
#include "documents/unsaved_files.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/binder_library.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr const char16_t* kTitle = u"Discard Changes";

// A document that is shown, and the binder that it was opened from.
struct ShownDocument {
  int pane = 0;
  std::u16string path;
  std::u16string binder;  // empty for none
};

ShownDocument shownIn(int pane) {
  ShownDocument shown{pane, pathOf(pane), {}};
  const auto opened = session.documentBinders.find(platform::toLower(shown.path));
  if (opened != session.documentBinders.end()) shown.binder = opened->second;
  return shown;
}

// Reads the document's own file again, whatever is on the shelf, and then empties that.
bool revert(const ShownDocument& shown) {
  if (!networkAnswers(shown.path)) return false;
  if (!openDocument(&shown.path, shown.pane, kWorkingDocsLeaveAlone, false, nullptr)) {
    return false;
  }
  if (!shown.binder.empty()) {
    session.documentBinders[platform::toLower(shown.path)] = shown.binder;
  }
  DropShelfEntry(shown.path);
  return true;
}

// The stored view is applied to the active pane alone.
void revertWithView(const ShownDocument& shown) {
  if (!revert(shown) || shown.binder.empty() || shown.pane != session.activePane) return;
  RestoreView(FindBinder(shown.binder), shown.path);
}

bool confirm(const std::u16string& text) {
  return showBox(text, kTitle, BoxButtons::OkCancel, BoxIcon::Question) == BoxAnswer::Ok;
}

bool listed(const std::vector<UnsavedFile>& files, const std::u16string& path) {
  return std::any_of(files.begin(), files.end(), [&](const UnsavedFile& file) {
    return shelfKeyOf(file.path) == shelfKeyOf(path);
  });
}

// The documents of the rows that are shown; a document shared by both panes counts once.
std::vector<ShownDocument> shownOf(const std::vector<UnsavedFile>& files) {
  std::vector<ShownDocument> shown;
  for (const int pane : {session.activePane, 1 - session.activePane}) {
    if (!inTwoDocuments() && pane != session.activePane) continue;
    if (documentOf(pane) != nullptr && listed(files, pathOf(pane))) shown.push_back(shownIn(pane));
  }
  return shown;
}

bool isAmong(const std::vector<ShownDocument>& shown, const std::u16string& path) {
  return std::any_of(shown.begin(), shown.end(), [&](const ShownDocument& document) {
    return shelfKeyOf(document.path) == shelfKeyOf(path);
  });
}

}  // namespace

void DiscardActive() {
  if (session.viewerRole) return;
  const DocumentWork work;
  if (pathOf(session.activePane).empty()) {
    showNotice(u"No file is open.", BoxIcon::Information);
    return;
  }
  if (!changesWouldBeLost(session.activePane) && !ActiveIsShelved()) {
    showBox(u"No edits have been made. Nothing to discard.", kTitle, BoxButtons::Ok,
            BoxIcon::Information);
    return;
  }
  if (!confirm(u"Discard all unsaved changes and reload the file from disk?\n\nAny newly-placed "
               u"stamps or text drops, and any loaded annotations you've deleted, will be "
               u"reverted.")) {
    return;
  }
  revertWithView(shownIn(session.activePane));
  binderFilesChanged();
}

void DiscardBinderFile(int binderIndex, int fileIndex) {
  if (session.viewerRole || !IsValidBinderFile(binderIndex, fileIndex)) return;
  const std::u16string path = binderAt(binderIndex).files[static_cast<std::size_t>(fileIndex)];
  const int pane = paneWithPath(path);
  if (!IsShelved(path) && (pane < 0 || !hasUnsavedChanges(pane))) return;
  if (pane == session.activePane) return DiscardActive();
  const DocumentWork work;
  if (!confirm(formatText(
          u"Discard unsaved changes to '%s'?\n\nThe file reverts to its last saved version.",
          {fileNameOf(path)}))) {
    return;
  }
  if (pane >= 0) {
    revert(shownIn(pane));
  } else {
    DropShelfEntry(path);
  }
  bindersChanged();
}

void DiscardAll() {
  if (session.viewerRole) return;
  const DocumentWork work;
  const std::vector<UnsavedFile> files = BuildUnsavedList();
  if (files.empty()) return reportNothingUnsaved();
  if (!confirmDiscardAll(files.size())) return;
  const std::vector<ShownDocument> shown = shownOf(files);
  for (const ShownDocument& document : shown) revertWithView(document);
  for (const UnsavedFile& file : files) {
    if (!isAmong(shown, file.path)) DropShelfEntry(file.path);
  }
  bindersChanged();
}

}  // namespace quillmere
