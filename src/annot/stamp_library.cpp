#include "annot/stamp_library.h"

namespace quillmere {

// The library is empty until pictures can be imported.
void LoadStampLibrary() {}

}  // namespace quillmere
