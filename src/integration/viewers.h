#pragma once

#include <string>

namespace quillmere {

// Starts a read-only process beside this one. True when it started.
bool startViewer(const std::u16string& path);

// The same, and a box tells when it did not start.
void showInViewer(const std::u16string& path);

// Number of windows of such processes.
int countViewers();

// Asks each of them to close, without waiting.
void closeViewers();

}  // namespace quillmere
