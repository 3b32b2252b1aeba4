#pragma once

#include <fpdf_annot.h>
#include <fpdfview.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "session/pdfium_handles.h"

// Access to the annotations of a page, whatever their kind.
namespace quillmere {

// A page of a document for as long as this object lives: the page that a pane has open, since
// loading it again would parse all of its contents, otherwise one loaded for this object.
class ReachedPage {
 public:
  // `page` is zero-based.
  ReachedPage(FPDF_DOCUMENT document, std::int32_t page);
  // Null when the page cannot be loaded.
  FPDF_PAGE get() const { return page_; }

 private:
  PageHandle own_;
  FPDF_PAGE page_ = nullptr;
};

// A page to read annotations of, without what it shows: much faster to load than any other. Null
// when it cannot be loaded. `page` is zero-based.
PageHandle pageForAnnotations(FPDF_DOCUMENT document, std::int32_t page);

// Null for an index that the page does not have.
AnnotationHandle annotationAt(FPDF_PAGE page, std::int32_t index);

// True for highlights and strikethroughs, whoever made them.
bool isMarkup(FPDF_ANNOTATION annotation);

// Zero-based numbers of the pages with at least one annotation of these subtypes, in order. Finds
// them without reading what the pages show.
std::vector<int> pagesWithAnnotations(FPDF_DOCUMENT document,
                                      std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes);

// Goes on with a search of the document for the pages that may matter to this program, until a few
// milliseconds have passed; a search of another document ends. False when it is complete, which
// makes pagesWithAnnotations() fast until forgetAnnotationSearch().
bool continueAnnotationSearch(FPDF_DOCUMENT document);

// What that search has found so far, in order; empty when none of this document is under way.
std::vector<int> pagesFoundSoFar(FPDF_DOCUMENT document,
                                 std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes);

// Ends that search. For when it is no longer needed, and when annotations were added or removed.
void forgetAnnotationSearch();

// Gives each page number of a document that panes hold a page of its own: an annotation that is
// added to a page that stands at several places, or removed from it, would come or go at all of
// them. The panes' pages are loaded anew. To be called before annotations are edited, with no other
// page of the document open; does nothing from the second call on.
void separatePagesToAnnotate(FPDF_DOCUMENT document);

// Gives back the memory of pages that were read, of a document that a pane holds, after every so
// many of them. `count` is the number of pages read so far, or of those left.
void releasePagesRead(FPDF_DOCUMENT document, std::size_t count);

// The text of an entry such as "Contents"; empty without one, and for null.
std::u16string ReadAnnotString(FPDF_ANNOTATION annotation, const char* key);

}  // namespace quillmere
