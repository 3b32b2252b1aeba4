#include "app/startup.h"

#include <algorithm>
#include <cstring>

#include "base/limits.h"
#include "base/product.h"
#include "integration/default_handler.h"
#include "integration/desktop_shortcut.h"
#include "platform/files.h"
#include "platform/instances.h"
#include "platform/process.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/onboarding.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr std::u16string_view kPrintPrefix = u"--print";
constexpr std::u16string_view kViewerPrefix = u"--viewer";
constexpr std::u16string_view kDefaultMarkerName = u"Set Quillmere as default.pdf";

// A primary instance that holds the mutex may still be creating its window: 50 rounds of 50 ms.
constexpr int kSearchRounds = 50;
constexpr std::uint32_t kSearchPause = 50;

constexpr const char16_t* kIsDefaultText = u"Quillmere is now the Windows default PDF viewer.";
constexpr const char16_t* kIsNotDefaultText =
    u"Quillmere was not set as the Windows default PDF viewer.\n\nTo make it the default, run "
    u"\"Set as Default PDF Viewer\" again and click \"Always\" when the system picker appears.";
constexpr const char16_t* kShortcutPromptText =
    u"Add Quillmere to your desktop?\n\nA desktop shortcut makes it easy to launch Quillmere "
    u"without searching the Start menu.\n\nYou can also do this later from Edit > Settings.";

// Only a leading quote matters; without one the rest of the line, blanks included, is the path.
std::u16string parseFileArgument(std::u16string_view rest) {
  if (rest.empty() || rest.front() != u'"') return boundedPath(rest);
  const std::u16string copied = boundedPath(rest.substr(1));
  return copied.substr(0, copied.find(u'"'));
}

platform::WindowId waitForMainWindow() {
  for (int round = 0; round < kSearchRounds; ++round) {
    const platform::WindowId window = platform::findTopWindow(kMainWindowClass);
    if (window != 0) return window;
    platform::sleepMilliseconds(kSearchPause);
  }
  return 0;
}

platform::MutexClaim claimName() {
  const platform::MutexClaim claim = platform::claimPrimaryMutex(kPrimaryMutexName);
  session.ownsPrimaryName = claim == platform::MutexClaim::Owned;
  return claim;
}

// The other instance may have been closing, and has gone meanwhile. A window without the name has
// no shelf.
void claimNameAgain() {
  platform::closePrimaryMutex();
  claimName();
}

}  // namespace

std::optional<std::u16string> handedOverPath(std::uintptr_t tag, const void* data,
                                             std::size_t size) {
  if (tag != kOpenFileTag || data == nullptr || size < sizeof(char16_t)) return std::nullopt;
  std::u16string path(size / sizeof(char16_t), u'\0');
  std::memcpy(path.data(), data, path.size() * sizeof(char16_t));
  path.resize(std::min(path.find(u'\0'), path.size()));
  return path;
}

LaunchArguments parseCommandLine(std::u16string_view commandLine) {
  LaunchArguments arguments;
  if (commandLine.starts_with(kPrintPrefix)) {
    arguments.printChild = true;
    return arguments;
  }
  if (commandLine.starts_with(kViewerPrefix)) {
    arguments.viewerRole = true;
    commandLine.remove_prefix(kViewerPrefix.size());
    while (commandLine.starts_with(u' ')) commandLine.remove_prefix(1);
  }
  arguments.filePath = parseFileArgument(commandLine);
  return arguments;
}

LaunchArguments readCommandLine(std::u16string_view commandLine) {
  LaunchArguments arguments = parseCommandLine(commandLine);
  arguments.filePath = platform::absolutePath(arguments.filePath);
  return arguments;
}

std::u16string defaultMarkerPath() {
  std::u16string path = platform::temporaryFolder();
  if (path.empty()) return path;
  if (path.back() != u'\\') path += u'\\';
  path += kDefaultMarkerName;
  return path;
}

std::optional<int> confirmDefaultHandler(const LaunchArguments& arguments) {
  if (arguments.filePath.empty()) return std::nullopt;
  const std::u16string marker = defaultMarkerPath();
  if (marker.empty() || !platform::equalIgnoringCase(marker, arguments.filePath)) {
    return std::nullopt;
  }
  platform::deleteFile(marker);
  showBox(IsDefaultPdfHandler() ? kIsDefaultText : kIsNotDefaultText, u"Set as Default PDF Viewer",
          BoxButtons::Ok, BoxIcon::None, BoxOwner::NoneTopmost);
  return 0;
}

std::optional<int> handOverToRunningInstance(const LaunchArguments& arguments) {
  if (arguments.viewerRole) return std::nullopt;
  if (claimName() != platform::MutexClaim::AlreadyExists) return std::nullopt;
  const platform::WindowId window = waitForMainWindow();
  if (window == 0) {
    claimNameAgain();
    return std::nullopt;
  }
  platform::raiseWindow(window);
  if (!arguments.filePath.empty()) {
    platform::sendPathToWindow(window, kOpenFileTag, arguments.filePath);
  }
  platform::closePrimaryMutex();
  return 0;
}

void offerDesktopShortcut() {
  if (desktopShortcutPromptShown()) return;
  const BoxAnswer answer =
      showBox(kShortcutPromptText, u"Welcome to Quillmere", BoxButtons::YesNo, BoxIcon::None);
  if (answer == BoxAnswer::Yes) createDesktopShortcut();
  rememberDesktopShortcutPrompt();
}

}  // namespace quillmere
