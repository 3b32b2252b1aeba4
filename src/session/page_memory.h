#pragma once

// Keeps memory use level while pages are turned. Left alone, PDFium holds on to everything it has
// read until the document is closed.
namespace quillmere {

inline constexpr int kPagesBetweenReleases = 64;

// Counts a page that the pane has loaded. Every so many pages, PDFium frees what it parsed for
// pages that are no longer open and reads it again when needed. A document altered in memory keeps
// everything, as does one too short to matter. Handles of links, actions and destinations are
// invalid after that.
void notePageRead(int pane);

// The same, at once, after many pages of the pane's document were read in a row.
void noteDocumentRead(int pane);

}  // namespace quillmere
