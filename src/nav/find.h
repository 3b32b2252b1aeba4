#pragma once

#include <fpdfview.h>

#include <cstddef>
#include <string>
#include <vector>

#include "nav/find_pattern.h"
#include "session/find_state.h"

// Search in the document of the active pane: on the pages that are shown while the user types, in
// the whole document once a result is asked for.
namespace quillmere {

// Searches the shown pages for the field's text. The view stays where it is.
void FindInVisiblePages();

// Searches the whole document from its first page and goes to the first hit's page.
void FindInDocument();

// Forgets hits and query and shows that no search is in force.
void FindClear();
// The same without a report of the change, for what follows other changes. True when one was in
// force.
bool forgetSearch();

// Moves to the next (+1) or previous (-1) hit; the first step after typing searches the document.
void FindStep(int direction);

// Brings the hits up to the page that a pane now shows; part of what follows a page turn.
void FindSyncToPage(int pane);

// Shows what the search found.
void FindStatusText();
std::u16string findStatus();

// Compiles a pattern and notes in the find state when it is none.
bool FindCompilePattern(const std::u16string& text, FindPattern& regex);

// Appends the page's hits; 0 for no limit, which counts the whole list. True when it was reached.
bool FindRegexPage(FPDF_PAGE page, int pageIndex, FindPattern& regex, std::size_t limit,
                   std::vector<FindResult>& results);

}  // namespace quillmere
