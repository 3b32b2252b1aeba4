#pragma once

// The two panes: which of them is active, how wide they are, and how a book fills them.
namespace quillmere {

// Makes a pane the active one and repaints the frame that shows it.
void activatePane(int pane);
// Makes the other pane the active one; without effect in SinglePage.
void flipActivePane();

// Lays both panes out anew and renders them after their geometry changed.
void refitPanes();

// Loads the pane's page when it has none, lays it out and renders it.
void showPane(int pane);

// Remembers zoom and pan of both panes, and their places, for when Book is left.
void saveBookOverride();
// Puts zoom, pan and zoom mode of both panes back.
void restoreBookOverride();
// Puts the saved pan back once the panes have their new sizes.
void restoreBookPan();

// Shows a Book as its settings say, after the user has changed them; without effect in other modes.
void applyBookSettings();

// Whether a press at client x grabs the divider between the panes.
bool onDivider(int x);

// A drag of the divider, in client pixels. Moves without one under way are without effect.
void startDividerDrag(int x);
void moveDividerDrag(int x);
void endDividerDrag();

// Centres the divider; without effect in SinglePage.
void equalizePanes();

}  // namespace quillmere
