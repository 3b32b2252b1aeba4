#include <algorithm>
#include <utility>
#include <vector>

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
  if (!mainWindow()) return;
  noteShown("title");
  mainWindow()->title = title;
}

void invalidateMainWindow(bool erase) {
  if (!mainWindow()) return;
  noteShown(erase ? "repaint with erasing" : "repaint");
  ++mainWindow()->invalidations;
  if (erase) ++mainWindow()->erasingInvalidations;
}

void invalidateMainWindowPart(int left, int top, int right, int bottom) {
  if (!mainWindow()) return;
  noteShown("partial repaint");
  mainWindow()->invalidParts.push_back({left, top, right, bottom});
}

void invalidateStampPanel() {
  if (mainWindow()) noteShown("stamp panel");
}

void updateMainWindow() {
  if (mainWindow()) ++mainWindow()->updates;
}

void updatePages() {
  noteShown("pages painted");
  updateMainWindow();
}

void fillStatusBarLater(void (*fill)()) {
  if (!mainWindow()) return;
  noteShown("status bar");
  fill();
  if (standIn().onStatusFilled) standIn().onStatusFilled();
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
  if (!mainWindow()) return;
  noteShown("menus");
  mainWindow()->menuItems[command] = {checked, enabled};
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

void postWaitingWork() {
  if (mainWindow()) ++mainWindow()->waitingWorkPosted;
}

void doAfterPainting(void (*work)()) {
  if (!mainWindow()) return work();
  std::vector<void (*)()>& waiting = mainWindow()->afterPainting;
  if (std::find(waiting.begin(), waiting.end(), work) == waiting.end()) waiting.push_back(work);
  if (!mainWindow()->paintsLater) mainWindow()->paintNow();
}

bool anyWorkAfterPainting() {
  return mainWindow() && !mainWindow()->afterPainting.empty();
}

void doWhenIdle(bool (*work)()) {
  if (!mainWindow()) return;
  std::vector<bool (*)()>& waiting = mainWindow()->whenIdle;
  if (std::find(waiting.begin(), waiting.end(), work) == waiting.end()) waiting.push_back(work);
  if (!mainWindow()->paintsLater) mainWindow()->paintNow();
}

void doWhenQuiet(void (*work)()) {
  if (!mainWindow()) return;
  std::vector<void (*)()>& waiting = mainWindow()->whenQuiet;
  if (std::find(waiting.begin(), waiting.end(), work) == waiting.end()) waiting.push_back(work);
  if (!mainWindow()->paintsLater) mainWindow()->paintNow();
}

void StandInWindow::idleSlice() {
  const std::vector<bool (*)()> works = whenIdle;
  for (bool (*work)() : works) {
    if (!work()) std::erase(whenIdle, work);
  }
}

void StandInWindow::paintNow() {
  for (void (*work)() : std::exchange(afterPainting, {})) work();
  while (!whenIdle.empty()) idleSlice();
  for (void (*work)() : std::exchange(whenQuiet, {})) work();
}

SystemColor highlightColor() {
  return {0, 120, 215};
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
