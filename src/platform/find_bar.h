#pragma once

#include <string>

// The controls of the find bar, as far as the logic needs them. Without the bar queries are empty
// and everything else is without effect.
namespace quillmere::platform {

std::u16string findFieldText();
// Replaces the text, which counts as typing.
void setFindFieldText(const std::u16string& text);
// Gives the field the keyboard with all of its text selected.
void focusFindField();
// Inserts text in place of what is selected in the field; the user can undo it.
void insertIntoFindField(const std::u16string& text);

void setFindStatus(const std::u16string& text);

// Whether "Match case" and "Whole word" can be chosen; their check marks stay.
void enableFindOptions(bool enabled);

}  // namespace quillmere::platform
