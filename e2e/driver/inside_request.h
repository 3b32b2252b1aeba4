#pragma once

#include <string>

#include "inside/inside.h"

namespace quillmere::e2e {

// Runs a request inside the process of `window` and returns the answer; empty when none came in
// time.
std::wstring askInside(HWND window, InsideRequest request, LPARAM detail,
                       const std::wstring& text = {});

}  // namespace quillmere::e2e
