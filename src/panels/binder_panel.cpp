#include "panels/binder_panel.h"

namespace quillmere {

// With no binder loaded the tree has no rows.
void BuildBinderTree() {}

void RepaintBinderTree() {}

}  // namespace quillmere
