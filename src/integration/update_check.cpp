#include "integration/update_check.h"

namespace quillmere {

// There is no server to ask yet.
void startAutomaticUpdateCheck() {}

// Nor a manifest to install from.
void InstallUpdate(const std::u16string&) {}

}  // namespace quillmere
