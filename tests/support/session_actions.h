#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillmere::test {

// Plays bytes as what a person does to the program: opening and closing files, commands, keys, the
// mouse, new window sizes, answers to questions. Expects a fresh session and machine with a small
// window, and PDFium up. The rule of the session that broke first, with the action that broke it;
// empty when all of them held.
std::string playSessionActions(const std::uint8_t* bytes, std::size_t size);

}  // namespace quillmere::test
