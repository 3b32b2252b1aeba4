#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "annot/markup_dialog.h"
#include "annot/note_dialog.h"

// The program's own dialogs as the tests see them: what was shown is recorded here, what a person
// does is scripted here.
namespace quillmere::test {

struct ShownTip {
  std::u16string text;
  int x = 0;  // where the pointer was
  int y = 0;
};

struct DialogScript {
  // Answers to note dialogs in their order; nothing means cancelled. A dialog without an answer
  // fails the test and counts as cancelled.
  std::deque<std::optional<std::u16string>> noteAnswers;
  std::vector<NoteQuestion> noteQuestions;
  // Set: answers in place of the above.
  std::function<std::optional<std::u16string>(const NoteQuestion&)> answerNote;
  std::function<void()> onNote;  // runs while the dialog is up

  std::optional<ShownTip> tip;  // what is to be seen now
  int tipsShown = 0;            // how often its text was set

  std::optional<MarkupDialogView> markupDialog;   // while it is open
  MarkupDialogPlace markupDialogPlace{300, 200};  // where the person has put it
};

DialogScript& dialogScript();
void resetDialogScript();

}  // namespace quillmere::test
