#pragma once

#include <functional>
#include <string>

#include "platform/file_in_writing.h"

namespace quillmere {

enum class Replacement {
  Done,       // the file now holds what was written
  NoSibling,  // no new file could be made beside it
  Failed,     // writing or replacing failed
};

// Calls `write` for a new file beside `path` and, if it returns true, puts that file in its place
// in one step. Unless it is done, a file that was there is unchanged.
Replacement replaceWholeFile(const std::u16string& path,
                             const std::function<bool(platform::FileInWriting&)>& write);

}  // namespace quillmere
