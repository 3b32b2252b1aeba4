#include "platform/find_bar.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "platform/win32/class_procedure.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {

namespace {

constexpr UINT_PTR kStatusSubclass = 0x52;

// A label draws new text the moment it is set, which would delay the typed key. So the text is set
// only when the label is painted or queried.
LRESULT CALLBACK statusProcedure(HWND label, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR) {
  const bool shows = message == WM_PAINT || message == WM_PRINTCLIENT || message == WM_GETTEXT ||
                     message == WM_GETTEXTLENGTH;
  if (shows && std::exchange(windowHandles.findStatusWaits, false)) {
    SetWindowTextW(label, wide(windowHandles.findStatusText));
  }
  return DefSubclassProc(label, message, wParam, lParam);
}

void watchFindStatus(HWND label) {
  if (std::exchange(windowHandles.watchedFindStatus, label) == label) return;
  windowHandles.findStatusText.clear();
  windowHandles.findStatusWaits = false;
  SetWindowSubclass(label, statusProcedure, kStatusSubclass, 0);
}

// Bypasses the subclasses, which do not change the text: each looks up a window property for every
// message, and a search reads the field on every key.
std::u16string textOfClass(HWND control) {
  const LRESULT length = askClassOf(control, WM_GETTEXTLENGTH);
  std::u16string text(static_cast<std::size_t>(length) + 1, u'\0');
  const LRESULT copied =
      askClassOf(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

}  // namespace

std::u16string findFieldText() {
  return windowHandles.findField == nullptr ? std::u16string()
                                            : textOfClass(windowHandles.findField);
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
  if (label == nullptr) return;
  watchFindStatus(label);
  if (windowHandles.findStatusText == text) return;
  windowHandles.findStatusText = text;
  if (!std::exchange(windowHandles.findStatusWaits, true)) InvalidateRect(label, nullptr, TRUE);
}

void enableFindOptions(bool enabled) {
  if (windowHandles.findMatchCase != nullptr) EnableWindow(windowHandles.findMatchCase, enabled);
  if (windowHandles.findWholeWord != nullptr) EnableWindow(windowHandles.findWholeWord, enabled);
}

}  // namespace quillmere::platform
