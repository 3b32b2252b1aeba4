#include "store/binder_views.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_library.h"

namespace quillmere {

namespace {

// The binder that the pane's document was opened from; null without one.
BinderFile* binderOfPane(int pane) {
  const auto opened = session.documentBinders.find(platform::toLower(pathOf(pane)));
  if (opened == session.documentBinders.end()) return nullptr;
  const int index = FindBinder(opened->second);
  return index == kNoBinder ? nullptr : &session.binderLibrary[static_cast<std::size_t>(index)];
}

// In a book that is always fitted to its panes the view says nothing about what the user wants.
bool viewIsForced() {
  return session.viewMode == ViewMode::Book && session.settings.bookRevertToFit;
}

// Documents in use that are not restored need no file, and at exit it has been deleted already.
bool viewIsWritten(const BinderFile& binder) {
  return !binder.isWorkingDocuments || session.settings.restoreOpenDocs;
}

}  // namespace

void SaveCurrentView(int pane) {
  if (session.viewMode == ViewMode::Book) pane = 0;
  const PaneSlot& slot = session.panes[pane];
  if (!slot.page) return;
  BinderFile* binder = binderOfPane(pane);
  if (binder == nullptr) return;

  BinderEntry& entry = binder->views[platform::toLower(pathOf(pane))];
  entry.page = slot.currentPage;
  entry.hasPage = true;
  if (!viewIsForced()) {
    entry.panX = slot.panX;
    entry.panY = slot.panY;
    entry.zoom = slot.zoom;
    entry.mode = slot.zoomMode;
  }
  if (viewIsWritten(*binder)) WriteBinderFile(*binder);
}

void SaveCurrentViews() {
  if (inTwoDocuments()) {
    SaveCurrentView(0);
    SaveCurrentView(1);
  } else {
    SaveCurrentView(session.activePane);
  }
}

}  // namespace quillmere
