#pragma once

namespace quillmere {

// Fills the binder tree anew from the loaded binders.
void BuildBinderTree();

}  // namespace quillmere
