#ifndef QUILLMERE_ENGINE_H_
#define QUILLMERE_ENGINE_H_

// What the reader needs of the engine and PDFium's public functions do not give.
// These functions live in the same library as PDFium and follow its rules: call
// them between FPDF_InitLibrary() and FPDF_DestroyLibrary(), and never while
// another thread is inside the library.

// NOLINTNEXTLINE(build/include)
#include "fpdf_annot.h"
// NOLINTNEXTLINE(build/include)
#include "fpdfview.h"

#ifdef __cplusplus
extern "C" {
#endif

// A search for pages by the annotations on them.
typedef struct quillmere_page_search_t__* QUILLMERE_PAGE_SEARCH;

// Function: QuillmereEngine_StartPageSearch
//          Start to find the pages that hold at least one annotation of given
//          subtypes. QuillmereEngine_ContinuePageSearch() does the work.
// Parameters:
//          document      -   Handle to a document. May be NULL.
//          subtypes      -   The subtypes that are looked for, values FPDF_ANNOT_* of
//                            fpdf_annot.h. Copied. May be NULL.
//          subtype_count -   The number of values in |subtypes|.
// Return value:
//          The search, for QuillmereEngine_EndPageSearch(). NULL if |document| or
//          |subtypes| is NULL.
// Comments:
//          A search reads the page tree and the annotations' dictionaries, never a
//          page's content, and changes nothing in the document. Pages that
//          cannot be reached in a damaged page tree are left out, and a page
//          object that stands in the tree many times is named 16 times. The search
//          keeps no memory but the list of pages. Start a new one after pages were
//          inserted or deleted, or annotations added to pages that it has passed.
//          A search whose document was closed finds nothing more.
FPDF_EXPORT QUILLMERE_PAGE_SEARCH FPDF_CALLCONV
QuillmereEngine_StartPageSearch(FPDF_DOCUMENT document,
                                const FPDF_ANNOTATION_SUBTYPE* subtypes,
                                int subtype_count);

// Function: QuillmereEngine_ContinuePageSearch
//          Go on with a search.
// Parameters:
//          search        -   Handle to the search. May be NULL.
//          steps         -   How far: a page or a node of the page tree is a step.
// Return value:
//          False if the search has come to the end of the document, or if |search|
//          is NULL or its document closed.
FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV
QuillmereEngine_ContinuePageSearch(QUILLMERE_PAGE_SEARCH search, int steps);

// Function: QuillmereEngine_FoundPages
//          Get the pages that a search has found so far.
// Parameters:
//          search        -   Handle to the search. May be NULL.
//          subtypes      -   Subtypes that the search was started with: pages that hold
//                            at least one of these. May be NULL.
//          subtype_count -   The number of values in |subtypes|.
//          pages         -   Receives their zero-based indexes in ascending order.
//                            May be NULL.
//          capacity      -   The number of indexes |pages| has room for.
// Return value:
//          The number of such pages, which may be larger than |capacity|; then
//          only the first |capacity| indexes are stored.
FPDF_EXPORT int FPDF_CALLCONV
QuillmereEngine_FoundPages(QUILLMERE_PAGE_SEARCH search,
                           const FPDF_ANNOTATION_SUBTYPE* subtypes,
                           int subtype_count,
                           int* pages,
                           int capacity);

// Function: QuillmereEngine_EndPageSearch
//          End a search and free its memory.
// Parameters:
//          search        -   Handle to the search, which becomes invalid. May be NULL.
FPDF_EXPORT void FPDF_CALLCONV QuillmereEngine_EndPageSearch(QUILLMERE_PAGE_SEARCH search);

// Function: QuillmereEngine_PageIndexOfDest
//          Get the page that a destination leads to.
// Parameters:
//          document    -   Handle to the document. May be NULL.
//          dest        -   Handle to a destination in it. May be NULL.
// Return value:
//          The zero-based index that FPDF_LoadPage() takes, always below
//          FPDF_GetPageCount(), or -1 if the destination leads to no page of the
//          document.
// Comments:
//          Ends in bounded time for page trees that lead back into themselves.
//          The first call walks the page tree without reading any page's content;
//          later ones look the page up, until pages are inserted or deleted.
FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_PageIndexOfDest(FPDF_DOCUMENT document,
                                                              FPDF_DEST dest);

// Function: QuillmereEngine_WriteMarkAppearance
//          Give a highlight or a strikeout the appearance that its quads, colour
//          and opacity ask for, so that every reader draws it alike.
// Parameters:
//          annotation  -   Handle to a Highlight or StrikeOut annotation with
//                          attachment points.
//          text_turns  -   The direction of the marked text's lines in page
//                          coordinates, in quarter turns: even along x, odd along
//                          y. It decides where a strikeout's bars lie.
// Return value:
//          True if the appearance was written. False, with nothing changed, if the
//          annotation is of another subtype or has no quad with a size.
// Comments:
//          Each quad is drawn as the box around its four corners. A highlight is
//          one path, blended by Multiply: where quads overlap the page does not
//          darken twice. A strikeout is a bar along the middle of each line, a
//          twelfth of the line's height thick. Colour is /C (yellow or black
//          without it), opacity /CA (1 without it). The annotation's rectangle
//          becomes the box around all quads. Call it again after changes of
//          quads or opacity; the appearance before is replaced. From the first
//          call on FPDFAnnot_SetColor() and FPDFAnnot_GetColor() fail, as they do
//          for every annotation with an appearance; the colour is the fill colour
//          of the annotation's first object.
FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV
QuillmereEngine_WriteMarkAppearance(FPDF_ANNOTATION annotation, int text_turns);

// Function: QuillmereEngine_LoadPageForAnnots
//          Load a page to read its annotations, without parsing its content.
// Parameters:
//          document    -   Handle to a document. May be NULL.
//          page_index  -   The page's zero-based index.
// Return value:
//          The page, for FPDF_ClosePage(). NULL where FPDF_LoadPage() returns NULL.
// Comments:
//          What FPDFPage_GetAnnotCount() and FPDFPage_GetAnnot() tell of it is what
//          they tell of a page of FPDF_LoadPage(). It has no objects and no text.
FPDF_EXPORT FPDF_PAGE FPDF_CALLCONV QuillmereEngine_LoadPageForAnnots(FPDF_DOCUMENT document,
                                                                      int page_index);

// Function: QuillmereEngine_MakeAnnotIndirect
//          Make an annotation an object of its own.
// Parameters:
//          page        -   Handle to a loaded page. May be NULL.
//          index       -   The annotation's index on the page.
// Return value:
//          True if the annotation is such an object now. False if there is no
//          annotation at |index|.
// Comments:
//          FPDFPage_CreateAnnot() puts an annotation into the page's own array,
//          which the format does not allow in a file. Handles stay valid.
FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_MakeAnnotIndirect(FPDF_PAGE page, int index);

// Function: QuillmereEngine_RemoveAnnotEntry
//          Remove an entry from an annotation's dictionary.
// Parameters:
//          annotation  -   Handle to an annotation. May be NULL.
//          key         -   The entry's name, without the slash. May be NULL.
// Return value:
//          True if the entry was there.
// Comments:
//          What the entry refers to stays in the document.
FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_RemoveAnnotEntry(FPDF_ANNOTATION annotation,
                                                                     FPDF_BYTESTRING key);

// Function: QuillmereEngine_PopupIndex
//          Find the pop-up annotation that belongs to an annotation.
// Parameters:
//          page        -   Handle to a loaded page. May be NULL.
//          index       -   The annotation's index on the page.
// Return value:
//          The index on the same page of the annotation that |index| names as its
//          "Popup", or that names |index| as its "Parent". -1 if there is none.
// Comments:
//          FPDFAnnot_GetLinkedAnnot() finds only those with a "Type".
FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_PopupIndex(FPDF_PAGE page, int index);

// Function: QuillmereEngine_ShareImage
//          Make another image object that draws the same picture, which is stored
//          once however many objects draw it.
// Parameters:
//          image       -   Handle to an image object that has its picture: from
//                          FPDFPageObj_NewImageObj() with FPDFImageObj_SetBitmap(),
//                          or from an annotation or a page. May be NULL.
// Return value:
//          An image object with the identity matrix. It is the caller's, as one of
//          FPDFPageObj_NewImageObj() is: hand it to FPDFAnnot_AppendObject() or
//          FPDFPage_InsertObject(), or destroy it. NULL if |image| is no image
//          object, has no picture, or one that stands in the page's content.
// Comments:
//          Set the matrix before the object is appended. The picture goes into
//          the document when the first of the objects is appended. |image| may be
//          appended or destroyed before or after. Objects must be used with the
//          document of |image| only. FPDFImageObj_SetBitmap() on one of them
//          changes the picture of all.
FPDF_EXPORT FPDF_PAGEOBJECT FPDF_CALLCONV QuillmereEngine_ShareImage(FPDF_PAGEOBJECT image);

// Function: QuillmereEngine_FlattenPage
//          Draw the annotations of a page into its content.
// Parameters:
//          document    -   Handle to a document. May be NULL.
//          page_index  -   The page's zero-based index.
// Return value:
//          FLATTEN_SUCCESS if annotations were drawn into the page,
//          FLATTEN_NOTHINGTODO if there was none to draw, FLATTEN_FAIL if there is
//          no such page.
// Comments:
//          The page looks as before. Annotations that are not drawn stay: hidden
//          ones, those without an appearance, and links. What is drawn is no longer
//          an annotation, and its pop-up goes with it; a form field keeps its entry
//          in the document's form. Resources that the page inherits become its own;
//          its boxes stay. Pages that are loaded at the time must be loaded again.
FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_FlattenPage(FPDF_DOCUMENT document, int page_index);

// Function: QuillmereEngine_SeparatePages
//          Give each index of a document a page object of its own.
// Parameters:
//          document    -   Handle to a document. May be NULL.
// Return value:
//          True if no two indexes share a page object, a node of the page tree or
//          a list of annotations now. False, with nothing changed, if the tree leads back into itself or
//          shares too much to be copied.
// Comments:
//          Call it before pages come, go or turn, with none of them loaded: an edit
//          of a shared page changes all its indexes. The first index keeps the
//          object, to which bookmarks and links lead. Nodes that state a wrong number
//          of pages get the right one: FPDFPage_Delete() would delete another page.
//          Most documents are sound, and nothing is changed.
FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_SeparatePages(FPDF_DOCUMENT document);

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
//          objects or replace a stream's data are noticed, others are not. What
//          drawing a page adds to the document is no edit.
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
