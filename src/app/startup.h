#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// What kind of process this is, judging by the raw command line and by which others are running.
namespace quillmere {

// Tag of the request by which one instance hands a path to another: 'Q' in the highest byte.
inline constexpr std::uint32_t kOpenFileTag = 0x514D4F31;

// The path in such a request of `size` bytes, up to its first zero unit, which may be missing;
// nullopt for any other request.
std::optional<std::u16string> handedOverPath(std::uintptr_t tag, const void* data,
                                             std::size_t size);

struct LaunchArguments {
  bool printChild = false;
  bool viewerRole = false;
  std::u16string filePath;  // at most 259 units; empty without a file argument
};

// `commandLine` is what follows the program's name, as it is, and so is the path in it.
LaunchArguments parseCommandLine(std::u16string_view commandLine);

// The same with a full path, which may be longer. The process that shows the file may work in
// another folder than this one.
LaunchArguments readCommandLine(std::u16string_view commandLine);

// The file that is opened to find out whether this program became the default; empty without a
// folder for temporary files.
std::u16string defaultMarkerPath();

// If the file argument is that marker, deletes it, tells the user, and returns the exit code.
std::optional<int> confirmDefaultHandler(const LaunchArguments& arguments);

// If another primary instance is running, hands it the file and returns the exit code. Without one,
// or if its window does not come up in time, returns nullopt: this process goes on as a main
// window.
std::optional<int> handOverToRunningInstance(const LaunchArguments& arguments);

// Asks once and never again whether to put a shortcut on the desktop.
void offerDesktopShortcut();

}  // namespace quillmere
