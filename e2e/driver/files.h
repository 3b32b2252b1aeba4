#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Files that scenarios make and check. Paths are Windows paths.
namespace quillmere::e2e {

// "%LOCALAPPDATA%\Quillmere".
std::wstring userDataFolder();
std::wstring settingsFile();
std::wstring desktopFolder();
// A folder for the files of the running scenario; ends without a backslash.
std::wstring scenarioFolder();

// Empties the user data and the scenario folder. With `promptAnswered`, the question of the first
// start counts as answered.
void prepareFolders(bool promptAnswered);

bool exists(const std::wstring& path);
void removeTree(const std::wstring& folder);
// False when not all of it could be written.
bool writeFile(const std::wstring& path, const std::string& bytes);
std::string readFile(const std::wstring& path);
FILETIME lastWrite(const std::wstring& path);
// Runs `action` and waits until it has written the file. A file that somebody reads cannot be
// replaced, so look at it only then.
bool isWrittenBy(const std::wstring& path, const std::function<void()>& action);
// Writes a file into the scenario folder and returns its path.
std::wstring makeFile(const std::wstring& name, const std::string& bytes);

// A value in quillmere.ini; empty when absent. setSetting makes the file, with its UTF-16 mark, if
// needed.
std::wstring setting(const wchar_t* section, const wchar_t* key);
void setSetting(const wchar_t* section, const wchar_t* key, const std::wstring& value);
// The file's lines, read as UTF-16 without its mark.
std::vector<std::wstring> settingsLines();

}  // namespace quillmere::e2e
