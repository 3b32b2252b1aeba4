#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "session/app_settings.h"

namespace quillmere {

// The channels of a color written as "#" and exactly six hexadecimal digits; the name stays empty.
// Returns nullopt for any other text.
std::optional<ColorEntry> parseColorValue(std::u16string_view text);

// A color's channels as "#RRGGBB".
std::u16string colorValueText(const ColorEntry& color);

// Reads one section of colors over `table`. A row without a name or with a malformed value keeps
// the table's colour, which then replaces it in the file, except in a viewer.
void LoadColorTable(const std::u16string& iniPath, const std::u16string& section,
                    std::span<ColorEntry> table);

}  // namespace quillmere
