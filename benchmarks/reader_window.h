#pragma once

#include <functional>
#include <string>

#include "platform/pictures.h"

// The reader's real main window inside a benchmark program.
namespace quillmere::bench {

// Settings that keep questions and network traffic out of a measurement.
void prepareSettings();

// Shows the main window, runs `measure` in it and closes it. Returns the exit code of the program:
// 1 when Windows refuses the window or `measure` fails.
int runInReader(const std::function<bool()>& measure);

// Handles all waiting messages.
void handleMessages();

// Opens a document and paints its first page. False when it does not open.
bool openAndPaint(const std::string& path);

// Milliseconds from the start of some work to certain moments in it and in the painting that
// follows.
struct PaintTimes {
  double work = 0;   // the work was done; the changes are not painted yet
  double first = 0;  // a page was painted for the first time
  double last = 0;   // pages were painted for the last time
  double whole = 0;  // the program can handle messages again
};
PaintTimes timePainting(const std::function<void()>& work);

// Paints the invalid part of the main window itself, where the page is. Its child windows are
// painted when messages are handled.
void paintNow();

// Copies one picture of the client area's size from memory to the window.
void copyPlainPicture();

// Draws onto that picture, which must have been copied before, in this size.
void drawOnPlainPicture(const platform::Picture& picture, int width, int height);

}  // namespace quillmere::bench
