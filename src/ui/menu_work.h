#pragma once

struct HWND__;

namespace quillmere {

// While a menu of this window is up, be it of its menu bar, a context menu or an edit field's own,
// documents that others ask to open wait: the menu handles messages then, and its rows refer to
// what is open now. They wait until the command that was chosen has been sent off too.
void holdOpensWhileMenuIsUp(HWND__* window);

// The same for a modeless dialog and the controls that it has by now: its system menu and the menus
// of its fields.
void holdOpensWhileMenusOfDialogAreUp(HWND__* dialog);

// The same for a window of ours: its procedure passes every message here first. Subclassing costs
// several questions to the system at each message, which the main window's painting cannot spare.
void noteMenuMessage(HWND__* window, unsigned message);

}  // namespace quillmere
