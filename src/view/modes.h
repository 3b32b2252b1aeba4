#pragma once

#include "core/session.h"

namespace quillmere {

// Changes what the panes show. Choosing the present mode has no effect.
void setViewMode(ViewMode mode);

// Lays both panes out anew and renders them after their geometry changed.
void refitPanes();

}  // namespace quillmere
