#pragma once

#include <string>

// Pictures that the user adds to the stamp library.
namespace quillmere {

// Asks for picture files and adds them, all of them or none when there is no room for all.
void ImportStamps();

// Adds one picture as a PNG file of the library. False, with nothing changed, when there is no room
// or the name is taken, when it cannot be decoded or written, or when it is very long or very thin.
// The list is not saved.
bool ImportStampFile(const std::u16string& path);

}  // namespace quillmere
