#pragma once

#include <string>
#include <vector>

namespace quillmere::platform {

struct FileFilter {
  std::u16string name;     // what the user sees
  std::u16string pattern;  // such as "*.pdf"
};

struct OpenDialogRequest {
  std::u16string title;  // empty for the system's own
  std::vector<FileFilter> filters;
  bool allowSeveral = false;
};

// Asks for existing files. Returns full paths in the dialog's order; empty when the user cancelled
// or the dialog could not be shown.
std::vector<std::u16string> chooseFilesToOpen(const OpenDialogRequest& request);

}  // namespace quillmere::platform
