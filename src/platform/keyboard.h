#pragma once

namespace quillmere::platform {

// State of the modifier keys at the time of the message being handled.
bool shiftDown();
bool controlDown();

}  // namespace quillmere::platform
