#pragma once

#include <fpdfview.h>

#include <string>
#include <vector>

#include "session/markup_entry.h"

// The lists of markups that the session keeps of open documents.
namespace quillmere {

// Reads all markups of a document, in reading order: by page, and from the top of each page down.
void CollectMarkups(FPDF_DOCUMENT document, std::vector<MarkupEntry>& list);

// Forgets all lists. For use where annotations may have changed on any page.
void InvalidateMarkupList();

// The document's markups, collected when first asked for. The list belongs to the session and
// changes with the next call of these functions.
const std::vector<MarkupEntry>& markupsOf(FPDF_DOCUMENT document);

// Collects some of them, for a few milliseconds. False when nothing is left for markupsOf() to
// collect.
bool collectSomeMarkups(FPDF_DOCUMENT document);

// Whether they have been collected, or begun to be: the pages with markups are known then.
bool markupsCollected(FPDF_DOCUMENT document);

// Makes markupsOf() collect one zero-based page again, after an annotation on it was edited. Does
// nothing for a document whose markups have not been collected.
void collectPageLater(FPDF_DOCUMENT document, int page);

// The label of an item of the list: the first words of the marked text, or the kind and the page,
// and the first words of the note.
std::u16string markupLabel(const MarkupEntry& entry);

// The first `limit` words, joined by blanks, with "..." when more follow.
std::u16string firstWords(const std::u16string& text, int limit);

}  // namespace quillmere
