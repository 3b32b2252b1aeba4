#include "quillmere_engine.h"

#include <stddef.h>

#include <utility>
#include <vector>

#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "quillmere_engine_version.h"

namespace {

// PDFium numbers the pages of a tree up to this depth and no further.
constexpr size_t kDeepestLevel = 1024;
// A damaged tree can reach the same nodes over and over without ever coming to
// a page; no sound one needs this many steps.
constexpr int kMostSteps = 4 * CPDF_Document::kPageMaxNum;

bool HoldsStamp(const CPDF_Dictionary& page) {
  RetainPtr<const CPDF_Array> annotations = page.GetArrayFor("Annots");
  if (!annotations) {
    return false;
  }
  for (size_t i = 0; i < annotations->size(); ++i) {
    RetainPtr<const CPDF_Dictionary> annotation = annotations->GetDictAt(i);
    if (!annotation) {
      continue;
    }
    RetainPtr<const CPDF_Object> subtype = annotation->GetDirectObjectFor("Subtype");
    if (subtype && subtype->IsName() && subtype->GetString() == "Stamp") {
      return true;
    }
  }
  return false;
}

// Calls |visit| with the index and the dictionary of every page. The numbering
// is that of FPDF_LoadPage(): a child that is no dictionary takes an index, a
// node that lists itself does not.
template <typename Visitor>
void ForEachPage(const CPDF_Document& document, Visitor visit) {
  struct Level {
    RetainPtr<const CPDF_Dictionary> node;
    RetainPtr<const CPDF_Array> kids;
    size_t next = 0;
  };

  const CPDF_Dictionary* root = document.GetRoot();
  RetainPtr<const CPDF_Dictionary> top = root ? root->GetDictFor("Pages") : nullptr;
  if (!top) {
    return;
  }
  const int page_count = document.GetPageCount();
  if (!top->KeyExist("Kids")) {
    if (page_count > 0) {
      visit(0, *top);
    }
    return;
  }

  std::vector<Level> path;
  path.push_back({top, top->GetArrayFor("Kids")});
  int index = 0;
  for (int steps = 0; !path.empty() && index < page_count && steps < kMostSteps; ++steps) {
    Level& level = path.back();
    if (!level.kids || level.next >= level.kids->size()) {
      path.pop_back();
      continue;
    }
    RetainPtr<const CPDF_Dictionary> kid = level.kids->GetDictAt(level.next++);
    if (!kid) {
      ++index;
    } else if (kid == level.node) {
      continue;
    } else if (!kid->KeyExist("Kids")) {
      visit(index++, *kid);
    } else if (path.size() >= kDeepestLevel) {
      return;
    } else {
      RetainPtr<const CPDF_Array> kids = kid->GetArrayFor("Kids");
      path.push_back({std::move(kid), std::move(kids)});
    }
  }
}

}  // namespace

FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_FindStampPages(FPDF_DOCUMENT document,
                                                             int* pages,
                                                             int capacity) {
  const CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  if (!pdf) {
    return 0;
  }
  int found = 0;
  ForEachPage(*pdf, [&](int index, const CPDF_Dictionary& page) {
    if (!HoldsStamp(page)) {
      return;
    }
    if (pages && found < capacity) {
      pages[found] = index;
    }
    ++found;
  });
  return found;
}

FPDF_EXPORT const char* FPDF_CALLCONV QuillmereEngine_Version() {
  return QUILLMERE_ENGINE_VERSION;
}
