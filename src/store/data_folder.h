#pragma once

#include <string>

namespace quillmere {

// The folder for everything that the program keeps for this user, with a trailing backslash. Made
// when missing. Empty when the system names no such folder.
std::u16string GetAppDataFolder();

// The settings file in that folder; empty when there is no folder. The first call in a process that
// may write makes the file, with the mark that keeps it in UTF-16.
std::u16string GetIniPath();

// Makes the settings file with that mark if there is none, once in a process. For code that writes
// to it in a process that otherwise does not.
void seedIniFile(const std::u16string& iniPath);

// False while the settings file is there and cannot be read, as when another program has it open
// alone. Whatever it would be read as then is not what it holds.
bool iniFileReadable(const std::u16string& iniPath);

// Makes the folders for stamps, binders and shelved documents and notes their paths in the session.
void makeDataFolders();

}  // namespace quillmere
