#include "dialogs/dialog_script.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "annot/tip_window.h"
#include "platform/text.h"
#include "session/waiting_opens.h"

namespace quillmere {

namespace test {

namespace {
DialogScript script;
}

DialogScript& dialogScript() {
  return script;
}

void resetDialogScript() {
  script = DialogScript{};
}

}  // namespace test

using test::dialogScript;

std::optional<std::u16string> askForNote(const NoteQuestion& question) {
  const DocumentWork work;
  test::DialogScript& script = dialogScript();
  script.noteQuestions.push_back(question);
  if (script.answerNote) return script.answerNote(question);
  if (script.noteAnswers.empty()) {
    ADD_FAILURE() << "no answer for the note dialog \"" << platform::toUtf8(question.title) << "\"";
    return std::nullopt;
  }
  if (script.onNote) script.onNote();
  std::optional<std::u16string> answer = std::move(script.noteAnswers.front());
  script.noteAnswers.pop_front();
  return answer;
}

std::uint32_t chooseFromMenu(const std::vector<MenuRow>& rows, int, int) {
  const DocumentWork work;
  test::DialogScript& script = dialogScript();
  script.menus.push_back(rows);
  if (script.onMenu) script.onMenu();
  if (script.menuAnswers.empty()) return 0;
  const std::uint32_t chosen = script.menuAnswers.front();
  script.menuAnswers.pop_front();
  const auto row = std::find_if(rows.begin(), rows.end(), [chosen](const MenuRow& candidate) {
    return candidate.command == chosen;
  });
  if (row == rows.end() || !row->enabled) {
    ADD_FAILURE() << "the menu has no row " << chosen << " that can be chosen";
    return 0;
  }
  return chosen;
}

CloseOrDelete AskCloseOrDelete(const std::u16string& binderName) {
  const DocumentWork work;
  test::DialogScript& script = dialogScript();
  script.closeOrDeleteQuestions.push_back(binderName);
  if (script.closeOrDeleteAnswers.empty()) return CloseOrDelete::Cancel;
  const CloseOrDelete answer = script.closeOrDeleteAnswers.front();
  script.closeOrDeleteAnswers.pop_front();
  return answer;
}

void showTip(const std::u16string& text, int x, int y) {
  dialogScript().tip = test::ShownTip{text, x, y};
  ++dialogScript().tipsShown;
}

void moveTip(int x, int y) {
  if (!dialogScript().tip) return;
  dialogScript().tip->x = x;
  dialogScript().tip->y = y;
}

void hideTip() {
  dialogScript().tip.reset();
}

bool markupDialogOpen() {
  return dialogScript().markupDialog.has_value();
}

void openMarkupDialog(const MarkupDialogView& view) {
  dialogScript().markupDialog = view;
  markupDialogOpened();
}

void closeMarkupDialog() {
  if (!markupDialogOpen()) return;
  dialogScript().markupDialog.reset();
  markupDialogCloses(dialogScript().markupDialogPlace);
}

bool textDialogOpen() {
  return dialogScript().textDialog.has_value();
}

void openTextDialog(const TextDialogView& view) {
  dialogScript().textDialog = view;
  textDialogOpened();
}

void closeTextDialog() {
  if (!textDialogOpen()) return;
  dialogScript().textDialog.reset();
  textDialogCloses(dialogScript().textDialogPlace);
}

}  // namespace quillmere
