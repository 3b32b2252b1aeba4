#pragma once

namespace quillmere {

// Reads the user's stamps.
void LoadStampLibrary();

}  // namespace quillmere
