#pragma once

#include <cstdint>
#include <string>

// The stamp that shows the current day.
namespace quillmere {

inline constexpr char16_t kDateStampFile[] = u"__date__.png";

// Month, day and year of a date given as year * 10000 + month * 100 + day, such as "3/9/2026".
std::u16string dateStampText(std::uint32_t date);

// Draws today's date into its file in the stamps folder, replacing the old one. On failure the old
// one goes all the same, as far as it can be deleted.
void RenderDateStamp();

}  // namespace quillmere
