#pragma once

#include <cstdint>
#include <string>

namespace quillmere {

enum class ProbeResult : std::int32_t { Available = 0, Missing = 1, Unavailable = 2 };

// Whether a file can be reached. A network path is asked for on another thread and counts as
// unavailable when no answer comes within the time; a local one is asked for at once.
ProbeResult probePath(const std::u16string& path, std::uint32_t timeoutMilliseconds);

}  // namespace quillmere
