#pragma once

#include <memory>
#include <string>

namespace quillmere::platform {

// A file that other programs can read but not write, replace or delete.
struct WriteGuard;

// Guards an existing file until `allowWriters`. Null when it cannot be opened so, for example
// because a program has it open for writing. Any length of path.
WriteGuard* denyWriters(const std::u16string& path);
void allowWriters(WriteGuard* guard);

struct WriteGuardCloser {
  void operator()(WriteGuard* guard) const { allowWriters(guard); }
};
using WriteGuardHandle = std::unique_ptr<WriteGuard, WriteGuardCloser>;

}  // namespace quillmere::platform
