#pragma once

#include <cstdint>
#include <span>
#include <string>

// The strip across the top of the page area that holds the search.
namespace quillmere {

enum FindBarControl : std::int32_t {
  kFindField = 410,
  kFindPrevious = 411,
  kFindNext = 412,
  kFindStatusLabel = 413,
  kFindCloseButton = 414,
  kFindMatchCase = 415,
  kFindSearchLabel = 416,
  kFindSecondSeparator = 417,
  kFindLiteralMode = 418,
  kFindRegexMode = 419,
  kFindWholeWord = 421,
  kFindFirstSeparator = 424,
};

enum class FindControlKind {
  FirstRadio,
  Radio,
  Separator,
  Check,
  Label,
  Edit,
  Button,
  CentredLabel
};

// One control of the bar. All have the same height and distance from the bar's top.
struct FindControl {
  std::int32_t id;
  FindControlKind kind;
  const char16_t* text;
  std::int32_t x;      // pixels; from the bar's right edge when negative
  std::int32_t width;  // pixels; when negative, the field takes the bar's width less this
};
std::span<const FindControl> findBarControls();

inline constexpr int kFindControlTop = 6;      // pixels
inline constexpr int kFindControlHeight = 22;  // pixels

// Place of a control in a bar `barWidth` pixels wide.
struct FindControlPlace {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
};
FindControlPlace placeOf(const FindControl& control, int barWidth);

// Shows the bar with the selected text in its field, and searches for it.
void OpenFindBar();
// Hides the bar and ends the search.
void CloseFindBar();

// Called when the user chooses a matcher, changes an option, or types.
void chooseFindMode(bool regex);
void chooseMatchCase(bool on);
void chooseWholeWord(bool on);
void findFieldChanged();

// For Enter in the bar and its two buttons; the page gets the keyboard back.
void stepFromFindBar(int direction);

// Pastes the first line of the clipboard's text into the field, cut to what the field takes.
void pasteIntoFindField();

}  // namespace quillmere
