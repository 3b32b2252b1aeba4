#pragma once

#include <string>
#include <vector>

#include "platform/file_dialog.h"
#include "platform/message_box.h"

// Every box and file dialog of the program. While one is up, files that arrive must wait, since
// what it asks about must not change meanwhile.
namespace quillmere {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::BoxOwner;
using platform::OpenDialogRequest;
using platform::SaveDialogRequest;

// Shows a box and waits for its answer. A box that cannot be shown answers Cancel.
BoxAnswer showBox(const std::u16string& text, const std::u16string& title, BoxButtons buttons,
                  BoxIcon icon, BoxOwner owner = BoxOwner::MainWindow);

// Shows a message in a box titled with the program's name.
void showNotice(const std::u16string& text, BoxIcon icon);

// Asks for existing files. Returns full paths in the dialog's order; empty when the user cancelled
// or the dialog could not be shown.
std::vector<std::u16string> askForFiles(const OpenDialogRequest& request);

// Asks where a file shall be written; its full path, empty as above.
std::u16string askWhereToSave(const SaveDialogRequest& request);

}  // namespace quillmere
