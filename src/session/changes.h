#pragma once

#include <fpdfview.h>

// What the rooms report when they have changed something that is shown elsewhere. app/changes.cpp
// brings everything that follows up to date, at once and in the order that stands there. Nothing
// that it calls may report a change in turn.
namespace quillmere {

// A pane has come to another page, or reads its page anew.
void pageShown(int pane);

// What a pane shows of its page has changed: panned, selected, drawn anew.
void pictureChanged();

// The active pane has another zoom.
void zoomChanged();

// Panes have new sizes and were laid out anew.
void panesLaidOut();

// Commands act on the other pane now.
void activePaneChanged();

// The pane's document or page has other pending turns.
void turnsChanged(int pane);

// A markup of the document's page (zero-based) was made or removed, or its note changed.
void markupsChanged(FPDF_DOCUMENT document, int page);

// What the search found, or where it stands, has changed.
void hitsChanged();

// Documents or the mode are about to change: search and selection belong to what goes.
void documentsLeaving();

// Other documents are open, or other panes show them.
void documentsChanged();

// The navigation tree has to show another outline, or another grouping.
void outlineChanged();

// Commands are enabled or checked differently.
void commandsChanged();

// Files of binders were found missing or present.
void binderFilesChanged();

}  // namespace quillmere
