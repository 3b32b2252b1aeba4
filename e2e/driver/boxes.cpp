#include "driver/boxes.h"

#include <algorithm>

#include "driver/input.h"
#include "driver/wait.h"

namespace quillmere::e2e {
namespace {

constexpr wchar_t kDialogClass[] = L"#32770";
// Message boxes give their text this control id.
constexpr int kBoxText = 0xFFFF;

std::vector<std::wstring> buttonsOf(HWND box) {
  std::vector<std::wstring> buttons;
  HWND child = nullptr;
  while ((child = FindWindowExW(box, child, L"Button", nullptr)) != nullptr) {
    if (!IsWindowVisible(child)) continue;
    std::wstring text = controlText(child);
    text.erase(std::remove(text.begin(), text.end(), L'&'), text.end());
    buttons.push_back(text);
  }
  return buttons;
}

// The file name field has the focus once the dialog is ready.
HWND focusedEdit(HWND dialog) {
  const HWND focus = focusOf(dialog);
  return focus != nullptr && classOf(focus) == L"Edit" ? focus : nullptr;
}

bool gone(HWND window) {
  return eventually([&] { return !IsWindow(window) || !IsWindowVisible(window); });
}

}  // namespace

Box boxNow(const Program& program) {
  Box box;
  const HWND window = program.find(kDialogClass);
  if (window == nullptr || !IsWindowVisible(window)) return box;
  const HWND text = GetDlgItem(window, kBoxText);
  if (text == nullptr) return box;
  box.window = window;
  box.title = titleOf(window);
  box.text = controlText(text);
  box.buttons = buttonsOf(window);
  return box;
}

Box waitForBox(const Program& program) {
  Box box;
  eventually([&] {
    box = boxNow(program);
    return box.window != nullptr || !program.running();
  });
  return box;
}

bool answerBox(const Box& box, WORD key, unsigned modifiers) {
  if (box.window == nullptr || !bringToFront(box.window)) return false;
  press(key, modifiers);
  return gone(box.window);
}

HWND waitForFileDialog(const Program& program) {
  HWND dialog = nullptr;
  eventually([&] {
    dialog = program.find(kDialogClass);
    return dialog != nullptr && IsWindowVisible(dialog) && focusedEdit(dialog) != nullptr;
  });
  return dialog;
}

bool chooseInFileDialog(HWND dialog, const std::wstring& name) {
  if (!bringToFront(dialog)) return false;
  const HWND field = focusedEdit(dialog);
  type(name);
  if (settled([&] { return controlText(field); }, name) != name) return false;
  press(VK_RETURN);
  return gone(dialog);
}

bool cancelFileDialog(HWND dialog) {
  if (!bringToFront(dialog)) return false;
  press(VK_ESCAPE);
  return gone(dialog);
}

}  // namespace quillmere::e2e
