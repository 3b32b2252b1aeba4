#pragma once

#include <cstdint>
#include <string>

namespace quillmere {

enum class CloseOrDelete : std::int32_t { Cancel = 0, Close = 1, Delete = 2 };

// Asks whether to close the binder or to delete it from the disk.
CloseOrDelete AskCloseOrDelete(const std::u16string& binderName);

}  // namespace quillmere
