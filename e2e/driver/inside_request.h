#pragma once

#include <string>

#include "inside/inside.h"

namespace quillmere::e2e {

// Has a request served in the process of `window`; empty when it did not answer in time.
std::wstring askInside(HWND window, InsideRequest request, LPARAM detail,
                       const std::wstring& text = {});

}  // namespace quillmere::e2e
