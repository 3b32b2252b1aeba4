#pragma once

namespace quillmere {

// Reads the settings file into the session: settings, the initial view and panels, the main
// window's position, the binders of the last session. Called once, while the main window is made.
void LoadSettings();

// Writes every setting from memory. A file that could not be read at the start keeps the values
// that have not changed since. Does nothing in a viewer or without a data folder; failures are
// silent.
void SaveSettings();

// Writes only the date of the last check for updates. Does nothing in a viewer.
void SaveUpdateCheckDate();

}  // namespace quillmere
