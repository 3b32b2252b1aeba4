#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// Maps Windows paths into the tests' temporary folder.
namespace quillmere::platform {

inline constexpr std::uint32_t kErrorInvalidName = 123;

// A Windows path split into its parts.
struct ParsedPath {
  std::u16string volume;                   // lower case, such as "c:" or "\\\\server\\share"
  std::vector<std::u16string> components;  // without "." and ".."
  std::u16string stream;                   // name of the alternate stream, usually empty
  std::uint32_t error = 0;                 // why the path is not valid
};
ParsedPath parsePath(const std::u16string& path);

// A path found in the temporary folder.
struct FoundPath {
  std::filesystem::path real;   // for a stream: the file that stands for it
  std::filesystem::path owner;  // for a stream: the file it belongs to; otherwise as `real`
  std::u16string volume;
  bool exists = false;
  bool folder = false;
  // 0 when it exists; otherwise the system's error, kErrorFileNotFound when it could be made.
  std::uint32_t error = 0;
};

// True for a path that begins with the name of a server.
bool namesShare(const std::u16string& path);

// The last name in a path, as the system would give it to a new file.
std::u16string lastNameOf(const std::u16string& path);

// As the logic's calls find it: obeys the limit of path lengths and the volume's script.
FoundPath findPath(const std::u16string& path);

// The same for calls that take paths of any length.
FoundPath findLongPath(const std::u16string& path);

// For the tests: obeys neither.
FoundPath findPathUnscripted(const std::u16string& path);

// Files that stand for the alternate streams of `owner`.
std::vector<std::filesystem::path> streamsOf(const std::filesystem::path& owner);
// The file that stands for the same stream after `from` is renamed to `to`.
std::filesystem::path renamedStream(const std::filesystem::path& stream,
                                    const std::filesystem::path& from,
                                    const std::filesystem::path& to);
bool isStreamName(const std::filesystem::path& name);

// Conversions between names and paths that work on both systems the tests run on.
std::filesystem::path nativeName(const std::u16string& name);
std::u16string unitsOf(const std::filesystem::path& path);

// True for a drive, not a share, that is missing.
bool driveIsMissing(const std::u16string& volume);

// Makes calls that wait for a silent volume fail.
void releaseSilentVolumes();

// Empties the temporary folder and forgets the volumes' scripts.
void resetVolumes();

}  // namespace quillmere::platform
