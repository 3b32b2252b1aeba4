#include "view/selection.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "platform/clipboard.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/text_rects.h"

namespace quillmere {

namespace {

constexpr int kHitTolerance = 6;  // pixels
constexpr char16_t kRightSingleQuote = 0x2019;

bool bothEndsValid() {
  return session.selection.anchorChar >= 0 && session.selection.endChar >= 0;
}

FPDF_TEXTPAGE textPageOf(int pane) {
  return session.panes[pane].textPage.get();
}

bool isWordCharacter(FPDF_TEXTPAGE textPage, std::int32_t index) {
  const unsigned code = FPDFText_GetUnicode(textPage, index);
  if (code > 0xFFFF) return false;
  const char16_t unit = static_cast<char16_t>(code);
  return unit == u'\'' || unit == u'-' || unit == u'_' || unit == kRightSingleQuote ||
         platform::isLetterOrDigit(unit);
}

void select(int pane, std::int32_t first, std::int32_t last) {
  TextSelection& selection = session.selection;
  selection.active = true;
  selection.dragging = false;
  selection.pane = pane;
  selection.anchorChar = first;
  selection.endChar = last;
  pictureChanged();
}

PaneBox boundingBox(const TextQuad& quad) {
  const auto [left, right] = std::minmax({quad.corner[0].x, quad.corner[2].x});
  const auto [top, bottom] = std::minmax({quad.corner[0].y, quad.corner[2].y});
  return {left, top, right, bottom};
}

}  // namespace

std::int32_t charAtPoint(int pane, int x, int y) {
  const PaneSlot& slot = session.panes[pane];
  if (!slot.page || !slot.textPage) return -1;
  const PixelRect rect = paneRect(pane);
  const PagePoint point = paneToPage(pane, x - rect.left, y - rect.top);
  const double tolerance = scaled(kHitTolerance) / static_cast<double>(slot.zoom);
  const int index =
      FPDFText_GetCharIndexAtPos(slot.textPage.get(), point.x, point.y, tolerance, tolerance);
  return std::max(index, -1);
}

bool dropTextSelection() {
  TextSelection& selection = session.selection;
  if (!selection.active && !selection.dragging) return false;
  selection.active = false;
  selection.dragging = false;
  selection.pane = -1;
  selection.endChar = -1;
  return true;
}

void clearTextSelection() {
  if (dropTextSelection()) pictureChanged();
}

void startTextSelection(int pane, int x, int y) {
  clearTextSelection();
  if (!session.panes[pane].page) return;
  TextSelection& selection = session.selection;
  selection.anchorChar = charAtPoint(pane, x, y);
  selection.dragging = true;
  selection.pane = pane;
  selection.endChar = selection.anchorChar;
  beginGesture(Gesture::Select, x, y);
}

void moveTextSelection(int x, int y) {
  TextSelection& selection = session.selection;
  if (!selection.dragging || !session.panes[selection.pane].page) return;
  const std::int32_t hit = charAtPoint(selection.pane, x, y);
  if (hit < 0) return;
  if (selection.anchorChar < 0) selection.anchorChar = hit;
  if (hit == selection.endChar) return;
  selection.active = true;
  selection.endChar = hit;
  pictureChanged();
}

void endTextSelection() {
  endGesture(Gesture::Select);
  TextSelection& selection = session.selection;
  if (!selection.dragging) return;
  selection.dragging = false;
  if (selection.anchorChar >= 0 && selection.anchorChar != selection.endChar) {
    pictureChanged();
  } else {
    clearTextSelection();
  }
}

void selectWordAt(int pane, int x, int y) {
  const FPDF_TEXTPAGE textPage = textPageOf(pane);
  const std::int32_t hit = charAtPoint(pane, x, y);
  if (hit < 0 || !isWordCharacter(textPage, hit)) return;
  std::int32_t first = hit;
  std::int32_t last = hit;
  const std::int32_t count = FPDFText_CountChars(textPage);
  while (first > 0 && isWordCharacter(textPage, first - 1)) --first;
  while (last + 1 < count && isWordCharacter(textPage, last + 1)) ++last;
  select(pane, first, last);
}

void selectAll(int pane) {
  const FPDF_TEXTPAGE textPage = textPageOf(pane);
  if (textPage == nullptr) return;
  const int count = FPDFText_CountChars(textPage);
  if (count > 0) select(pane, 0, count - 1);
}

bool hasTextSelection(int pane) {
  const TextSelection& selection = session.selection;
  return selection.active && selection.pane == pane && bothEndsValid();
}

std::optional<TextRange> selectedRange(int pane) {
  if (!hasTextSelection(pane)) return std::nullopt;
  const TextSelection& selection = session.selection;
  return TextRange{std::min(selection.anchorChar, selection.endChar),
                   std::abs(selection.endChar - selection.anchorChar) + 1};
}

std::u16string selectedText() {
  const std::optional<TextRange> range = selectedRange(session.selection.pane);
  if (!range) return {};
  const FPDF_TEXTPAGE textPage = textPageOf(session.selection.pane);
  if (textPage == nullptr) return {};
  std::vector<unsigned short> units(static_cast<std::size_t>(range->count) + 2);
  const int written = FPDFText_GetText(textPage, range->first, range->count, units.data());
  if (written <= 1) return {};
  return std::u16string(units.begin(), units.begin() + written - 1);
}

void copySelection() {
  const std::u16string text = selectedText();
  if (!text.empty()) platform::setClipboardText(text);
}

std::vector<TextQuad> textQuads(int pane, std::int32_t first, std::int32_t count) {
  std::vector<TextQuad> quads;
  const FPDF_TEXTPAGE textPage = textPageOf(pane);
  if (textPage == nullptr) return quads;
  for (const PageBox& box : textRects(textPage, first, count)) {
    quads.push_back(
        {{pageToPane(pane, box.left, box.top), pageToPane(pane, box.right, box.top),
          pageToPane(pane, box.right, box.bottom), pageToPane(pane, box.left, box.bottom)}});
  }
  return quads;
}

std::vector<PaneBox> selectionBoxes(int pane) {
  std::vector<PaneBox> boxes;
  const std::optional<TextRange> range = selectedRange(pane);
  if (!range) return boxes;
  for (const TextQuad& quad : textQuads(pane, range->first, range->count)) {
    boxes.push_back(boundingBox(quad));
  }
  return boxes;
}

TextCursor textCursorAt(int pane, int x, int y) {
  const std::int32_t hit = charAtPoint(pane, x, y);
  if (hit < 0) return TextCursor::None;
  FS_MATRIX matrix{};
  if (!FPDFText_GetMatrix(textPageOf(pane), hit, &matrix)) return TextCursor::Beam;
  const bool turnedByText = std::abs(matrix.a) < std::abs(matrix.b);
  const bool turnedByPage = (pageRotationOf(pane) & 1) != 0;
  return turnedByText == turnedByPage ? TextCursor::Beam : TextCursor::Sideways;
}

}  // namespace quillmere
