#pragma once

#include <fpdfview.h>

#include <cstdint>
#include <vector>

#include "session/placement.h"

// The stamps and texts of one document. Pending ones are drawn over its pages by the program;
// written ones are annotations of it, which PDFium draws.
namespace quillmere {

// Reads the placements of `document` into the session, replacing those it holds. None is selected
// afterwards. Null leaves the session without placements.
void LoadPlacements(FPDF_DOCUMENT document);

// The same, but leaves the reading to the functions below: a long document takes a while, and its
// page should be painted first. The document owns the session's placements once the first page is
// read.
void loadPlacementsLater(FPDF_DOCUMENT document);

// Reads what loadPlacementsLater() left, if any. Whatever needs the placements of all pages calls
// it first. Those that are known already stay as they are.
void readWaitingPlacements();

// Reads those of one zero-based page of `document`, if they are still to be read.
void readWaitingPlacementsOf(FPDF_DOCUMENT document, std::int32_t page);

// Reads some of those on the pages that the search for annotations has found so far, for a few
// milliseconds. False when none of these pages waits.
bool readFoundPlacements();

// Zero-based pages of the document that may have written placements.
std::vector<int> stampedPages(FPDF_DOCUMENT document);

// Adds the written placements of pages that came into the document, if the session holds its
// placements.
void addPlacementsOf(FPDF_DOCUMENT document, const std::vector<int>& newPages);

// True when the document has placements, pending or written, whether or not the session holds them.
bool hasPlacements(FPDF_DOCUMENT document);

// Forgets all placements; none is selected and no document has any.
void ClearPlacements();

// True when the active document may get placements. When another document has pending ones, asks
// whether they may be discarded.
bool ClaimPlacementOwner();

// The selected placement; null when there is none or its numbers are out of range.
Placement* selectedPlacement();
void selectPlacement(std::int32_t page, std::int32_t index);
// Takes the selection frame and the handles away. Repaints nothing.
void ClearPlacementSelection();

// Makes the selected placement pending by taking its annotation out of the active document. Does
// nothing when it is pending already; when it fails, annotation and placement stay as they were.
void DetachPlacement();

// Removes the annotation of a written placement from its page, and lowers the indexes of those
// above it. False, with nothing removed, when the annotation is not that of a placement or PDFium
// refuses.
bool removePlacementAnnotation(FPDF_DOCUMENT document, std::int32_t page, std::int32_t annotIndex);

// An annotation of the page was removed: placements refer to those above it by one less.
void lowerPlacementIndexes(FPDF_DOCUMENT document, std::int32_t page, std::int32_t removed);

// What to draw for a pending placement. A text's picture is made and kept when it is first needed.
// Null when there is none.
platform::SharedPicture placementPicture(Placement& placement);

}  // namespace quillmere
