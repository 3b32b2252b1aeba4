#pragma once

#include <fpdfview.h>

// What the rooms report when they change something that is shown elsewhere. app/changes.cpp updates
// everything that depends on it, immediately and in the order listed there. Nothing that it calls
// may itself report a change, toolDialogsChanged() excepted.
namespace quillmere {

// A pane went to another page, or reloaded its page.
void pageShown(int pane);

// A pane's picture of its page changed: it was panned, rendered again, or its selection changed.
void pictureChanged();

// The active pane's zoom changed.
void zoomChanged();

// The panes were laid out with new sizes.
void panesLaidOut();

// Commands now act on the other pane.
void activePaneChanged();

// The pending turns of the pane's document or of its page changed.
void turnsChanged(int pane);

// A markup of the document's page (zero-based) was made or removed, or its note changed.
void markupsChanged(FPDF_DOCUMENT document, int page);

// Annotations may have changed on any page of the document.
void allMarkupsChanged(FPDF_DOCUMENT document);

// Pages came into the document or left it, and those behind them have other numbers.
void pagesChanged(FPDF_DOCUMENT document);

// A placement of the document was made, changed or removed; its annotation may have gone. The
// document may be null.
void placementsChanged(FPDF_DOCUMENT document);

// Stamps came into the library or left it.
void stampLibraryChanged();

// The Add Text or the Mark Up dialog opened or closed. This one may be reported while another is
// handled: documentsChanged() closes Add Text.
void toolDialogsChanged();

// The search results or the current hit changed.
void hitsChanged();

// Documents, their pages or the mode are about to change, so the search and the selection must end.
void documentsLeaving();

// Documents were opened, closed or moved to another pane.
void documentsChanged();

// The pane's document was closed and opened again from a file with the same pages, or could not be
// opened again.
void documentReplaced(int pane);

// The navigation tree must show another outline or another grouping.
void outlineChanged();

// Which commands are enabled or checked changed.
void commandsChanged();

// Binders or the documents that they list changed. Not for what the binder panel does to the
// library itself: it shows that at once, to select the new row.
void bindersChanged();

// Files listed in binders were found to be missing or available.
void binderFilesChanged();

}  // namespace quillmere
