#pragma once

#include <string>

// The clipboard that all programs of the desktop share.
namespace quillmere::e2e {

// False when another program kept it.
bool clearClipboard();
bool setClipboardText(const std::wstring& text);
// Empty when it holds no text.
std::wstring clipboardText();

}  // namespace quillmere::e2e
