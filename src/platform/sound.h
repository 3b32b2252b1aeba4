#pragma once

namespace quillmere::platform {

// The system's short sounds.
enum class Sound { Default, Exclamation };
void beep(Sound sound);

}  // namespace quillmere::platform
