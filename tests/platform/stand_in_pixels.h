#pragma once

namespace quillmere::platform {

// How many surfaces were made so far: one for each rendering, since they are never reused here.
int surfacesMade();

}  // namespace quillmere::platform
