#pragma once

#include <cstdint>
#include <span>

#include "app/command_ids.h"

namespace quillmere {

// A key with its modifiers, as the accelerator table holds it.
struct Accelerator {
  std::uint16_t key = 0;  // virtual key code; 0 for none
  bool control = false;
  bool shift = false;
};

// How a command behaves in a read-only viewer.
enum class ViewerRule {
  Allowed,
  Greyed,   // its menu items are disabled
  Refused,  // also dropped before its handler runs
};

// One command: its name, when it is available, what it does.
struct Command {
  std::uint32_t id;
  const char16_t* text;  // as in menus, with a tab before the key's name
  ViewerRule inViewer;
  bool (*enabled)();  // null for always
  bool (*checked)();  // null for never
  void (*run)();
  // The resource APPACCEL has the same keys, since the system reads them from there.
  Accelerator accelerator{};
};

// Every command except the recent documents, whose ids are a range.
std::span<const Command> allCommands();
// Null for an unknown id.
const Command* findCommand(std::uint32_t id);

// Whether a menu item of the command can be chosen now.
bool commandEnabled(const Command& command);

// Runs a command by its id. False when the id is unknown or a viewer refuses it.
bool runCommand(std::uint32_t id);

// Updates check marks and enabling in the menu bar.
void refreshMenus();

}  // namespace quillmere
