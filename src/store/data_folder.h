#pragma once

#include <string>

namespace quillmere {

// The folder of everything that the program keeps for this user, with a trailing backslash. Made
// when missing. Empty when the system does not tell where such folders lie.
std::u16string GetAppDataFolder();

// The settings file in that folder; empty when there is no folder. The first call of a process that
// may write makes the file with the mark that keeps it in UTF-16.
std::u16string GetIniPath();

// Makes the settings file with that mark where none exists, once in a process. For those who write
// to it in a process that otherwise does not.
void seedIniFile(const std::u16string& iniPath);

// Makes the folders for stamps, binders and shelved documents and notes their paths in the session.
void makeDataFolders();

}  // namespace quillmere
