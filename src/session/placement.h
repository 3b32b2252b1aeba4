#pragma once

#include <cstdint>

namespace quillmere {

// A stamp or text placed on a page. Its content and position belong to its annotation; the session
// only needs to know which placements the document does not have yet.
struct Placement {
  std::int32_t annotIndex = -1;  // in the page's annotation list; -1 while it is pending
};

}  // namespace quillmere
