#pragma once

namespace quillmere::platform {

// State of the modifier keys as of the message being handled.
bool shiftDown();
bool controlDown();

}  // namespace quillmere::platform
