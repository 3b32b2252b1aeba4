#pragma once

#include <string>

namespace quillmere {

// Starts the check that runs once a day, when the user wants it and this is no viewer.
void startAutomaticUpdateCheck();

// Hands the installer's manifest at this address to the system, once it has been checked.
void InstallUpdate(const std::u16string& manifestUrl);

}  // namespace quillmere
