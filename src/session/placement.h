#pragma once

#include <cstdint>

namespace quillmere {

// A stamp or text drop on a page. What it shows and where comes with the records that are read from
// and written to annotations; the session needs to know which ones the document does not hold yet.
struct Placement {
  std::int32_t annotIndex = -1;  // in the page's annotation list; -1 while it is pending
};

}  // namespace quillmere
