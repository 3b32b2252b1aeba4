#pragma once

#include <string>

namespace quillmere::test {

// What must hold of the session whenever the program waits for input: the first rule that does not,
// in words; empty when all hold.
std::string brokenInvariant();

}  // namespace quillmere::test
