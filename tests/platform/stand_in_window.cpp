#include "platform/keyboard.h"
#include "platform/main_window.h"
#include "stand_in.h"

namespace quillmere::platform {
namespace {

// The window's record while it exists; null otherwise, so that nothing is recorded.
StandInWindow* mainWindow() {
  return standIn().window.exists ? &standIn().window : nullptr;
}

}  // namespace

bool shiftDown() {
  return standIn().shiftDown;
}

bool controlDown() {
  return standIn().controlDown;
}

bool mainWindowExists() {
  return mainWindow() != nullptr;
}

PixelSize mainWindowClientSize() {
  return mainWindow() ? mainWindow()->client : PixelSize{};
}

int statusBarHeight() {
  return mainWindow() ? mainWindow()->statusBarHeight : 0;
}

void setMainWindowTitle(const std::u16string& title) {
  if (mainWindow()) mainWindow()->title = title;
}

void invalidateMainWindow(bool erase) {
  if (!mainWindow()) return;
  ++mainWindow()->invalidations;
  if (erase) ++mainWindow()->erasingInvalidations;
}

void updateMainWindow() {
  if (mainWindow()) ++mainWindow()->updates;
}

void updatePages() {
  updateMainWindow();
}

void fillStatusBarLater(void (*fill)()) {
  if (mainWindow()) fill();
}

void setStatusParts(const int* rightEdges, int count) {
  if (mainWindow()) mainWindow()->statusRightEdges.assign(rightEdges, rightEdges + count);
}

void setStatusText(int part, const std::u16string& text) {
  if (mainWindow()) mainWindow()->statusTexts[part] = text;
}

void placeZoomSlider(int x, int y, int width, int height) {
  if (mainWindow()) mainWindow()->sliderPlace = {x, y, x + width, y + height};
}

void enableZoomSlider(bool enabled) {
  if (mainWindow()) mainWindow()->sliderEnabled = enabled;
}

void setZoomSlider(int position) {
  if (mainWindow()) mainWindow()->sliderPosition = position;
}

void setMenuItem(std::uint32_t command, bool checked, bool enabled) {
  if (mainWindow()) mainWindow()->menuItems[command] = {checked, enabled};
}

void layoutMainWindow() {
  if (mainWindow()) ++mainWindow()->layouts;
}

void refreshCursor() {
  if (mainWindow()) ++mainWindow()->cursorRefreshes;
}

void captureMouse() {
  if (mainWindow()) mainWindow()->mouseCaptured = true;
}

void releaseMouse() {
  if (mainWindow()) mainWindow()->mouseCaptured = false;
}

void focusMainWindow() {
  if (mainWindow()) ++mainWindow()->focusRequests;
}

void raiseMainWindow() {
  if (mainWindow()) ++mainWindow()->raises;
}

void focusNavigationTree() {
  if (mainWindow()) ++mainWindow()->navigationTreeFocusRequests;
}

void focusBinderTree() {
  if (mainWindow()) ++mainWindow()->binderTreeFocusRequests;
}

void postBinderTreeRebuild() {
  if (mainWindow()) ++mainWindow()->binderTreeRebuildsPosted;
}

std::optional<WindowPlacement> mainWindowPlacement() {
  return mainWindow() ? mainWindow()->placement : std::nullopt;
}

void placeMainWindow(const WindowPlacement& placement) {
  if (!mainWindow()) return;
  mainWindow()->placement = placement;
  mainWindow()->placementsSet.push_back(placement);
}

void closeMainWindow() {
  if (mainWindow()) ++mainWindow()->closeRequests;
}

}  // namespace quillmere::platform
