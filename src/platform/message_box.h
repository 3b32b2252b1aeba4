#pragma once

#include <cstdint>
#include <string>

namespace quillmere::platform {

// The first button is the default, but for a box whose name says otherwise.
enum class BoxButtons { Ok, OkCancel, OkDefaultCancel, YesNo, YesDefaultNo, YesNoCancel };
enum class BoxIcon { None, Information, Warning, Error, Question };

// The values are the system's own.
enum class BoxAnswer : std::int32_t { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

enum class BoxOwner { MainWindow, NoneTopmost };

// Shows a box and waits for its answer. A box that cannot be shown answers Cancel. While a dialog
// of the main window is open, the box belongs to that.
BoxAnswer showMessageBox(const std::u16string& text, const std::u16string& title,
                         BoxButtons buttons, BoxIcon icon, BoxOwner owner = BoxOwner::MainWindow);

}  // namespace quillmere::platform
