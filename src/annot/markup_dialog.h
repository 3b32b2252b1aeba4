#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The dialog that chooses what new markups look like. Existing ones stay as they are.
namespace quillmere {

struct MarkupDialogPlace {
  int left = 0;  // screen pixels
  int top = 0;
};

// What the dialog shows when it opens.
struct MarkupDialogView {
  std::vector<std::u16string> colors;  // the names of the rows that both lists offer
  int highlightRow = 0;
  int strikeRow = 0;
  int opacity = 100;  // percent
  std::u16string opacityText;
  std::u16string help;                     // with CR LF at its line ends
  std::optional<MarkupDialogPlace> place;  // where it was last; nullopt when unknown
};
MarkupDialogView markupDialogView();

// Opens the dialog, or closes it when it is open.
void toggleMarkupDialog();

// Called by the dialog. A row that the list does not have counts as the first one; a colour is
// saved at once.
void chooseHighlightColor(int row);
void chooseStrikeColor(int row);
// Sets the opacity while its slider moves, limited to the allowed range. Returns the text to show.
std::u16string moveMarkupOpacity(int percent);
// The slider was released: saves the opacity.
void settleMarkupOpacity();
// The dialog opened.
void markupDialogOpened();
// The dialog has closed; it will open here again.
void markupDialogCloses(const MarkupDialogPlace& place);

// The window. Opening does nothing when Windows refuses; closing does nothing when it is not open.
bool markupDialogOpen();
void openMarkupDialog(const MarkupDialogView& view);
void closeMarkupDialog();

}  // namespace quillmere
