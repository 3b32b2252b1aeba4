#include <gtest/gtest.h>

#include "platform/clipboard.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "platform/text.h"
#include "stand_in.h"

namespace quillmere::platform {
namespace {

bool offers(BoxButtons buttons, BoxAnswer answer) {
  switch (buttons) {
    case BoxButtons::Ok:
      return answer == BoxAnswer::Ok;
    case BoxButtons::OkCancel:
    case BoxButtons::OkDefaultCancel:
      return answer == BoxAnswer::Ok || answer == BoxAnswer::Cancel;
    case BoxButtons::YesNo:
    case BoxButtons::YesDefaultNo:
      return answer == BoxAnswer::Yes || answer == BoxAnswer::No;
    case BoxButtons::YesNoCancel:
      return answer != BoxAnswer::Ok;
  }
  return false;
}

BoxAnswer nextAnswer(const ShownBox& box) {
  if (standIn().chooseAnswer) return standIn().chooseAnswer(box);
  std::deque<BoxAnswer>& answers = standIn().boxAnswers;
  if (answers.empty()) {
    ADD_FAILURE() << "no answer for the box \"" << toUtf8(box.title) << "\": " << toUtf8(box.text);
    return BoxAnswer::Cancel;
  }
  const BoxAnswer answer = answers.front();
  answers.pop_front();
  if (offers(box.buttons, answer)) return answer;
  ADD_FAILURE() << "answer " << static_cast<int>(answer) << " is not offered by the box \""
                << toUtf8(box.title) << "\": " << toUtf8(box.text);
  return BoxAnswer::Cancel;
}

}  // namespace

BoxAnswer showMessageBox(const std::u16string& text, const std::u16string& title,
                         BoxButtons buttons, BoxIcon icon, BoxOwner owner) {
  const ShownBox box{text, title, buttons, icon, owner};
  standIn().boxes.push_back(box);
  const BoxAnswer answer = nextAnswer(box);
  if (standIn().onBox) standIn().onBox(box);
  return answer;
}

void beep(Sound sound) {
  standIn().beeps.push_back(sound);
}

std::vector<std::u16string> chooseFilesToOpen(const OpenDialogRequest& request) {
  standIn().openDialogs.push_back(request);
  auto& answers = standIn().openDialogAnswers;
  if (answers.empty()) {
    ADD_FAILURE() << "no answer for a file dialog \"" << toUtf8(request.title) << "\"";
    return {};
  }
  std::vector<std::u16string> files = std::move(answers.front());
  answers.pop_front();
  if (files.size() > 1 && !request.allowSeveral) {
    ADD_FAILURE() << "several files for a file dialog that gives one";
    files.resize(1);
  }
  return files;
}

std::u16string chooseFileToSave(const SaveDialogRequest& request) {
  standIn().saveDialogs.push_back(request);
  if (standIn().onSaveDialog) standIn().onSaveDialog();
  auto& answers = standIn().saveDialogAnswers;
  if (answers.empty()) {
    ADD_FAILURE() << "no answer for a file dialog \"" << toUtf8(request.title) << "\"";
    return {};
  }
  std::u16string path = std::move(answers.front());
  answers.pop_front();
  return path;
}

bool setClipboardText(const std::u16string& text) {
  if (standIn().clipboardBusy) return false;
  standIn().clipboard = text;
  return true;
}

std::optional<std::u16string> clipboardText() {
  if (standIn().clipboardBusy) return std::nullopt;
  return standIn().clipboard;
}

}  // namespace quillmere::platform
