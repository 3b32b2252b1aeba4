#pragma once

// Showing and hiding the panels beside the page.
namespace quillmere {

void toggleNavigationPanel();
void toggleBinderPanel();
// The panel exists only in SinglePage.
void toggleStampPanel();
void toggleMarkupGrouping();

// Shows the panel if it is hidden and moves the keyboard focus to its tree.
void focusNavigationPanel();
void focusBinderPanel();

}  // namespace quillmere
