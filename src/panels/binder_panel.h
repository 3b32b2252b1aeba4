#pragma once

namespace quillmere {

// Rebuilds the binder tree from the loaded binders.
void BuildBinderTree();

// Repaints the existing rows with their current state.
void RepaintBinderTree();

}  // namespace quillmere
