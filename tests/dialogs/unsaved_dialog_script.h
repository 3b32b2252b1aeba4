#pragma once

#include <functional>
#include <string>
#include <vector>

#include "documents/unsaved_dialog.h"

namespace quillmere::test {

// Answers the dialog of unsaved files in place of a person. Without an answer it is cancelled.
struct UnsavedDialogScript {
  std::function<UnsavedAnswer(std::vector<UnsavedFile>&)> answer;
  std::vector<std::u16string> titles;               // of the dialogs that came
  std::vector<std::vector<std::u16string>> labels;  // their rows
};

UnsavedDialogScript& unsavedDialogScript();

}  // namespace quillmere::test
