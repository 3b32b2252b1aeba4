#include "platform/keyboard.h"

#include <windows.h>

namespace quillmere::platform {

bool shiftDown() {
  return GetKeyState(VK_SHIFT) < 0;
}

bool controlDown() {
  return GetKeyState(VK_CONTROL) < 0;
}

}  // namespace quillmere::platform
