#pragma once

#include <string>
#include <vector>

#include "store/settings_table.h"

namespace quillmere {

// The paths of a list, without the empty ones; not looked for on the disk.
std::vector<std::u16string> readPathList(const PathListRow& list, const std::u16string& iniPath);

// Writes the list's length and its paths, and empties the keys that a longer list left behind, as
// far as the first twenty.
void writePathList(const PathListRow& list, const std::vector<std::u16string>& paths,
                   const std::u16string& iniPath);

}  // namespace quillmere
