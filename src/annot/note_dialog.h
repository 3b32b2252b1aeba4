#pragma once

#include <optional>
#include <string>

namespace quillmere {

// The texts of the dialog for a note of several lines.
struct NoteQuestion {
  std::u16string title;
  std::u16string prompt;
  std::u16string text;  // with CR LF at its line ends; selected when the dialog opens
};

// Shows the dialog and waits. The text it was closed with, again with CR LF; nullopt when it was
// cancelled or could not be shown.
std::optional<std::u16string> askForNote(const NoteQuestion& question);

}  // namespace quillmere
