#pragma once

#include <cstdint>
#include <optional>
#include <string>

// The other processes of this program on the same desktop, and the screens they are on.
namespace quillmere::platform {

struct ScreenRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  bool operator==(const ScreenRect&) const = default;
};

enum class MutexClaim {
  Owned,          // this process is the first
  AlreadyExists,  // another process holds the name
  Unavailable,    // the system gave no handle
};

// Claims the name of the primary instance, for as long as the process lasts.
MutexClaim claimPrimaryMutex(const std::u16string& name);
// Gives the claim up without waiting for the process to end.
void closePrimaryMutex();

// A top-level window of another process, found by class name; 0 when there is none.
using WindowId = std::uintptr_t;
WindowId findTopWindow(const std::u16string& className);

// Restores the window when it is minimised, then brings it to the foreground.
void raiseWindow(WindowId window);

// Sends `path` with its terminator under `tag` and waits until the receiver has taken it.
void sendPathToWindow(WindowId window, std::uint32_t tag, const std::u16string& path);

// Number of top-level windows whose class is exactly `className`.
int countTopWindows(const std::u16string& className);
// Asks each of them to close, without waiting.
void closeTopWindows(const std::u16string& className);

// Outer rectangle of a window; nullopt while it is minimised, or on failure.
std::optional<ScreenRect> visibleWindowRect(WindowId window);

// Work areas without task bars: of the screen nearest to a window, of the one nearest to a
// rectangle, and of the primary screen.
ScreenRect workAreaOfWindow(WindowId window);
std::optional<ScreenRect> workAreaNearest(const ScreenRect& rect);
ScreenRect primaryWorkArea();

// Height of a caption bar in pixels.
int captionHeight();

}  // namespace quillmere::platform
