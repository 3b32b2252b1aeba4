#pragma once

#include <fpdf_annot.h>
#include <fpdfview.h>

#include <cstdint>

// Highlights and strikethroughs. They exist only as annotations of the open document: PDFium draws
// them with the page, and any reader shows them.
namespace quillmere {

inline constexpr int kLeastMarkupOpacity = 20;  // percent
inline constexpr int kFullMarkupOpacity = 100;
int limitedMarkupOpacity(int percent);

// The row of the colour table for an index from the settings: the first one when the index lies
// beyond the table.
std::uint32_t markupColorRow(std::uint32_t index);

// The style of a new markup according to the settings.
struct MarkupStyle {
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  unsigned alpha = 255;
};
MarkupStyle highlightStyle();
MarkupStyle strikethroughStyle();

// Marks the selected text with one annotation, FPDF_ANNOT_HIGHLIGHT or FPDF_ANNOT_STRIKEOUT, and
// ends the selection. Does nothing in a viewer, or without selected text that has a size.
void CreateMarkup(FPDF_ANNOTATION_SUBTYPE subtype, unsigned red, unsigned green, unsigned blue,
                  unsigned alpha);

// CreateMarkup in the style of the settings.
void highlightSelection();
void strikeSelectionThrough();

// The annotation index of the topmost markup under a place of the pane in client pixels; -1 when
// there is none. Each quad counts as the upright box around it.
std::int32_t HitTestMarkup(int pane, int clientX, int clientY);

// Makes the markup under a place, if any, the one that Remove and Note act on.
void pickMarkup(int pane, int clientX, int clientY);
// Removes the picked markup together with its note's pop-up.
void RemoveMarkup();
// Clears the pick, because its document goes or commands now act on another one.
void forgetPickedMarkup();

// Drops the panes' cached markup boxes after a change of the page's annotations.
void forgetMarkupBoxes(FPDF_DOCUMENT document, std::int32_t page);

}  // namespace quillmere
