#pragma once

#include "platform/message_box.h"

namespace quillmere {

// Writes the pending turns of the pane's document into it, as its pages' own rotation.
void commitRotations(int pane);

}  // namespace quillmere
