#pragma once

namespace quillmere::platform {

// How many surfaces were made so far: one for each rendering, as none serves twice here.
int surfacesMade();

}  // namespace quillmere::platform
