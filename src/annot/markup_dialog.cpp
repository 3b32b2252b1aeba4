#include "annot/markup_dialog.h"

#include "annot/markups.h"
#include "base/text_format.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/settings.h"

namespace quillmere {

namespace {

constexpr const char16_t* kHelp =
    u"How to mark up:\r\n"
    u"  Select text, press Ctrl+Spacebar to strike through.\r\n"
    u"  Right-click an annotation to Add Note... or Remove Markup.\r\n"
    u"  Hover over an annotation to view its note.\r\n"
    u"  Edit menu > Create Markup Summary to export all notes.";
constexpr std::int32_t kNoPlace = -1;

std::u16string opacityText(int percent) {
  return formatText(u"%d%%", {decimal(percent)});
}

}  // namespace

MarkupDialogView markupDialogView() {
  const AppSettings& settings = session.settings;
  MarkupDialogView view;
  for (const ColorEntry& color : settings.markupColors) view.colors.push_back(color.name);
  view.highlightRow = static_cast<int>(markupColorRow(settings.highlightColorIndex));
  view.strikeRow = static_cast<int>(markupColorRow(settings.strikeColorIndex));
  view.opacity = limitedMarkupOpacity(settings.highlightOpacity);
  view.opacityText = opacityText(view.opacity);
  view.help = kHelp;
  if (settings.markupDialogX != kNoPlace) {
    view.place = MarkupDialogPlace{settings.markupDialogX, settings.markupDialogY};
  }
  return view;
}

void toggleMarkupDialog() {
  if (markupDialogOpen()) {
    closeMarkupDialog();
  } else {
    openMarkupDialog(markupDialogView());
  }
}

void markupDialogOpened() {
  toolDialogsChanged();
}

void chooseHighlightColor(int row) {
  session.settings.highlightColorIndex = markupColorRow(static_cast<std::uint32_t>(row));
  SaveSettings();
}

void chooseStrikeColor(int row) {
  session.settings.strikeColorIndex = markupColorRow(static_cast<std::uint32_t>(row));
  SaveSettings();
}

std::u16string moveMarkupOpacity(int percent) {
  const int opacity = limitedMarkupOpacity(percent);
  if (opacity != session.settings.highlightOpacity) {
    session.settings.highlightOpacity = opacity;
    session.markupOpacityUnsaved = true;
  }
  return opacityText(opacity);
}

void settleMarkupOpacity() {
  if (!session.markupOpacityUnsaved) return;
  session.markupOpacityUnsaved = false;
  SaveSettings();
}

void markupDialogCloses(const MarkupDialogPlace& place) {
  session.markupOpacityUnsaved = false;
  session.settings.markupDialogX = place.left;
  session.settings.markupDialogY = place.top;
  SaveSettings();
  toolDialogsChanged();
}

}  // namespace quillmere
