#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillmere::test {

// Plays bytes as a user's actions: opening and closing files, commands, keys, the mouse, new window
// sizes, answers to questions. Needs a fresh session and machine with a small window, and PDFium
// started. Returns the first session rule that broke and the action that broke it; empty when all
// rules held.
std::string playSessionActions(const std::uint8_t* bytes, std::size_t size);

}  // namespace quillmere::test
