#include "driver/input.h"

#include <array>

#include "driver/inside_request.h"
#include "driver/wait.h"

namespace quillmere::e2e {
namespace {

constexpr int kAbsoluteRange = 65536;
constexpr int kDragSteps = 8;

void sendKey(WORD key, WORD scan, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = scan;
  input.ki.dwFlags = flags;
  SendInput(1, &input, sizeof(input));
}

// These keys need the extended flag, which tells them apart from the number pad's keys.
bool extended(WORD key) {
  constexpr std::array<WORD, 10> kExtended{VK_PRIOR, VK_NEXT,  VK_END,  VK_HOME,   VK_LEFT,
                                           VK_UP,    VK_RIGHT, VK_DOWN, VK_INSERT, VK_DELETE};
  for (const WORD candidate : kExtended) {
    if (candidate == key) return true;
  }
  return false;
}

void sendVirtualKey(WORD key, bool down) {
  const WORD scan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
  DWORD flags = down ? 0 : KEYEVENTF_KEYUP;
  if (extended(key)) flags |= KEYEVENTF_EXTENDEDKEY;
  sendKey(key, scan, flags);
}

void sendModifiers(unsigned modifiers, bool down) {
  if (modifiers & kCtrl) sendVirtualKey(VK_CONTROL, down);
  if (modifiers & kShift) sendVirtualKey(VK_SHIFT, down);
  if (modifiers & kAlt) sendVirtualKey(VK_MENU, down);
}

// The smallest absolute coordinate that maps to this pixel.
LONG absolute(LONG pixel, int extent) {
  return (pixel * kAbsoluteRange + extent - 1) / extent;
}

// Sends the position with every event, since the desktop may report an older pointer position
// between two events.
void sendMouse(POINT place, DWORD flags, DWORD data = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  input.mi.mouseData = data;
  input.mi.dx = absolute(place.x, GetSystemMetrics(SM_CXSCREEN));
  input.mi.dy = absolute(place.y, GetSystemMetrics(SM_CYSCREEN));
  SendInput(1, &input, sizeof(input));
}

DWORD buttonFlag(Button button, bool down) {
  switch (button) {
    case Button::Middle:
      return down ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_MIDDLEUP;
    case Button::Right:
      return down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP;
    case Button::Back:
    case Button::Forward:
      return down ? MOUSEEVENTF_XDOWN : MOUSEEVENTF_XUP;
    case Button::Left:
      break;
  }
  return down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
}

// The number of a side button; 0 for other buttons.
DWORD buttonData(Button button) {
  if (button == Button::Back) return XBUTTON1;
  return button == Button::Forward ? XBUTTON2 : 0;
}

// Moves the pointer, waits until the window there has handled that, and returns the window. A
// pointer that enters a window makes the desktop forget held keys, so it must arrive first.
HWND arriveAt(POINT place) {
  movePointer(place);
  const HWND window = GetAncestor(WindowFromPoint(place), GA_ROOT);
  inputIsHandled(window);
  return window;
}

}  // namespace

void holdKeys(unsigned modifiers) {
  sendModifiers(modifiers, true);
}

void releaseKeys(unsigned modifiers) {
  sendModifiers(modifiers, false);
}

void press(WORD key, unsigned modifiers) {
  holdKeys(modifiers);
  sendVirtualKey(key, true);
  sendVirtualKey(key, false);
  releaseKeys(modifiers);
}

void type(const std::wstring& text) {
  for (const wchar_t unit : text) {
    sendKey(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE);
    sendKey(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP);
  }
}

void movePointer(POINT place) {
  sendMouse(place, 0);
}

void pressButton(POINT place, Button button) {
  sendMouse(place, buttonFlag(button, true), buttonData(button));
}

void releaseButton(POINT place, Button button) {
  sendMouse(place, buttonFlag(button, false), buttonData(button));
}

void click(POINT place, Button button, unsigned modifiers) {
  arriveAt(place);
  holdKeys(modifiers);
  pressButton(place, button);
  releaseButton(place, button);
  releaseKeys(modifiers);
}

void doubleClick(POINT place) {
  click(place);
  click(place);
}

void drag(POINT from, POINT to, Button button, unsigned modifiers) {
  const HWND window = arriveAt(from);
  holdKeys(modifiers);
  pressButton(from, button);
  for (int step = 1; step <= kDragSteps; ++step) {
    inputIsHandled(window);
    movePointer({from.x + (to.x - from.x) * step / kDragSteps,
                 from.y + (to.y - from.y) * step / kDragSteps});
  }
  // Otherwise the release could overtake the last movement and happen at the previous position.
  inputIsHandled(window);
  releaseButton(to, button);
  releaseKeys(modifiers);
}

void turnWheel(POINT place, int delta, unsigned modifiers) {
  arriveAt(place);
  holdKeys(modifiers);
  sendMouse(place, MOUSEEVENTF_WHEEL, static_cast<DWORD>(delta));
  releaseKeys(modifiers);
}

bool inputIsHandled(HWND window) {
  return eventually([&] { return askInside(window, InsideRequest::InputWaits, 0) == L"0"; });
}

bool bringToFront(HWND window) {
  return eventually([&] {
    if (GetForegroundWindow() == window) return true;
    SetForegroundWindow(window);
    return false;
  });
}

}  // namespace quillmere::e2e
