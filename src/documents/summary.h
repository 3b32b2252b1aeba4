#pragma once

#include <string>

#include "session/pdfium_handles.h"

namespace quillmere {

// Writes a report of the active pane's highlights and strikethroughs to a file that the user
// chooses, and opens it in a viewer of its own.
void CreateMarkupSummary();

// Its second half, once the report is built from the document at `source`. Says so when `summary`
// is null because it could not be built. Closes it in any case.
void saveMarkupSummary(DocumentHandle summary, const std::u16string& source);

}  // namespace quillmere
