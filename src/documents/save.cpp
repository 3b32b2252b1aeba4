#include "documents/save.h"

#include "base/product.h"
#include "base/text_format.h"
#include "documents/shelve.h"
#include "platform/sound.h"
#include "session/session.h"

namespace quillmere {

// Documents are not written yet. The sound says that nothing was saved, and callers that save
// before closing keep the document open.
void SaveCommand() {
  platform::beep(platform::Sound::Default);
}

bool SaveDocumentTo(int, const std::u16string&) {
  platform::beep(platform::Sound::Default);
  return false;
}

BoxAnswer PromptSaveBeforeClose(const std::u16string& fileName) {
  if (!hasUnsavedChanges()) return BoxAnswer::No;
  return FollowCloseAnswer(AskSaveBeforeClose(fileName));
}

BoxAnswer AskSaveBeforeClose(const std::u16string& fileName) {
  keepEdits(session.activePane);  // an earlier answer may have led to nothing
  const std::u16string text =
      fileName.empty()
          ? std::u16string(u"This document has unsaved changes.\n\nSave them before closing?")
          : formatText(u"Document \"%s\" has unsaved changes.\n\nSave them before closing?",
                       {fileName});
  return showBox(text, kProductTitle, BoxButtons::YesNoCancel, BoxIcon::Warning);
}

BoxAnswer FollowCloseAnswer(BoxAnswer answer) {
  if (answer == BoxAnswer::Yes) {
    SaveCommand();
    return hasUnsavedChanges() ? BoxAnswer::Cancel : BoxAnswer::Yes;
  }
  if (answer != BoxAnswer::No) return BoxAnswer::Cancel;
  giveUpEdits(session.activePane);
  return BoxAnswer::No;
}

BoxAnswer SaveOrShelveBeforeClose(const std::u16string& fileName) {
  if (!hasUnsavedChanges() || ShelveCurrentDocument()) return BoxAnswer::No;
  return PromptSaveBeforeClose(fileName);
}

}  // namespace quillmere
