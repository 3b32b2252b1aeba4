#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "annot/markup_dialog.h"
#include "annot/note_dialog.h"
#include "annot/text_dialog.h"
#include "panels/close_or_delete_dialog.h"
#include "ui/popup_menu.h"

// The program's own dialogs as the tests see them: what was shown is recorded here, what a person
// does is scripted here.
namespace quillmere::test {

struct ShownTip {
  std::u16string text;
  int x = 0;  // the pointer's position
  int y = 0;
};

struct DialogScript {
  // Answers to note dialogs in order; nullopt means cancelled. A dialog without an answer fails the
  // test and counts as cancelled.
  std::deque<std::optional<std::u16string>> noteAnswers;
  std::vector<NoteQuestion> noteQuestions;
  // If set, it answers instead.
  std::function<std::optional<std::u16string>(const NoteQuestion&)> answerNote;
  std::function<void()> onNote;  // runs while the dialog is up

  // Commands chosen in menus, in order; without one the menu is dismissed.
  std::deque<std::uint32_t> menuAnswers;
  std::vector<std::vector<MenuRow>> menus;
  std::function<void()> onMenu;  // runs while a menu is up

  // Answers to the question whether a binder is to be closed or deleted. Without one it is
  // cancelled.
  std::deque<CloseOrDelete> closeOrDeleteAnswers;
  std::vector<std::u16string> closeOrDeleteQuestions;  // names of the binders

  std::optional<ShownTip> tip;  // the tip that is visible now
  int tipsShown = 0;            // how often its text was set

  std::optional<MarkupDialogView> markupDialog;   // while it is open
  MarkupDialogPlace markupDialogPlace{300, 200};  // where the user has moved it

  std::optional<TextDialogView> textDialog;   // while it is open
  TextDialogPlace textDialogPlace{320, 220};  // where the user has moved it
};

DialogScript& dialogScript();
void resetDialogScript();

}  // namespace quillmere::test
