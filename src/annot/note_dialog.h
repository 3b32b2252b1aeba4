#pragma once

#include <optional>
#include <string>

namespace quillmere {

// What the dialog for a text of several lines says and shows.
struct NoteQuestion {
  std::u16string title;
  std::u16string prompt;
  std::u16string text;  // with CR LF at its line ends; it comes up selected
};

// Shows the dialog and waits: the text that it was ended with, again with CR LF; nothing when it
// was cancelled or could not be shown.
std::optional<std::u16string> askForNote(const NoteQuestion& question);

}  // namespace quillmere
