#include "platform/find_bar.h"

#include <windows.h>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {

std::u16string findFieldText() {
  const HWND field = windowHandles.findField;
  if (field == nullptr) return {};
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(field)) + 1, u'\0');
  const int length = GetWindowTextW(field, wideBuffer(text), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
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
  if (windowHandles.findStatus != nullptr) SetWindowTextW(windowHandles.findStatus, wide(text));
}

void enableFindOptions(bool enabled) {
  if (windowHandles.findMatchCase != nullptr) EnableWindow(windowHandles.findMatchCase, enabled);
  if (windowHandles.findWholeWord != nullptr) EnableWindow(windowHandles.findWholeWord, enabled);
}

}  // namespace quillmere::platform
