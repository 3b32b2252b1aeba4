#include "platform/sound.h"

#include <windows.h>

namespace quillmere::platform {

void beep(Sound sound) {
  MessageBeep(sound == Sound::Exclamation ? MB_ICONEXCLAMATION : MB_OK);
}

}  // namespace quillmere::platform
