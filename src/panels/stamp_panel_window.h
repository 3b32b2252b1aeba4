#pragma once

namespace quillmere {

// Registers the window class of the stamp panel.
void registerStampPanelClass();

}  // namespace quillmere
