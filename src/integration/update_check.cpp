#include "integration/update_check.h"

namespace quillmere {

// There is no server to ask yet.
void startAutomaticUpdateCheck() {}

}  // namespace quillmere
