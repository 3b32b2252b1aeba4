#pragma once

#include <string>

namespace quillmere {

// Starts the check that runs once a day, when the user wants it and this is not a viewer.
void startAutomaticUpdateCheck();

// Checks the installer's manifest at this address and hands it to the system.
void InstallUpdate(const std::u16string& manifestUrl);

}  // namespace quillmere
