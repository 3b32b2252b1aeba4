#include "store/onboarding.h"

#include <string>

#include "platform/profile.h"
#include "store/data_folder.h"

namespace quillmere {

namespace {

constexpr const char16_t* kSection = u"Onboarding";
constexpr const char16_t* kShortcutPromptKey = u"DesktopShortcutPromptShown";

}  // namespace

bool desktopShortcutPromptShown() {
  const std::u16string path = GetIniPath();
  return path.empty() || platform::readProfileInteger(kSection, kShortcutPromptKey, 0, path) != 0;
}

void rememberDesktopShortcutPrompt() {
  const std::u16string path = GetIniPath();
  if (path.empty()) return;
  seedIniFile(path);
  platform::writeProfileText(kSection, kShortcutPromptKey, u"1", path);
}

}  // namespace quillmere
