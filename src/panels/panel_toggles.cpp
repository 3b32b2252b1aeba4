#include "panels/panel_toggles.h"

#include "annot/placement_editing.h"
#include "annot/placements.h"
#include "annot/text_dialog.h"
#include "nav/markup_tree.h"
#include "panels/stamp_panel.h"
#include "platform/main_window.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/settings.h"
#include "view/panes.h"

namespace quillmere {

namespace {

// Showing or hiding a panel changes the room left for the panes.
void panelsChanged() {
  platform::layoutMainWindow();
  refitPanes();
  commandsChanged();
}

}  // namespace

void toggleNavigationPanel() {
  session.navigationPanelVisible = !session.navigationPanelVisible;
  panelsChanged();
  showMarkupsUnderBookmarks();
}

void toggleBinderPanel() {
  session.binderPanelVisible = !session.binderPanelVisible;
  panelsChanged();
}

void toggleStampPanel() {
  if (session.viewMode != ViewMode::SinglePage) return;
  session.stampPanelVisible = !session.stampPanelVisible;
  if (session.stampPanelVisible) {
    openStampPanel();
  } else {
    closeTextDialog();
    endPlacementDrag();
    ClearPlacementSelection();
  }
  panelsChanged();
}

void toggleMarkupGrouping() {
  session.settings.markupsUnderBookmarks = !session.settings.markupsUnderBookmarks;
  SaveSettings();
  outlineChanged();
  commandsChanged();
}

void focusNavigationPanel() {
  if (!session.navigationPanelVisible) toggleNavigationPanel();
  platform::focusNavigationTree();
}

void focusBinderPanel() {
  if (!session.binderPanelVisible) toggleBinderPanel();
  platform::focusBinderTree();
}

}  // namespace quillmere
