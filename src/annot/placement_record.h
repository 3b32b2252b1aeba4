#pragma once

#include <fpdfview.h>

namespace quillmere {

// Reads the placements of `document` into the session, replacing those it holds.
void LoadPlacements(FPDF_DOCUMENT document);

// Forgets all placements; none is selected and no document has any.
void ClearPlacements();

// Writes pending changes on the pages of `placementDocument` into it as annotations.
void WritePendingStamps();
void WritePendingTextDrops();

}  // namespace quillmere
