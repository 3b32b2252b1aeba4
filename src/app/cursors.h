#pragma once

#include "app/mouse.h"

namespace quillmere {

// Shows a cursor; the kind must not be Default.
void showCursor(CursorKind kind);

}  // namespace quillmere
