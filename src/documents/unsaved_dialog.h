#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillmere {

// A file of a binder with changes that exist only on the shelf.
struct UnsavedFile {
  int binderIndex = 0;
  int fileIndex = 0;
  std::u16string path;   // as in the binder
  std::u16string label;  // base name, then the binder's name
  bool isOpen = false;
  bool save = true;  // false discards the changes
};

enum class UnsavedAnswer : std::int32_t { GoAhead = 1, Cancel = 2 };

// Lets the user choose which of the files to save, and stores the choice in `files`.
UnsavedAnswer ShowUnsavedDialog(std::vector<UnsavedFile>& files, const std::u16string& title);

}  // namespace quillmere
