#pragma once

namespace quillmere {

// Whether this user was already asked about the desktop shortcut. True also when there is no data
// folder, so that nobody is asked again and again.
bool desktopShortcutPromptShown();
void rememberDesktopShortcutPrompt();

}  // namespace quillmere
