#pragma once

#include <windows.h>

namespace quillmere::platform {

// Sends a message to a control of this process, bypassing its subclasses.
inline LRESULT askClassOf(HWND control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  const auto procedure = reinterpret_cast<WNDPROC>(GetClassLongPtrW(control, GCLP_WNDPROC));
  return CallWindowProcW(procedure, control, message, wParam, lParam);
}

}  // namespace quillmere::platform
