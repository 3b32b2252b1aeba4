#include "integration/update_check.h"

namespace quillmere {

// There is no server to ask yet.
void startAutomaticUpdateCheck() {}

// There is no manifest to install from yet.
void InstallUpdate(const std::u16string&) {}

}  // namespace quillmere
