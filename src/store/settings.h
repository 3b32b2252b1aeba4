#pragma once

namespace quillmere {

// Reads the settings file into the session: settings, start values of view and panels, the place of
// the main window, the binders of the last session. Called once, while the main window is made.
void LoadSettings();

// Writes every setting from memory. Without effect in a viewer or without a data folder; failures
// are silent.
void SaveSettings();

// Writes the date of the last check for updates alone. Without effect in a viewer.
void SaveUpdateCheckDate();

// Writes the list of recent documents alone. Without effect in a viewer.
void SaveRecentFiles();

// Writes the list of loaded binders alone. Without effect while binders are being restored, and in
// a viewer whose settings file is missing.
void SaveBinderList();

}  // namespace quillmere
