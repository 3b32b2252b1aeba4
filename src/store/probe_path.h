#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillmere {

enum class ProbeResult : std::int32_t { Available = 0, Missing = 1, Unavailable = 2 };

// Finds out whether a file can be reached. A network path is probed on another thread and counts as
// unavailable when no answer comes in time; a local path is probed directly.
ProbeResult probePath(const std::u16string& path, std::uint32_t timeoutMilliseconds);

// The same for several paths at once, sharing one timeout: many dead shares cost no more than one.
std::vector<ProbeResult> probePaths(const std::vector<std::u16string>& paths,
                                    std::uint32_t timeoutMilliseconds);

// How long the settings let an open wait for a network location.
std::uint32_t openTimeoutMilliseconds();
ProbeResult probeWithinOpenTimeout(const std::u16string& path);

// True for a path on a share, by its name or on a drive mapped to one. Does not access the disk.
// Asking the system about a drive may take as long as drawing a small page, so a letter that stood
// for no share is taken to stand for none until forgetDrives().
bool onNetwork(const std::u16string& path);

// To be called when the system reports that drives came or went.
void forgetDrives();

// True for a file on a share that does not answer, or that kept the program waiting in vain a few
// seconds ago. Anything else done with such a file would block the window for long.
bool onGoneShare(const std::u16string& path);

}  // namespace quillmere
