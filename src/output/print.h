#pragma once

#include <string_view>

namespace quillmere {

inline constexpr int kPrintChildFailed = 2;

// Prints what a print child's command line asks for and returns the exit code.
int runPrintChild(std::u16string_view commandLine);

}  // namespace quillmere
