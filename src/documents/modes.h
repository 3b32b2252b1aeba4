#pragma once

#include "session/session.h"

namespace quillmere {

// Changes what the panes show. Choosing the present mode has no effect.
void setViewMode(ViewMode mode);

// Opens the shown file anew in a viewer, which takes over what was saved meanwhile. View and page
// number stay; the page itself is the first one until the next turn.
void refreshFromSource();

}  // namespace quillmere
