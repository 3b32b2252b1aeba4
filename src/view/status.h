#pragma once

namespace quillmere {

// Shows zoom, page and version of the session in the status bar.
void refreshStatus();

// Shows in the title bar what is open.
void refreshTitle();

}  // namespace quillmere
