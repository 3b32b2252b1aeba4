#pragma once

#include <cstdint>
#include <string>

namespace quillmere {

enum class ProbeResult : std::int32_t { Available = 0, Missing = 1, Unavailable = 2 };

// Finds out whether a file can be reached. A network path is probed on another thread and counts as
// unavailable when no answer comes in time; a local one is probed directly.
ProbeResult probePath(const std::u16string& path, std::uint32_t timeoutMilliseconds);

}  // namespace quillmere
