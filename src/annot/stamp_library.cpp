#include "annot/stamp_library.h"

namespace quillmere {

// The library holds no stamps until pictures can be imported.
void LoadStampLibrary() {}

}  // namespace quillmere
