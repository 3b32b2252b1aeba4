#pragma once

#include <string>

// The find bar's controls, as far as the logic needs them. Without the bar, queries return empty
// text and everything else does nothing.
namespace quillmere::platform {

std::u16string findFieldText();
// Replaces the text, which counts as typing.
void setFindFieldText(const std::u16string& text);
// Focuses the field and selects all of its text.
void focusFindField();
// Replaces the selection in the field with `text`; the user can undo it.
void insertIntoFindField(const std::u16string& text);

void setFindStatus(const std::u16string& text);

// Enables or disables "Match case" and "Whole word"; their check marks stay.
void enableFindOptions(bool enabled);

}  // namespace quillmere::platform
