#pragma once

#include <fpdfview.h>

#include <cstdint>
#include <functional>
#include <vector>

// Pending placements become annotations when their document is written. The session's placements
// do not change: load them again from the document as it was saved.
namespace quillmere {

struct AddedAnnotation {
  std::int32_t page = 0;   // zero-based
  std::int32_t index = 0;  // in the page's annotation list
};
using AddedAnnotations = std::vector<AddedAnnotation>;

// Adds annotations for pending placements of `document`, in the order of their lists, and returns
// what was added. Stamps must be written first. Nothing happens for a document that has none and in
// a read-only process; a placement that cannot be written is left out.
AddedAnnotations WritePendingStamps(FPDF_DOCUMENT document);
AddedAnnotations WritePendingTextDrops(FPDF_DOCUMENT document);
// Both, in that order.
AddedAnnotations writePendingPlacements(FPDF_DOCUMENT document);

// Adds them all, calls `write` and returns its answer. False, without a call, when one cannot be
// written though there is something to show of it. Whenever it is false, the annotations are
// removed again, so that the next try does not add them a second time, and the placements are still
// pending.
bool writeWithPlacements(FPDF_DOCUMENT document, const std::function<bool()>& write);

}  // namespace quillmere
