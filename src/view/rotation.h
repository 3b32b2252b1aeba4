#pragma once

#include <string>

#include "ui/boxes.h"

// Turns are kept beside the document and applied to what is shown, until they are saved.
namespace quillmere {

// Turns the whole document, or the page that the pane has open, clockwise by a quarter. Does
// nothing in a viewer and without a page.
void rotateDocument(int pane);
void rotatePage(int pane);

// Writes the pending turns of the pane's document into it, as its pages' own rotation.
void commitRotations(int pane);

// Asks whether to save pending turns with the pane's document. Yes: they were written into it, or
// there are none. No: they stay pending. Cancel: the save must not go on.
BoxAnswer confirmRotationSave(int pane);

// The question that it asks; empty when nothing is pending.
std::u16string rotationQuestion(int pane);

}  // namespace quillmere
