#pragma once

namespace quillmere {

// Fills the binder tree anew from the loaded binders.
void BuildBinderTree();

// Shows the present state of the rows as they are.
void RepaintBinderTree();

}  // namespace quillmere
