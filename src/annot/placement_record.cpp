#include "annot/placement_record.h"

#include "session/session.h"

namespace quillmere {

// Nothing places stamps or text yet, so no document has placements to read.
void LoadPlacements(FPDF_DOCUMENT document) {
  ClearPlacements();
  session.placementDocument = document;
}

void ClearPlacements() {
  session.placements.clear();
  session.placementDocument = nullptr;
  session.selectedPlacementPage = -1;
}

void WritePendingStamps() {}

void WritePendingTextDrops() {}

}  // namespace quillmere
