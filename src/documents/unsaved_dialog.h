#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "documents/unsaved_files.h"

namespace quillmere {

enum class UnsavedAnswer : std::int32_t { GoAhead = 1, Cancel = 2 };

// Lets the user choose which of the files to save, and stores the choice in `files`. Cancel leaves
// it as it was, and is the answer while the dialog is open already.
UnsavedAnswer ShowUnsavedDialog(std::vector<UnsavedFile>& files, const std::u16string& title);

}  // namespace quillmere
