#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Opens that the user asks for. Each first settles what the shelf holds of the document.
namespace quillmere {

// Opens one document as the user asked, in its shelved state when there is one.
bool openRequested(const std::u16string& path, int pane, int workingDocsMode,
                   bool askBeforeReplace);

// Opens the first of several files in `pane` and lists the others among the documents in use, also
// when the first fails.
void openSeveral(const std::vector<std::u16string>& paths, int pane);

// Files dropped at client x; outside the panes counts as pane 0. The others are listed, and leave
// the recent list, unless the first fails.
void openDropped(const std::vector<std::u16string>& paths, int x);
void openDroppedOnPane(const std::vector<std::u16string>& paths, int pane);

// A path that another instance handed over; an empty one does not even raise the window.
void openHandedOver(const std::u16string& path);

// Asks for files and opens them in `pane`.
void openWithDialog(int pane);

// Opens what an item of the binder tree stands for: binder index in the high 16 bits of `itemData`,
// file index in the low ones. With `otherPaneCounts` a file that the other pane shows counts as
// shown.
void openBinderEntry(std::uint32_t itemData, bool askBeforeReplace, bool otherPaneCounts);

}  // namespace quillmere
