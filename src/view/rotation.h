#pragma once

#include <string>

#include "session/pane_slot.h"
#include "ui/boxes.h"

// Turns are kept beside the document and applied to what is shown, until they are saved. Turns of
// single pages stay behind when the mode changes to or from TwoDocuments, and come back with it.
namespace quillmere {

// Turns the whole document, or the page that the pane has open, clockwise by a quarter. Does
// nothing in a viewer and without a page.
void rotateDocument(int pane);
void rotatePage(int pane);

// The turns of the pane's document that wait for another mode; null where it cannot have any.
PageRotations* waitingTurnsOf(int pane);
// True when a page has such turns.
bool turnsWait(int pane);

// Gives pages without a turn in the present mode the one that waits, and shows it. To be called
// before the document is written or goes: nothing else would write what waits.
void gatherTurns(int pane);

// For when the pane's document goes for good.
void forgetWaitingTurns(int pane);

// Writes the pending turns of the pane's document into it, as its pages' own rotation.
void commitRotations(int pane);

// Gathers the pending turns and asks whether to save them with the pane's document. Yes: they were
// written into it, or there are none. No: they stay pending. Cancel: the save must not go on.
BoxAnswer confirmRotationSave(int pane);

// The question that it asks; empty when nothing is pending.
std::u16string rotationQuestion(int pane);

}  // namespace quillmere
