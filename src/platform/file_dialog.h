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
  std::u16string folder;  // where the dialog begins; empty for the system's choice
};

// Asks for existing files. Returns full paths in the dialog's order; empty when the user cancelled
// or the dialog could not be shown.
std::vector<std::u16string> chooseFilesToOpen(const OpenDialogRequest& request);

struct SaveDialogRequest {
  std::u16string title;  // empty for the system's own
  std::vector<FileFilter> filters;
  std::u16string defaultExtension;  // without a dot; added to a name that has none
  std::u16string name;              // what stands in the name field at first
  std::u16string folder;            // where the dialog begins; empty for the system's choice
};

// Asks where a file shall be written, and whether one that is there may be replaced. Its full path;
// empty when the user cancelled or the dialog could not be shown.
std::u16string chooseFileToSave(const SaveDialogRequest& request);

}  // namespace quillmere::platform
