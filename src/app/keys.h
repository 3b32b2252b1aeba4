#pragma once

#include <cstdint>

namespace quillmere {

// Virtual key codes that the window hands on.
enum Key : std::uint32_t {
  kKeyBackspace = 0x08,
  kKeyTab = 0x09,
  kKeyEnter = 0x0D,
  kKeyEscape = 0x1B,
  kKeySpace = 0x20,
  kKeyPageUp = 0x21,
  kKeyPageDown = 0x22,
  kKeyEnd = 0x23,
  kKeyHome = 0x24,
  kKeyLeft = 0x25,
  kKeyUp = 0x26,
  kKeyRight = 0x27,
  kKeyDown = 0x28,
  kKeyDelete = 0x2E,
  kKeyA = 'A',
  kKeyC = 'C',
  kKeyF = 'F',
  kKeyL = 'L',
  kKeyN = 'N',
  kKeyR = 'R',
  kKeyV = 'V',
  kKeyW = 'W',
  kKeyPadPlus = 0x6B,
  kKeyPadMinus = 0x6D,
  kKeyF2 = 0x71,
  kKeyF3 = 0x72,
  kKeyF4 = 0x73,
  kKeyF5 = 0x74,
  kKeyF6 = 0x75,
  kKeyF7 = 0x76,
  kKeyF8 = 0x77,
  kKeyMainPlus = 0xBB,
  kKeyMainMinus = 0xBD,
  kKeyLeftBracket = 0xDB,
  kKeyBackslash = 0xDC,
  kKeyRightBracket = 0xDD,
};

// Handles a key that no accelerator took, with the keyboard's present modifiers. False when the key
// means nothing.
bool handleKey(std::uint32_t key);

}  // namespace quillmere
