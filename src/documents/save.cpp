#include "documents/save.h"

#include "base/limits.h"
#include "base/product.h"
#include "base/text_format.h"
#include "documents/shelve.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "view/rotation.h"

namespace quillmere {

namespace {

bool documentIsOpen() {
  if (documentOf(session.activePane) != nullptr) return true;
  showNotice(u"No document is open.", BoxIcon::Warning);
  return false;
}

std::u16string askForTarget() {
  SaveDialogRequest request;
  request.filters = {{u"PDF Files", u"*.pdf"}};
  request.defaultExtension = u"pdf";
  request.name = fileNameOf(pathOf(session.activePane));
  return askWhereToSave(request);
}

}  // namespace

void SaveCommand() {
  if (session.viewerRole) return;
  const DocumentWork work;
  const int pane = session.activePane;
  if (!documentIsOpen()) return;
  if (pathOf(pane).empty()) {
    showNotice(u"No file path is known. Use Save As.", BoxIcon::Warning);
    return;
  }
  if (confirmRotationSave(pane) == BoxAnswer::Cancel) return;
  if (!SaveDocumentTo(pane, pathOf(pane))) return;
  // The user may have left turns out of the file.
  if (!hasUnsavedChanges()) DropActiveShelfEntry();
}

void SaveAsCommand() {
  if (session.viewerRole) return;
  const DocumentWork work;
  if (!documentIsOpen()) return;
  const std::u16string path = askForTarget();
  if (path.empty() || confirmRotationSave(session.activePane) == BoxAnswer::Cancel) return;
  SaveDocumentTo(session.activePane, path);
}

BoxAnswer PromptSaveBeforeClose(const std::u16string& fileName) {
  if (!changesWouldBeLost(session.activePane)) return BoxAnswer::No;
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
  if (!changesWouldBeLost(session.activePane) || ShelveCurrentDocument()) return BoxAnswer::No;
  return PromptSaveBeforeClose(fileName);
}

}  // namespace quillmere
