#pragma once

namespace quillmere {

// Starts the check that runs once a day, when the user wants it and this is no viewer.
void startAutomaticUpdateCheck();

}  // namespace quillmere
