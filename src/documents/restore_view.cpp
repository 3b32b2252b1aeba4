#include "documents/restore_view.h"

namespace quillmere {

// Views are kept in binder files, which are not read yet.
void RestoreView(int, std::u16string_view) {}

}  // namespace quillmere
