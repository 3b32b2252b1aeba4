#pragma once

#include <windows.h>

#include <string>

// What a person does with keyboard and mouse; it reaches whatever window is in front.
namespace quillmere::e2e {

enum Modifiers : unsigned { kNone = 0, kShift = 1, kCtrl = 2, kAlt = 4 };
enum class Button { Left, Middle, Right, Back, Forward };

// A virtual key such as VK_NEXT or 'F', pressed and released.
void press(WORD key, unsigned modifiers = kNone);
// Text as the keyboard would give it, character by character.
void type(const std::wstring& text);
void holdKeys(unsigned modifiers);
void releaseKeys(unsigned modifiers);

// All places are screen pixels.
void movePointer(POINT place);
void pressButton(POINT place, Button button = Button::Left);
void releaseButton(POINT place, Button button = Button::Left);
void click(POINT place, Button button = Button::Left, unsigned modifiers = kNone);
void doubleClick(POINT place);
// Goes from one place to the other in small steps with the button held, and waits for each step to
// be handled: a movement that is being handled swallows the next one.
void drag(POINT from, POINT to, Button button = Button::Left, unsigned modifiers = kNone);
// `delta` in wheel units, 120 for a notch away from the person.
void turnWheel(POINT place, int delta, unsigned modifiers = kNone);

// Waits until the program of the window has handled all keys and mouse events; false when it does
// not come to that. What is sent or posted to a window overtakes input that still waits.
bool inputIsHandled(HWND window);

// Puts the window in front and gives it the keyboard; false when that did not come about.
bool bringToFront(HWND window);

}  // namespace quillmere::e2e
