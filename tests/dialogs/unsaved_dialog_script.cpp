#include "dialogs/unsaved_dialog_script.h"

namespace quillmere {

namespace test {

UnsavedDialogScript& unsavedDialogScript() {
  static UnsavedDialogScript script;
  return script;
}

}  // namespace test

UnsavedAnswer ShowUnsavedDialog(std::vector<UnsavedFile>& files, const std::u16string& title) {
  test::UnsavedDialogScript& script = test::unsavedDialogScript();
  script.titles.push_back(title);
  script.labels.emplace_back();
  for (const UnsavedFile& file : files) script.labels.back().push_back(file.label);
  return script.answer ? script.answer(files) : UnsavedAnswer::Cancel;
}

}  // namespace quillmere
