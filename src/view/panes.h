#pragma once

// The two panes: which of them is active, how wide they are, and how a book fills them.
namespace quillmere {

// Makes a pane the active one and repaints the frame that shows it.
void activatePane(int pane);
// Makes the other pane the active one; does nothing in SinglePage.
void flipActivePane();

// Lays both panes out again and renders them after their geometry changed.
void refitPanes();

// Loads the pane's page when it has none, lays it out and renders it.
void showPane(int pane);

// Saves zoom, pan and rectangle of both panes, to restore them when Book is left.
void saveBookOverride();
// Restores zoom, pan and zoom mode of both panes.
void restoreBookOverride();
// Restores the saved pan once the panes have their new sizes.
void restoreBookPan();

// Shows a Book as its settings say, after the user changed them; does nothing in other modes.
void applyBookSettings();

// Whether a press at client x grabs the divider between the panes.
bool onDivider(int x);

// A drag of the divider, in client pixels. Moves do nothing when no drag is under way.
void startDividerDrag(int x);
void moveDividerDrag(int x);
void endDividerDrag();

// Centres the divider; does nothing in SinglePage.
void equalizePanes();

}  // namespace quillmere
