#pragma once

#include <optional>
#include <string>

namespace quillmere::platform {

// Replaces what the clipboard holds. False when it could not be taken or memory ran out.
bool setClipboardText(const std::u16string& text);

// The clipboard's text, nothing when it holds none.
std::optional<std::u16string> clipboardText();

}  // namespace quillmere::platform
