#pragma once

#include <string>

namespace quillmere::test {

// Checks the rules that the session must obey whenever the program waits for input. Returns the
// first broken rule in words; empty when all hold.
std::string brokenInvariant();

}  // namespace quillmere::test
