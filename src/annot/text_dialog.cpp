#include "annot/text_dialog.h"

#include <algorithm>

#include "annot/placement_fonts.h"
#include "annot/placement_record.h"
#include "base/text_format.h"
#include "platform/leading_integer.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/settings.h"

namespace quillmere {

namespace {

constexpr std::int32_t kSizes[] = {6,  8,  9,  10, 11, 12, 14, 16, 18,
                                   20, 24, 28, 32, 36, 48, 64, 80, 96};
constexpr std::int32_t kNoPlace = -1;

std::uint32_t rowOf(std::uint32_t row, std::size_t rows) {
  return row < rows ? row : 0;
}

}  // namespace

TextDialogView textDialogView() {
  const AppSettings& settings = session.settings;
  TextDialogView view;
  view.text = session.textTool.text;
  for (const PlacementFont& font : PlacementFontTable) view.fonts.emplace_back(font.label);
  for (const std::int32_t size : kSizes) view.sizes.push_back(decimal(size));
  for (const ColorEntry& color : settings.textColors) view.colors.push_back(color.name);
  view.fontRow = static_cast<int>(rowOf(settings.textFontIndex, view.fonts.size()));
  view.size = decimal(settings.textSizePt);
  view.colorRow = static_cast<int>(rowOf(settings.textColorIndex, view.colors.size()));
  if (settings.textDialogX != kNoPlace) {
    view.place = TextDialogPlace{settings.textDialogX, settings.textDialogY};
  }
  return view;
}

void toggleTextDialog() {
  if (textDialogOpen()) {
    closeTextDialog();
  } else {
    openTextDialog(textDialogView());
  }
}

void textDialogOpened() {
  session.textTool.armed = true;
  session.textTool.extraTurns = 0;
  session.textTool.pointerKnown = false;
  toolDialogsChanged();
}

void changeDialogText(const std::u16string& text) {
  session.textTool.text = text.substr(0, kMostTextUnits);
  pictureChanged();
}

void chooseTextFont(int row) {
  session.settings.textFontIndex = rowOf(static_cast<std::uint32_t>(row), kPlacementFonts);
  SaveSettings();
  pictureChanged();
}

void changeTextSize(std::u16string_view typed) {
  // Longer numbers are beyond any limit, and would not fit an integer.
  constexpr std::size_t kMostDigits = 9;
  const std::int32_t size = platform::leadingInteger(typed.substr(0, kMostDigits));
  if (size <= 0) return;
  session.settings.textSizePt = std::clamp(size, kLeastFontSize, kLargestFontSize);
  pictureChanged();
}

void chooseTextColor(int row) {
  session.settings.textColorIndex =
      rowOf(static_cast<std::uint32_t>(row), session.settings.textColors.size());
  SaveSettings();
  pictureChanged();
}

void textDialogCloses(const TextDialogPlace& place) {
  session.textTool.armed = false;
  session.textTool.pointerKnown = false;
  session.settings.textDialogX = place.left;
  session.settings.textDialogY = place.top;
  SaveSettings();
  toolDialogsChanged();
}

}  // namespace quillmere
