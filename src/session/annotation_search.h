#pragma once

#include <fpdfview.h>

#include "session/pdfium_handles.h"

namespace quillmere {

// The search for pages with annotations that runs while the program is idle.
struct AnnotationSearch {
  PageSearchHandle search;           // null when none is under way
  FPDF_DOCUMENT document = nullptr;  // it searches this one; not owned
  bool complete = false;             // what it found is all that there is
};

}  // namespace quillmere
