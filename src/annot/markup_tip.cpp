#include "annot/markup_tip.h"

#include <algorithm>

#include "annot/annotations.h"
#include "annot/markups.h"
#include "annot/notes.h"
#include "annot/tip_window.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr std::size_t kLongestTip = 1000;  // units
constexpr int kMostTipLines = 20;

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

// Lines end with CR LF.
std::u16string firstLines(std::u16string text, int lines) {
  constexpr std::u16string_view kLineEnd = u"\r\n";
  std::size_t end = text.find(kLineEnd);
  while (end != std::u16string::npos && --lines > 0) {
    end = text.find(kLineEnd, end + kLineEnd.size());
  }
  if (end != std::u16string::npos) text.resize(end);
  return text;
}

std::u16string noteOnPane(int pane, std::int32_t annot) {
  const AnnotationHandle annotation = annotationAt(session.panes[pane].page.get(), annot);
  return ReadAnnotString(annotation.get(), "Contents");
}

}  // namespace

// Reads the note only when the pointer reaches another markup, since notes may be long.
void ShowMarkupTip(int clientX, int clientY) {
  MarkupTipState& tip = session.markupTip;
  const bool resting = tip.x == clientX && tip.y == clientY;
  if (tip.quiet && resting) return;
  tip.quiet = false;
  tip.x = clientX;
  tip.y = clientY;
  const int pane = paneUnder(clientX, clientY);
  const std::int32_t annot = HitTestMarkup(pane, clientX, clientY);
  if (annot < 0) return forgetMarkupTip();
  if (tip.pane == pane && tip.annot == annot) return moveTip(clientX, clientY);
  const std::u16string text = tipText(noteOnPane(pane, annot));
  if (text.empty()) return forgetMarkupTip();
  tip.pane = pane;
  tip.annot = annot;
  showTip(text, clientX, clientY);
}

void HideMarkupTip() {
  MarkupTipState& tip = session.markupTip;
  if (tip.pane < 0) return;
  forgetMarkupTip();
  tip.quiet = true;
}

void forgetMarkupTip() {
  MarkupTipState& tip = session.markupTip;
  tip.quiet = false;
  if (tip.pane < 0) return;
  tip.pane = -1;
  tip.annot = -1;
  hideTip();
}

std::u16string tipText(std::u16string_view note) {
  std::size_t length = std::min(note.size(), kLongestTip);
  if (length < note.size() && isHighSurrogate(note[length - 1])) --length;
  return firstLines(shownNote(note.substr(0, length)), kMostTipLines);
}

PixelRect placeTip(int x, int y, int width, int height, int besideX, int besideY,
                   const PixelRect& screen) {
  const int left = std::max(std::min(x + besideX, screen.right - width), screen.left);
  int top = y + besideY;
  if (top + height > screen.bottom) {
    const int above = y - besideY - height;
    top = above >= screen.top ? above : std::max(screen.bottom - height, screen.top);
  }
  return {left, top, left + width, top + height};
}

}  // namespace quillmere
