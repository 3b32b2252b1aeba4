#pragma once

#include <optional>
#include <string>

namespace quillmere::platform {

// Replaces the clipboard's contents. False when it could not be opened or memory ran out.
bool setClipboardText(const std::u16string& text);

// The clipboard's text; nullopt when it holds none.
std::optional<std::u16string> clipboardText();

}  // namespace quillmere::platform
