#pragma once

#include <cstdint>

namespace quillmere {

// Runs a command by its id. False when the id is unknown or the viewer refuses it.
bool runCommand(std::uint32_t id);

// Brings check marks and enabling of the menu bar up to date.
void refreshMenus();

}  // namespace quillmere
