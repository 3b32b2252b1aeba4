#pragma once

#include <cstdint>
#include <optional>
#include <string>

// The program's ties to the user's shell: the per-user registry, file associations, shortcuts.
namespace quillmere::platform {

// A text value below the current user's registry root; `name` empty for a key's default value.
std::optional<std::u16string> readUserRegistryText(const std::u16string& key,
                                                   const std::u16string& name);

// Sets a text value below the same root, making the key when missing; `name` empty for a key's
// default value. False on failure.
bool setUserRegistryText(const std::u16string& key, const std::u16string& name,
                         const std::u16string& text);

// Likewise, adds a value that has a name but no type and no content.
bool addUserRegistryName(const std::u16string& key, const std::u16string& name);

// Tells the shell that file associations have changed.
void announceAssociationChange();

// The package identity of this process; empty outside a package.
std::u16string packageIdentity();

// The identifier of the program that opens files with this extension (".pdf"), as the association
// service reports it; empty when it reports none.
std::u16string effectiveDefaultHandler(const std::u16string& extension);

// Shows the file in its folder, in a window of the shell. False when the file cannot be found or
// the shell refuses.
bool showInFolder(const std::u16string& path);

struct Shortcut {
  std::u16string path;  // of the .lnk file
  std::u16string target;
  std::u16string description;
};
// Makes or replaces a shortcut. False on failure.
bool createShortcut(const Shortcut& shortcut);

}  // namespace quillmere::platform
