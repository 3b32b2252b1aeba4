#include "documents/restore_view.h"

namespace quillmere {

// Views are kept in binder files, and none is loaded.
void RestoreView(int, std::u16string_view) {}

}  // namespace quillmere
