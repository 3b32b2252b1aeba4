#include "nav/find_bar.h"

#include <algorithm>

#include "nav/find.h"
#include "platform/clipboard.h"
#include "platform/find_bar.h"
#include "platform/main_window.h"
#include "session/density.h"
#include "session/session.h"
#include "view/panes.h"
#include "view/selection.h"

namespace quillmere {

namespace {

constexpr std::size_t kLongestTaken = 80;  // units taken from a selection or the clipboard

constexpr FindControl kControls[] = {
    {kFindLiteralMode, FindControlKind::FirstRadio, u"Find", 10, 48},
    {kFindRegexMode, FindControlKind::Radio, u"RegEx", 62, 62},
    {kFindFirstSeparator, FindControlKind::Separator, u"", 132, 2},
    {kFindMatchCase, FindControlKind::Check, u"Match case", 142, 94},
    {kFindWholeWord, FindControlKind::Check, u"Whole word", 244, 96},
    {kFindSecondSeparator, FindControlKind::Separator, u"", 348, 2},
    {kFindSearchLabel, FindControlKind::Label, u"Search:", 358, 50},
    {kFindField, FindControlKind::Edit, u"", 414, -598},
    {kFindPrevious, FindControlKind::Button, u"\u25B2", -182, 28},
    {kFindNext, FindControlKind::Button, u"\u25BC", -152, 28},
    {kFindStatusLabel, FindControlKind::CentredLabel, u"", -122, 90},
    {kFindCloseButton, FindControlKind::Button, u"\u00D7", -28, 24},
};

std::u16string firstLine(std::u16string text) {
  text.resize(std::min(text.find_first_of(u"\r\n"), text.size()));
  text.resize(std::min(text.size(), kLongestTaken));
  return text;
}

void showBar(bool visible) {
  session.findBarVisible = visible;
  platform::layoutMainWindow();
  refitPanes();
}

void searchAgain() {
  if (session.find.query.empty()) return;
  if (session.find.wholeDocument) {
    FindInDocument();
  } else {
    FindInVisiblePages();
  }
}

}  // namespace

std::span<const FindControl> findBarControls() {
  return kControls;
}

FindControlPlace placeOf(const FindControl& control, int barWidth) {
  FindControlPlace place;
  place.x = control.x >= 0 ? scaled(control.x) : barWidth + scaled(control.x);
  place.y = scaled(kFindControlTop);
  place.width = control.width >= 0 ? scaled(control.width) : barWidth + scaled(control.width);
  place.width = std::max(place.width, 0);
  place.height = scaled(kFindControlHeight);
  return place;
}

void OpenFindBar() {
  if (!session.findBarVisible) showBar(true);
  const std::u16string taken = firstLine(selectedText());
  if (!taken.empty()) platform::setFindFieldText(taken);
  platform::focusFindField();
  if (!platform::findFieldText().empty()) FindInDocument();
}

void CloseFindBar() {
  if (!session.findBarVisible) return;
  FindClear();
  platform::focusMainWindow();  // first, since hiding a focused control moves the focus too
  showBar(false);
}

void chooseFindMode(bool regex) {
  session.find.regexMode = regex;
  platform::enableFindOptions(!regex);
  searchAgain();
}

void chooseMatchCase(bool on) {
  session.find.matchCase = on;
  searchAgain();
}

void chooseWholeWord(bool on) {
  session.find.wholeWord = on;
  searchAgain();
}

// A half-typed pattern may be invalid, so RegEx mode waits for Enter.
void findFieldChanged() {
  if (session.find.regexMode) {
    FindClear();
  } else {
    FindInVisiblePages();
  }
}

void stepFromFindBar(int direction) {
  FindStep(direction);
  platform::focusMainWindow();
}

void pasteIntoFindField() {
  if (!session.findBarVisible) return;
  const auto text = platform::clipboardText();
  if (text) platform::insertIntoFindField(firstLine(*text));
}

}  // namespace quillmere
