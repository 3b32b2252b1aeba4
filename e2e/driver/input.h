#pragma once

#include <windows.h>

#include <string>

// What a user does with keyboard and mouse. The input reaches whatever window is in front.
namespace quillmere::e2e {

enum Modifiers : unsigned { kNone = 0, kShift = 1, kCtrl = 2, kAlt = 4 };
enum class Button { Left, Middle, Right, Back, Forward };

// Presses and releases a virtual key such as VK_NEXT or 'F'.
void press(WORD key, unsigned modifiers = kNone);
// Types text character by character.
void type(const std::wstring& text);
void holdKeys(unsigned modifiers);
void releaseKeys(unsigned modifiers);

// All positions are screen pixels.
void movePointer(POINT place);
void pressButton(POINT place, Button button = Button::Left);
void releaseButton(POINT place, Button button = Button::Left);
void click(POINT place, Button button = Button::Left, unsigned modifiers = kNone);
void doubleClick(POINT place);
// Moves from one place to the other in small steps with the button held. Waits for each step to be
// handled, since a movement being handled swallows the next one.
void drag(POINT from, POINT to, Button button = Button::Left, unsigned modifiers = kNone);
// `delta` in wheel units; 120 is one notch away from the user.
void turnWheel(POINT place, int delta, unsigned modifiers = kNone);

// Waits until the program of the window has handled all keys and mouse events; false when it does
// not do so in time. Messages sent or posted to a window overtake waiting input.
bool inputIsHandled(HWND window);

// Brings the window to the front and gives it the focus; false when that failed.
bool bringToFront(HWND window);

}  // namespace quillmere::e2e
