#pragma once

namespace quillmere::platform {

// Removes the time that sleeps have added to the clock.
void resetClock();

}  // namespace quillmere::platform
