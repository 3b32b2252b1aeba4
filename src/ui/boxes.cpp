#include "ui/boxes.h"

#include "base/product.h"
#include "session/waiting_opens.h"

namespace quillmere {

BoxAnswer showBox(const std::u16string& text, const std::u16string& title, BoxButtons buttons,
                  BoxIcon icon, BoxOwner owner) {
  const DocumentWork work;
  return platform::showMessageBox(text, title, buttons, icon, owner);
}

void showNotice(const std::u16string& text, BoxIcon icon) {
  showBox(text, kProductTitle, BoxButtons::Ok, icon);
}

std::vector<std::u16string> askForFiles(const OpenDialogRequest& request) {
  const DocumentWork work;
  return platform::chooseFilesToOpen(request);
}

std::u16string askWhereToSave(const SaveDialogRequest& request) {
  const DocumentWork work;
  return platform::chooseFileToSave(request);
}

}  // namespace quillmere
