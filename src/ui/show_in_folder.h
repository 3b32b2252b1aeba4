#pragma once

#include <string>

namespace quillmere {

// Opens the folder of a file with the file selected; false when that fails. The system handles
// messages of this program meanwhile, so documents that others ask to open wait.
bool showInFolder(const std::u16string& path);

}  // namespace quillmere
