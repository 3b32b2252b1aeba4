#ifndef QUILLMERE_FIELD_APPEARANCE_H_
#define QUILLMERE_FIELD_APPEARANCE_H_

#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fxcrt/retain_ptr.h"

// Whether the form field |widget| must get an appearance before it is drawn: it has none, or
// the form says that those in the file are out of date (|stale|) and drawing has not made
// one yet.
inline bool FieldNeedsAppearance(const CPDF_Document& document,
                                 const CPDF_Dictionary& widget,
                                 bool stale) {
  RetainPtr<const CPDF_Dictionary> appearances = widget.GetDictFor("AP");
  if (!appearances || !appearances->KeyExist("N")) {
    return true;
  }
  RetainPtr<const CPDF_Reference> normal = ToReference(appearances->GetObjectFor("N"));
  return stale && !(normal && document.drawn_objects().Has(normal->GetRefObjNum()));
}

// Lets |generate| make one. The file's own stays where that makes none, and is never
// written over: the same stream may serve other fields.
template <typename Generate>
void MakeFieldAppearance(CPDF_Dictionary& widget, Generate generate) {
  RetainPtr<CPDF_Object> before = widget.RemoveFor("AP");
  generate();
  if (before && !widget.KeyExist("AP")) {
    widget.SetFor("AP", before);
  }
}

#endif  // QUILLMERE_FIELD_APPEARANCE_H_
