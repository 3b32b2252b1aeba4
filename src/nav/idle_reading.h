#pragma once

// Reads what is shown of open documents only after their pages: stamps and text, and the markups
// that stand below bookmarks. In a long document it takes a while to find and read them, so it is
// done in slices while the program waits for the user.
namespace quillmere {

// To be called when placements wait to be read or the navigation tree was rebuilt. Does nothing
// when nothing is missing.
void readAnnotationsWhenIdle();

}  // namespace quillmere
