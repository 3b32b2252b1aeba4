#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The dialog that says what clicks on the page place. While it is open the text tool is armed.
namespace quillmere {

inline constexpr int kMostTextUnits = 256;

struct TextDialogPlace {
  int left = 0;  // screen pixels
  int top = 0;
};

// What the dialog shows when it opens.
struct TextDialogView {
  std::u16string text;
  std::vector<std::u16string> fonts;
  std::vector<std::u16string> sizes;  // points; the user may type others
  std::vector<std::u16string> colors;
  int fontRow = 0;
  std::u16string size;
  int colorRow = 0;
  std::optional<TextDialogPlace> place;  // where it was last; nullopt when unknown
};
TextDialogView textDialogView();

// Opens the dialog, or closes it when it is open.
void toggleTextDialog();

// Called by the dialog. Rows that a list does not have count as the first one.
void textDialogOpened();
void changeDialogText(const std::u16string& text);
void chooseTextFont(int row);
// A size as typed or chosen, clamped to the limits. The last size stays if it is not above 0.
void changeTextSize(std::u16string_view typed);
void chooseTextColor(int row);
// The dialog has closed; it will open here again.
void textDialogCloses(const TextDialogPlace& place);

// The window. Opening does nothing when Windows refuses; closing does nothing when it is not open.
bool textDialogOpen();
void openTextDialog(const TextDialogView& view);
void closeTextDialog();

}  // namespace quillmere
