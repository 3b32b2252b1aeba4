#pragma once

#include <cstdint>
#include <string>

// Placing text on the page by clicks, while the Add Text dialog is open.
namespace quillmere {

// Whether a press at this client place would place text. Shift leaves the mouse to panning.
bool textToolPlaces(int x, int y);

// A press of the left button: places the text there. False when the tool does not take it.
bool pressTextTool(int x, int y);

// A release of the right button over the page: turns the text a quarter clockwise. False when the
// tool does not take it.
bool turnTextTool(int x, int y);

// The pointer moved there, or left the window: the preview follows it.
void moveTextTool(int x, int y);
void leaveTextTool();
// The Shift key went down or up: it hides the preview.
void changeTextToolShift();

// Adds a text to a page of the active document, with the start of its baseline at a point of the
// page. `turns` are the view's clockwise quarter turns, against which it stands upright. Nothing
// happens in a read-only process, for blank text, and when the user keeps another document's
// pending placements.
void PlaceTextDrop(std::int32_t page, double pageX, double pageY, const std::u16string& text,
                   std::int32_t fontSize, std::int32_t fontIndex, std::int32_t colorIndex,
                   std::uint32_t turns);

}  // namespace quillmere
