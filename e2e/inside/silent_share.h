#pragma once

#include <string>

namespace quillmere::e2e {

// From now on this process waits a minute for the attributes of every file whose path begins like
// this, as it would wait for a share that does not answer. False when it cannot be made to.
bool silenceShare(const std::wstring& start);

}  // namespace quillmere::e2e
