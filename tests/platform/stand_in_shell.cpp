#include "platform/shell.h"
#include "platform/text.h"
#include "stand_in.h"

namespace quillmere::platform {

std::optional<std::u16string> readUserRegistryText(const std::u16string& key,
                                                   const std::u16string& name) {
  for (const auto& [place, text] : standIn().registry) {
    if (equalIgnoringCase(place.first, key) && equalIgnoringCase(place.second, name)) return text;
  }
  return std::nullopt;
}

bool setUserRegistryText(const std::u16string& key, const std::u16string& name,
                         const std::u16string& text) {
  if (standIn().lockedRegistryKeys.contains(key)) return false;
  standIn().registry[{key, name}] = text;
  return true;
}

bool addUserRegistryName(const std::u16string& key, const std::u16string& name) {
  if (standIn().lockedRegistryKeys.contains(key)) return false;
  standIn().registryNames.insert({key, name});
  return true;
}

void announceAssociationChange() {
  ++standIn().associationAnnouncements;
}

std::u16string packageIdentity() {
  return standIn().packageIdentity;
}

std::u16string effectiveDefaultHandler(const std::u16string& extension) {
  const auto handler = standIn().defaultHandlers.find(extension);
  return handler == standIn().defaultHandlers.end() ? std::u16string() : handler->second;
}

bool showInFolder(const std::u16string& path) {
  if (standIn().onOpenWithSystem) standIn().onOpenWithSystem();
  if (!standIn().showInFolderResult || !fileExists(path)) return false;
  standIn().shownInFolder.push_back(path);
  return true;
}

bool createShortcut(const Shortcut& shortcut) {
  standIn().shortcuts.push_back(shortcut);
  if (!standIn().shortcutResult) return false;
  const char marker[] = "L";
  return writeFile(shortcut.path, marker, 1);
}

}  // namespace quillmere::platform
