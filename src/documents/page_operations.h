#pragma once

#include <cstdint>

#include "session/pdfium_handles.h"

// Edits of whole pages of the active document, in memory until it is saved. Each asks first, ends
// the search and the text selection, and does nothing in a viewer or without a document.
namespace quillmere {

// Deletes the page that the active pane shows.
void DeleteCurrentPage();

// Asks for a document and puts its pages before the active pane's page, or after it.
void InsertDocument(bool below);

// Draws the annotations of all pages, pending placements included, into the pages' contents.
void FlattenAnnotations();

// Removes the annotations of all pages, and all placements.
void RemoveAllAnnotations();

// What follows the question: deletes a zero-based page of the active document, or puts all pages of
// `source` before one, and shows what is there now. The document's placements must have been read.
// A failure leaves the pages as they were and is told.
void deletePage(std::int32_t page);
void insertPages(DocumentHandle source, std::int32_t before);

}  // namespace quillmere
