#pragma once

#include "core/session.h"

namespace quillmere {

// Changes what the panes show. Choosing the present mode has no effect.
void setViewMode(ViewMode mode);

// Remembers zoom and pan of both panes, for when Book is left.
void saveBookOverride();

// Shows a Book as its settings say, after the user has changed them; without effect in other modes.
void applyBookSettings();

// Lays both panes out anew and renders them after their geometry changed.
void refitPanes();

// Makes a pane the active one and repaints the frame that shows it.
void activatePane(int pane);
// Makes the other pane the active one; without effect in SinglePage.
void flipActivePane();

// Opens the shown file anew in a viewer, which takes over what was saved meanwhile. View and page
// number stay; the page itself is the first one until the next turn.
void refreshFromSource();

// Whether a press at client x grabs the divider between the panes.
bool onDivider(int x);

// A drag of the divider, in client pixels. Moves without one under way are without effect.
void startDividerDrag(int x);
void moveDividerDrag(int x);
void endDividerDrag();

// Centres the divider; without effect in SinglePage.
void equalizePanes();

}  // namespace quillmere
