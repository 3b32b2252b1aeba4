#pragma once

#include <string>

// The reader's real main window inside a benchmark program.
namespace quillmere::bench {

// Settings that keep questions and network traffic out of a measurement.
void prepareSettings();

// Makes and shows the main window. False when Windows refuses.
bool showReader();
void closeReader();

// Handles every message that waits.
void handleMessages();

// Opens a document and paints its first page. False when it does not open.
bool openAndPaint(const std::string& path);

// Milliseconds that an open takes until a page is painted for the first time, and until the program
// handles messages again. No page may be shown before.
struct OpenTimes {
  double painted = 0;
  double whole = 0;
};
OpenTimes timeOpening(const std::string& path);

// Paints what is invalid of the main window itself, where the page is. Its children follow with the
// messages that wait.
void paintNow();

// Copies a picture of the client area's size from memory to the window, once.
void copyPlainPicture();

}  // namespace quillmere::bench
