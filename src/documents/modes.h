#pragma once

#include "session/session.h"

namespace quillmere {

// Changes what the panes show. Choosing the current mode does nothing.
void setViewMode(ViewMode mode);

// In a viewer, opens the shown file again to pick up what was saved meanwhile. The view and the
// page number stay; the page itself is the first one until the next page turn.
void refreshFromSource();

}  // namespace quillmere
