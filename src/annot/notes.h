#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Notes: the text that a markup carries under its standard key "Contents".
namespace quillmere {

// The note of a markup of the active document, as it is stored; empty on any failure. `page` is
// zero-based, `annotIndex` counts the page's annotations.
std::u16string ReadMarkupNote(std::int32_t page, std::int32_t annotIndex);

// A note with the line ends of Windows' controls, and without zero units, where they would stop.
std::u16string shownNote(std::u16string_view stored);
// A text from such a control with the line ends of a file.
std::u16string storedNote(std::u16string_view shown);

// Asks for the note of the picked markup and writes it if it was changed.
void EditMarkupNote();

}  // namespace quillmere
