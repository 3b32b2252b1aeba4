#pragma once

// Showing and hiding the panels beside the page.
namespace quillmere {

void toggleNavigationPanel();
void toggleBinderPanel();
// The panel exists in SinglePage alone.
void toggleStampPanel();
void toggleMarkupGrouping();

// Shows the panel when it is hidden and gives its tree the keyboard.
void focusNavigationPanel();
void focusBinderPanel();

}  // namespace quillmere
