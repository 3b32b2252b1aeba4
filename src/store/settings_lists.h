#pragma once

#include <string>
#include <vector>

#include "store/settings_table.h"

// The lists of paths in the settings file: recent documents and loaded binders.
namespace quillmere {

// The non-empty paths of a list; whether the files exist is not checked.
std::vector<std::u16string> readPathList(const PathListRow& list, const std::u16string& iniPath);

// Full paths of the custom binders that the settings name.
std::vector<std::u16string> readBinderPaths(const std::u16string& iniPath);

// Writes the list's length and its paths, and empties those of the first twenty keys that a longer
// list left behind.
void writePathList(const PathListRow& list, const std::vector<std::u16string>& paths,
                   const std::u16string& iniPath);

// Writes only the list of recent documents. Does nothing in a viewer.
void SaveRecentFiles();

// Writes only the list of loaded binders. Does nothing in a viewer or while binders are being
// restored.
void SaveBinderList();

}  // namespace quillmere
