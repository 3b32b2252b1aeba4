#include "session/gesture.h"

#include "platform/main_window.h"
#include "session/session.h"

namespace quillmere {

void beginGesture(Gesture kind, int x, int y, int start) {
  session.gesture = {kind, x, y, start};
  platform::captureMouse();
}

bool endGesture(Gesture kind) {
  if (session.gesture.kind != kind) return false;
  session.gesture.kind = Gesture::None;
  platform::releaseMouse();
  return true;
}

void dropGesture() {
  if (session.gesture.kind == Gesture::None) return;
  session.gesture.kind = Gesture::None;
  for (PaneSlot& slot : session.panes) slot.shiftPan = false;
  platform::releaseMouse();
}

}  // namespace quillmere
