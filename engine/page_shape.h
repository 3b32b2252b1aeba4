#ifndef QUILLMERE_PAGE_SHAPE_H_
#define QUILLMERE_PAGE_SHAPE_H_

#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_number.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fxcrt/bytestring.h"
#include "page_tree_limits.h"

// Whether a node of the page tree above |page| states |key|.
inline bool InheritsFromNode(const CPDF_Dictionary& page, ByteStringView key) {
  RetainPtr<const CPDF_Dictionary> node = page.GetDictFor("Parent");
  for (size_t level = 0; node && level < kDeepestPageTreeLevel; ++level) {
    if (node->KeyExist(key)) {
      return true;
    }
    node = node->GetDictFor("Parent");
  }
  return false;
}

// An inserted page that has no crop box or turn must not take those of the pages that it comes to.
inline void KeepOwnShape(CPDF_Dictionary& page) {
  const RetainPtr<const CPDF_Object> paper = page.GetObjectFor("MediaBox");
  if (paper && !page.KeyExist("CropBox") && InheritsFromNode(page, "CropBox")) {
    page.SetFor("CropBox", paper->Clone());
  }
  if (!page.KeyExist("Rotate") && InheritsFromNode(page, "Rotate")) {
    page.SetNewFor<CPDF_Number>("Rotate", 0);
  }
}

#endif  // QUILLMERE_PAGE_SHAPE_H_
