#pragma once

namespace quillmere {

// Forgets hits and query and shows that no search is in force.
void FindClear();

// Brings the hits up to the page that a pane now shows.
void FindSyncToPage(int pane);

}  // namespace quillmere
