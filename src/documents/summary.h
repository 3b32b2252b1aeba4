#pragma once

namespace quillmere {

// Writes a report of the active pane's highlights and strikethroughs to a file that the user
// chooses, and opens it in a viewer of its own.
void CreateMarkupSummary();

}  // namespace quillmere
