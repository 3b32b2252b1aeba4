#pragma once

#include <cstdint>
#include <span>

#include "core/command_ids.h"

namespace quillmere {

// One command: what it is called, when it can be had, what it does.
struct Command {
  std::uint32_t id;
  const char16_t* text;  // as menus show it, a tab before the key's name
  bool refusedInViewer;  // dropped before its handler runs
  bool greyedInViewer;   // its menu items are disabled there
  bool (*enabled)();     // null for always
  bool (*checked)();     // null for never
  void (*run)();
};

// Every command but the recent documents, whose ids are a range.
std::span<const Command> allCommands();
// Null for an unknown id.
const Command* findCommand(std::uint32_t id);

// Whether a menu item of the command can be chosen now.
bool commandEnabled(const Command& command);

// Runs a command by its id. False when the id is unknown or a viewer refuses it.
bool runCommand(std::uint32_t id);

// Brings check marks and enabling of the menu bar up to date.
void refreshMenus();

}  // namespace quillmere
