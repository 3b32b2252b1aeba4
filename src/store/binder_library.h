#pragma once

#include <string>
#include <string_view>

namespace quillmere {

inline constexpr int kNoBinder = -1;

// Index of the loaded binder whose file is `path`, ignoring case; kNoBinder when there is none.
int FindBinder(std::u16string_view path);

// Index of the built-in binder of documents in use; kNoBinder when there is none.
int WorkingDocumentsIndex();

// Loads the binder file `path`; its index, or kNoBinder on failure.
int LoadBinder(const std::u16string& path);

bool IsValidBinder(int index);
bool IsValidBinderFile(int index, int fileIndex);

// Stores page and view of the pane in the binder that its document was opened from.
void SaveCurrentView(int pane);

}  // namespace quillmere
