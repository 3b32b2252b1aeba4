#pragma once

#include <string>
#include <string_view>

namespace quillmere {

// The typed name without the blanks and tabs around it.
std::u16string_view trimmedBinderName(std::u16string_view typed);

// Why a binder's file cannot have this trimmed name, worded for the user; null when it can.
const char16_t* binderNameComplaint(std::u16string_view name);

}  // namespace quillmere
