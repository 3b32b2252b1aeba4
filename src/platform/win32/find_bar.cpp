#include "platform/find_bar.h"

#include <windows.h>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {

std::u16string findFieldText() {
  return windowHandles.findField == nullptr ? std::u16string()
                                            : windowText(windowHandles.findField);
}

void setFindFieldText(const std::u16string& text) {
  if (windowHandles.findField != nullptr) SetWindowTextW(windowHandles.findField, wide(text));
}

void focusFindField() {
  if (windowHandles.findField == nullptr) return;
  SetFocus(windowHandles.findField);
  SendMessageW(windowHandles.findField, EM_SETSEL, 0, -1);
}

void insertIntoFindField(const std::u16string& text) {
  if (windowHandles.findField == nullptr) return;
  SendMessageW(windowHandles.findField, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide(text)));
}

void setFindStatus(const std::u16string& text) {
  const HWND label = windowHandles.findStatus;
  if (label != nullptr && windowText(label) != text) SetWindowTextW(label, wide(text));
}

void enableFindOptions(bool enabled) {
  if (windowHandles.findMatchCase != nullptr) EnableWindow(windowHandles.findMatchCase, enabled);
  if (windowHandles.findWholeWord != nullptr) EnableWindow(windowHandles.findWholeWord, enabled);
}

}  // namespace quillmere::platform
