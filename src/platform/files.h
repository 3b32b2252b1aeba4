#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Files and folders, named by full paths with backslashes unless said otherwise. Paths of more than
// 259 units reach nothing, except where any length is said to work.
namespace quillmere::platform {

// The system error codes that the program distinguishes.
inline constexpr std::uint32_t kErrorNone = 0;
inline constexpr std::uint32_t kErrorFileNotFound = 2;
inline constexpr std::uint32_t kErrorPathNotFound = 3;

inline constexpr std::uint32_t kInvalidAttributes = 0xFFFFFFFF;
inline constexpr std::uint32_t kAttributeReadOnly = 0x1;
inline constexpr std::uint32_t kAttributeHidden = 0x2;
inline constexpr std::uint32_t kAttributeSystem = 0x4;
inline constexpr std::uint32_t kAttributeFolder = 0x10;

struct AttributeQuery {
  std::uint32_t attributes = kInvalidAttributes;  // kInvalidAttributes when the query failed
  std::uint32_t error = kErrorNone;               // the system's error when it failed
};

struct FileStamp {
  std::uint64_t size = 0;       // bytes
  std::uint64_t writeTime = 0;  // last write, in 100-nanosecond ticks since 1601 (UTC)
  bool operator==(const FileStamp&) const = default;
};

// The full path that `path` stands for in this process: a name is relative to the process's current
// folder, "\\name" to that folder's drive, "X:name" to the folder last current on that drive. Full
// paths come back in the system's own spelling, without "." and "..", and without short names such
// as "LONGNA~1.PDF" unless they lie on a share or would be longer than 259 units. Empty stays
// empty, and what the system cannot complete stays as it is. The result can have any length.
std::u16string absolutePath(const std::u16string& path);

// Attributes of a file or folder, or the error that says why there are none.
AttributeQuery queryAttributes(const std::u16string& path);

// True when a file or folder of that name can be reached.
bool fileExists(const std::u16string& path);

// Size and last-write time; nullopt when the file cannot be reached. Any length.
std::optional<FileStamp> fileStamp(const std::u16string& path);

// False on failure. Only kAttributeReadOnly can be changed.
bool setReadOnly(const std::u16string& path, bool readOnly);

// True for a path on a share, by its name (with slashes of either kind) or on a drive mapped to
// one. Does not access the disk.
bool isNetworkPath(const std::u16string& path);

// True for a path on a drive letter that stands for no drive at the moment, such as a stick that
// was unplugged or a mapped drive that is not connected. Does not access the disk.
bool driveIsAbsent(const std::u16string& path);

// The whole file, opened for reading while others may read, write and delete it. Returns nullopt
// when it cannot be opened, exceeds `maximumSize` bytes, or yields fewer bytes than its size. Any
// length.
std::optional<std::vector<std::uint8_t>> readFileShared(const std::u16string& path,
                                                        std::uint64_t maximumSize);

// The file's first bytes, at most `maximumSize` of them, possibly none. Returns nullopt when it
// cannot be opened while others have it open for writing.
std::optional<std::vector<std::uint8_t>> readFileHead(const std::u16string& path,
                                                      std::uint64_t maximumSize);

// Replaces or creates the file. False when it could not be created (in use, read-only, a folder) or
// not every byte was written.
bool writeFile(const std::u16string& path, const void* bytes, std::uint64_t size);

// Creates a new file with these bytes. False when the name exists already, or on failure.
bool createNewFile(const std::u16string& path, const void* bytes, std::uint64_t size);

// False when the file did not exist or could not be deleted (in use, read-only, a folder). Any
// length.
bool deleteFile(const std::u16string& path);

// Renames `source` to `target`, replacing a file of that name in one step, and returns when the
// disk has the new name. False on failure (either in use, the target read-only or a folder), with
// both files unchanged. Any length.
bool replaceFile(const std::u16string& source, const std::u16string& target);

// Renames `source` to `target` and never replaces a file. False on failure (`source` in use,
// another file named `target`), with everything unchanged. Changing only the letter case is
// allowed.
bool renameFile(const std::u16string& source, const std::u16string& target);

// Creates one folder. True when it exists afterwards.
bool createFolder(const std::u16string& path);

// The path in UTF-8, for libraries that open files themselves. Any length.
std::string pathForLibraries(const std::u16string& path);

// Names of the files (not folders) in `folder`, which ends in a backslash, whose names end in
// `extension`, ignoring case; in the order in which the system lists them. Returns nullopt when the
// folder cannot be read.
std::optional<std::vector<std::u16string>> listFiles(const std::u16string& folder,
                                                     const std::u16string& extension);

// Per-user folder for local application data, with or without a trailing backslash. Empty when the
// system names none.
std::u16string localAppDataFolder();

// The user's desktop folder; empty when the system names none.
std::u16string desktopFolder();

// The user's folder for temporary files; empty when the system gives no path of 1 to 259 units.
std::u16string temporaryFolder();

}  // namespace quillmere::platform
