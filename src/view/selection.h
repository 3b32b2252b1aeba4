#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "view/geometry.h"

// The text selection of one pane's page. Places are client pixels unless said otherwise.
namespace quillmere {

// The character of the text page within six pixels of a place; -1 when there is none.
std::int32_t charAtPoint(int pane, int x, int y);

// Ends the text selection, if there is one.
void clearTextSelection();
// The same without reporting the change, for use by what follows other changes. True when there was
// one.
bool dropTextSelection();

// A drag with the left button. It selects nothing until it has reached a second character.
void startTextSelection(int pane, int x, int y);
void moveTextSelection(int x, int y);
void endTextSelection();

// Selects the word at a place; does nothing off a word.
void selectWordAt(int pane, int x, int y);

// Selects all of the pane's page.
void selectAll(int pane);

// True when text of this pane is selected.
bool hasTextSelection(int pane);

// The selected characters in text order, whichever way they were selected.
struct TextRange {
  std::int32_t first = 0;
  std::int32_t count = 0;
};
// Of the pane's text page; nullopt when no text of this pane is selected.
std::optional<TextRange> selectedRange(int pane);

// The selected text; empty without a selection.
std::u16string selectedText();

// Puts the selected text on the clipboard. Failure is silent.
void copySelection();

// Corners of a stretch of text in pixels from the pane's top left corner, in order around it.
struct TextQuad {
  PanePoint corner[4];
};
// The quads of `count` characters from `first` on the pane's page; empty without a text page.
std::vector<TextQuad> textQuads(int pane, std::int32_t first, std::int32_t count);

// An upright rectangle in pixels from the pane's top left corner.
struct PaneBox {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};
// What is painted over the pane's selected text; empty without a selection there.
std::vector<PaneBox> selectionBoxes(int pane);

// The cursor to show over text at a place.
enum class TextCursor {
  None,      // no character there
  Beam,      // the text runs along the screen
  Sideways,  // it runs up or down
};
TextCursor textCursorAt(int pane, int x, int y);

}  // namespace quillmere
