#include <algorithm>

#include "platform/instances.h"
#include "platform/text.h"
#include "stand_in.h"

namespace quillmere::platform {
namespace {

const OtherWindow* otherWindow(WindowId id) {
  for (const OtherWindow& window : standIn().otherWindows) {
    if (window.id == id) return &window;
  }
  return nullptr;
}

}  // namespace

MutexClaim claimPrimaryMutex(const std::u16string& name) {
  std::vector<std::u16string>& claims = standIn().mutexClaims;
  const bool known = std::find(claims.begin(), claims.end(), name) != claims.end();
  claims.push_back(name);
  return standIn().mutexClaim.value_or(known ? MutexClaim::AlreadyExists : MutexClaim::Owned);
}

void closePrimaryMutex() {
  ++standIn().mutexCloses;
}

WindowId findTopWindow(const std::u16string& className) {
  for (const OtherWindow& window : standIn().otherWindows) {
    if (equalIgnoringCase(window.className, className)) return window.id;
  }
  return 0;
}

void raiseWindow(WindowId window) {
  standIn().raisedWindows.push_back(window);
  for (OtherWindow& other : standIn().otherWindows) {
    if (other.id == window) other.minimised = false;
  }
}

void sendPathToWindow(WindowId window, std::uint32_t tag, const std::u16string& path) {
  standIn().sentPaths.push_back({window, tag, path});
}

int countTopWindows(const std::u16string& className) {
  const auto matches = [&](const OtherWindow& window) { return window.className == className; };
  const auto& windows = standIn().otherWindows;
  return static_cast<int>(std::count_if(windows.begin(), windows.end(), matches));
}

void closeTopWindows(const std::u16string& className) {
  for (const OtherWindow& window : standIn().otherWindows) {
    if (window.className == className) standIn().windowsAskedToClose.push_back(window.id);
  }
}

std::optional<ScreenRect> visibleWindowRect(WindowId window) {
  const OtherWindow* other = otherWindow(window);
  if (other == nullptr || other->minimised || !other->rectKnown) return std::nullopt;
  return other->rect;
}

ScreenRect workAreaOfWindow(WindowId) {
  return standIn().workArea;
}

std::optional<ScreenRect> workAreaNearest(const ScreenRect&) {
  if (!standIn().workAreaNearestKnown) return std::nullopt;
  return standIn().workArea;
}

ScreenRect primaryWorkArea() {
  return standIn().workArea;
}

int captionHeight() {
  return standIn().captionHeight;
}

}  // namespace quillmere::platform
