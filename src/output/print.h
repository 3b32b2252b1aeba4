#pragma once

#include <string_view>

namespace quillmere {

inline constexpr int kPrintChildFailed = 2;

// Prints what the command line of a print child asks for; the result is the exit code.
int runPrintChild(std::u16string_view commandLine);

}  // namespace quillmere
