#pragma once

// Keeps the memory that turning pages takes level. PDFium holds on to everything it has read until
// the document is closed.
namespace quillmere {

inline constexpr int kPagesBetweenReleases = 64;

// Counts a page that the pane has read. Every so many pages, what PDFium read of the pages that
// were left is given back, to be read again when it is needed. A document that was altered in memory
// keeps everything, and so does one that is too short to fill the memory. Handles of links, actions
// and destinations do not outlive this.
void notePageRead(int pane);

// The same after many pages of the pane's document were read one after the other.
void noteDocumentRead(int pane);

}  // namespace quillmere
