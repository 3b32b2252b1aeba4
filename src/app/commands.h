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

// What becomes of a command in a read-only viewer.
enum class ViewerRule {
  Allowed,
  Greyed,   // its menu items are disabled
  Refused,  // and it is dropped before its handler runs
};

// One command: what it is called, when it can be had, what it does.
struct Command {
  std::uint32_t id;
  const char16_t* text;  // as menus show it, a tab before the key's name
  ViewerRule inViewer;
  bool (*enabled)();  // null for always
  bool (*checked)();  // null for never
  void (*run)();
  // The resource APPACCEL has the same keys, since the system reads them from there.
  Accelerator accelerator{};
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
