#ifndef QUILLMERE_ENGINE_TESTS_SUPPORT_H_
#define QUILLMERE_ENGINE_TESTS_SUPPORT_H_

#include <stddef.h>

#include <memory>
#include <string>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "fpdfview.h"
#include "quillmere_engine.h"

// Says what did not hold and counts it.
void Check(bool held, const std::string& what);
int Failures();

inline constexpr char kCatalog[] = "<< /Type /Catalog /Pages 2 0 R >>";
inline constexpr char kStamp[] = "<< /Type /Annot /Subtype /Stamp /Rect [10 10 50 50] >>";
inline constexpr char kNote[] = "<< /Type /Annot /Subtype /Text /Rect [10 10 50 50] >>";

// Joins object bodies to a document; the first is the catalog. |trailer| holds further
// entries of the trailer.
std::string MakePdf(const std::vector<std::string>& objects, const std::string& trailer = "");

// The same with all but the streams among |objects| in one object stream, and a
// cross-reference stream.
std::string MakePackedPdf(const std::vector<std::string>& objects);

// A stream of |data|, with further |entries| of its dictionary.
std::string Stream(const std::string& data, const std::string& entries = "");

// A form XObject of 50 by 50 points.
std::string Form(const std::string& data, const std::string& resources);

// A page of 200 by 100 points below the page tree node 2.
std::string Page(const std::string& entries);

// "/Resources" with XObjects of these names.
std::string XObjects(const std::string& names);

// Documents read |pdf| while they are open.
ScopedFPDFDocument Load(const std::string& pdf, const char* password = nullptr);

// The pages that hold annotations of these subtypes, as QuillmereEngine_FoundPages() gives them.
int FindPages(FPDF_DOCUMENT document,
              const std::vector<FPDF_ANNOTATION_SUBTYPE>& subtypes,
              int* pages,
              int capacity);

struct PageSearchEnder {
  void operator()(QUILLMERE_PAGE_SEARCH search) const { QuillmereEngine_EndPageSearch(search); }
};
using PageSearch = std::unique_ptr<quillmere_page_search_t__, PageSearchEnder>;

// What FPDF_SaveAsCopy() writes, whole.
std::string Save(FPDF_DOCUMENT document);

// The same without the random identifier at its end.
std::string SaveWithoutId(FPDF_DOCUMENT document);

// A page's pixels, four bytes each, |scale| to a point, on white.
std::string Pixels(FPDF_PAGE page, int flags = FPDF_ANNOT, double scale = 1);

// Writes |document| as NAME.pdf into |folder| and PDFium's picture of its first page at 144
// DPI as NAME.ppm, for other readers to draw.
void WriteToCompare(const std::string& folder, const std::string& name, FPDF_DOCUMENT document);

// Three pages with text, a form, an image with a mask, links, a stamp with an appearance,
// and bookmarks. The second bookmark is a link annotation too, and the third the
// dictionary of a page's content.
std::vector<std::string> VariedObjects();

// FPDF_WIDESTRING of ASCII letters; it lasts as long as the object.
class Wide {
 public:
  explicit Wide(const std::string& ascii) : units_(ascii.begin(), ascii.end()) { units_.push_back(0); }
  operator FPDF_WIDESTRING() const { return units_.data(); }

 private:
  std::vector<unsigned short> units_;
};

#endif  // QUILLMERE_ENGINE_TESTS_SUPPORT_H_
