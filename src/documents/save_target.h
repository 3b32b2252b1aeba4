#pragma once

#include <string>

namespace quillmere {

inline constexpr int kNoPane = -1;

// True when nothing may be written to `path`: a document of another pane than `writer` is shown
// under it or read from it, or it is a copy of unsaved work. `writer` is kNoPane for what is no
// open document.
bool targetInUse(const std::u16string& path, int writer);

// True when both name one file as spelled: letter case, slashes and dots make no difference.
bool samePath(const std::u16string& left, const std::u16string& right);

}  // namespace quillmere
