#pragma once

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

}  // namespace quillmere
