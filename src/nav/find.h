#pragma once

#include <fpdfview.h>

#include <cstddef>
#include <string>
#include <vector>

#include "nav/find_pattern.h"
#include "session/find_state.h"

// Search in the active pane's document: on the shown pages while the user types, in the whole
// document once the user asks for a result.
namespace quillmere {

// Searches the shown pages for the field's text. The view stays where it is.
void FindInVisiblePages();

// Searches the whole document from its first page and goes to the first hit's page.
void FindInDocument();

// Forgets hits and query and shows that no search is active.
void FindClear();
// The same without reporting the change, for use by what follows other changes. True when a search
// was active.
bool forgetSearch();

// Moves to the next (+1) or previous (-1) hit; the first step after typing searches the document.
void FindStep(int direction);

// Syncs the hits to the page that a pane now shows; part of what follows a page turn.
void FindSyncToPage(int pane);

// Shows what the search found.
void FindStatusText();
std::u16string findStatus();

// Compiles a pattern; an invalid one is noted in the find state.
bool FindCompilePattern(const std::u16string& text, FindPattern& regex);

// Appends the page's hits until the list holds `limit`; 0 for no limit. True when it was reached.
bool FindRegexPage(FPDF_PAGE page, int pageIndex, FindPattern& regex, std::size_t limit,
                   std::vector<FindResult>& results);

}  // namespace quillmere
