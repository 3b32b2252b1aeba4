#pragma once

// The page and view at which each file of a binder was left.
namespace quillmere {

// Stores page and view of the pane in the binder that its document was opened from. In Book pane 0
// counts for both.
void SaveCurrentView(int pane);

// The same for every open document.
void SaveCurrentViews();

}  // namespace quillmere
