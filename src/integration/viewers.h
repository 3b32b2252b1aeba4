#pragma once

#include <string>

namespace quillmere {

// Starts a read-only process beside this one. True when it started.
bool startViewer(const std::u16string& path);

// Number of windows of such processes.
int countViewers();

// Asks each of them to close, without waiting.
void closeViewers();

}  // namespace quillmere
