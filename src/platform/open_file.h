#pragma once

#include <memory>
#include <string>

namespace quillmere::platform {

// A file that this process has open for reading and that others may use as they like.
struct OpenFile;

// Opens an existing file until `letGo`. Null when it cannot be read. Any length of path.
OpenFile* keepOpen(const std::u16string& path);
void letGo(OpenFile* file);

// False once nothing can be read through it any more, because its drive was unplugged or the
// connection to its share was lost. That stays so when the drive or the share is back.
bool canStillRead(OpenFile& file);

struct OpenFileCloser {
  void operator()(OpenFile* file) const { letGo(file); }
};
using OpenFileHandle = std::unique_ptr<OpenFile, OpenFileCloser>;

}  // namespace quillmere::platform
