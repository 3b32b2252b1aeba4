#ifndef QUILLMERE_ENGINE_H_
#define QUILLMERE_ENGINE_H_

// What the reader needs of the engine and PDFium's public functions do not give.
// These functions live in the same library as PDFium and follow its rules: call
// them between FPDF_InitLibrary() and FPDF_DestroyLibrary(), and never while
// another thread is inside the library.

// NOLINTNEXTLINE(build/include)
#include "fpdfview.h"

#ifdef __cplusplus
extern "C" {
#endif

// Function: QuillmereEngine_FindStampPages
//          Find the pages that hold at least one annotation of subtype Stamp.
// Parameters:
//          document    -   Handle to a document. May be NULL.
//          pages       -   Receives the zero-based indexes of these pages, in
//                          ascending order. May be NULL if |capacity| is 0.
//          capacity    -   The number of indexes |pages| has room for.
// Return value:
//          The number of pages that hold a stamp, which may be larger than
//          |capacity|; then only the first |capacity| indexes are stored.
//          0 if |document| is NULL or has no such page.
// Comments:
//          Reads the page tree and the annotations' dictionaries, never a
//          page's content, and changes nothing in the document. Pages that
//          cannot be reached in a damaged page tree are left out. What the
//          caller did to loaded pages' annotations counts at once. The array
//          stays the caller's; call with |capacity| 0 to learn the number.
FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_FindStampPages(FPDF_DOCUMENT document,
                                                             int* pages,
                                                             int capacity);

// Function: QuillmereEngine_ReleaseParsedObjects
//          Give back the memory of what PDFium has read from a document's file
//          and can read again: the raw data of streams, link annotations,
//          embedded fonts, unpacked object streams and the lists of links.
// Parameters:
//          document    -   Handle to a document. May be NULL.
// Return value:
//          True if the memory was given back. False if |document| is NULL, was
//          not loaded from a file, has a damaged cross-reference table, or can be
//          seen to differ from its file; then nothing was dropped.
// Comments:
//          Call it only for a document in which nothing was edited since it was
//          loaded: what is dropped comes back as the file has it. Edits that add
//          objects or replace a stream's data are noticed, others are not.
//          Pages, text pages, annotations, bookmarks and fonts that are still in
//          use stay as they are. Handles of links, actions and destinations that
//          were got before become invalid. Must not be called while a page is
//          being rendered progressively.
FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_ReleaseParsedObjects(FPDF_DOCUMENT document);

// Function: QuillmereEngine_Version
//          Get the version of the PDFium inside this library.
// Parameters:
//          None.
// Return value:
//          Four numbers joined by dots, in ASCII and ended by a zero byte. The
//          string belongs to the library and stays valid while it is loaded.
// Comments:
//          May be called at any time, before FPDF_InitLibrary() too.
FPDF_EXPORT const char* FPDF_CALLCONV QuillmereEngine_Version();

#ifdef __cplusplus
}
#endif

#endif  // QUILLMERE_ENGINE_H_
