#pragma once

#include <string_view>

namespace quillmere {

// Shows the view that the binder holds for a document that was just opened from it.
void RestoreView(int binderIndex, std::u16string_view path);

}  // namespace quillmere
