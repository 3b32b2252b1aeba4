// Writes the appearances of highlights and strikeouts. PDFium itself makes one when it
// first draws a mark; until then every reader draws its own idea of the mark.

#include <math.h>
#include <stddef.h>
#include <stdint.h>

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "core/fpdfapi/edit/cpdf_contentstream_write_utils.h"
#include "core/fpdfapi/page/cpdf_annotcontext.h"
#include "core/fpdfapi/page/ipdf_page.h"
#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_name.h"
#include "core/fpdfapi/parser/cpdf_number.h"
#include "core/fpdfapi/parser/cpdf_parser.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fpdfapi/parser/cpdf_stream.h"
#include "core/fpdfdoc/cpdf_annot.h"
#include "core/fxcrt/fx_coordinates.h"
#include "core/fxcrt/fx_string_wrappers.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdf_annot.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "quillmere_engine.h"

namespace {

// A strikeout's bar is this part of the line's height, and never thinner than a hairline.
constexpr float kBarShare = 1.0f / 12;
constexpr float kThinnestBar = 0.5f;

bool IsSound(const CFX_FloatRect& box) {
  return isfinite(box.left) && isfinite(box.bottom) && isfinite(box.right) && isfinite(box.top) &&
         box.Width() > 0 && box.Height() > 0;
}

// The boxes of the mark's quads; those of no size draw nothing.
std::vector<CFX_FloatRect> BoxesOf(const CPDF_Dictionary& mark) {
  std::vector<CFX_FloatRect> boxes;
  RetainPtr<const CPDF_Array> quads = mark.GetArrayFor("QuadPoints");
  const size_t count = quads ? CPDF_Annot::QuadPointCount(quads.Get()) : 0;
  for (size_t i = 0; i < count; ++i) {
    CFX_FloatRect box = CPDF_Annot::RectFromQuadPointsArray(quads.Get(), i);
    if (IsSound(box)) {
      boxes.push_back(box);
    }
  }
  return boxes;
}

CFX_FloatRect BoundsOf(const std::vector<CFX_FloatRect>& boxes) {
  CFX_FloatRect bounds = boxes.front();
  for (const CFX_FloatRect& box : boxes) {
    bounds.Union(box);
  }
  return bounds;
}

// The bar through the middle of a line of text, which runs along x or along y.
CFX_FloatRect BarThrough(CFX_FloatRect box, bool upright) {
  float& low = upright ? box.left : box.bottom;
  float& high = upright ? box.right : box.top;
  const float thickness = std::min(high - low, std::max(kThinnestBar, (high - low) * kBarShare));
  const float middle = (low + high) / 2;
  low = middle - thickness / 2;
  high = middle + thickness / 2;
  return box;
}

void WriteColor(fxcrt::ostringstream& content, const CPDF_Dictionary& mark, bool highlight) {
  RetainPtr<const CPDF_Array> color = mark.GetArrayFor("C");
  const size_t parts = color ? color->size() : 0;
  if (parts != 1 && parts != 3 && parts != 4) {
    content << (highlight ? "1 1 0 rg\n" : "0 g\n");
    return;
  }
  for (size_t i = 0; i < parts; ++i) {
    WriteFloat(content, std::clamp(color->GetFloatAt(i), 0.0f, 1.0f)) << " ";
  }
  content << (parts == 1 ? "g\n" : parts == 3 ? "rg\n" : "k\n");
}

// One path for all boxes, each wound the same way: where they overlap is filled once.
fxcrt::ostringstream ContentOf(const CPDF_Dictionary& mark,
                               const std::vector<CFX_FloatRect>& boxes,
                               bool highlight,
                               bool upright) {
  fxcrt::ostringstream content;
  content << "/GS gs\n";
  WriteColor(content, mark, highlight);
  for (const CFX_FloatRect& box : boxes) {
    WriteRect(content, highlight ? box : BarThrough(box, upright)) << " re\n";
  }
  content << "f\n";
  return content;
}

RetainPtr<CPDF_Dictionary> ResourcesOf(const CPDF_Dictionary& mark, bool highlight) {
  const float opacity = mark.KeyExist("CA") ? std::clamp(mark.GetFloatFor("CA"), 0.0f, 1.0f) : 1.0f;
  auto resources = pdfium::MakeRetain<CPDF_Dictionary>();
  auto state = resources->SetNewFor<CPDF_Dictionary>("ExtGState")->SetNewFor<CPDF_Dictionary>("GS");
  state->SetNewFor<CPDF_Name>("Type", "ExtGState");
  state->SetNewFor<CPDF_Name>("BM", highlight ? "Multiply" : "Normal");
  state->SetNewFor<CPDF_Number>("CA", opacity);
  state->SetNewFor<CPDF_Number>("ca", opacity);
  return resources;
}

RetainPtr<CPDF_Dictionary> FormOf(const CPDF_Dictionary& mark,
                                  const CFX_FloatRect& bounds,
                                  bool highlight) {
  auto form = pdfium::MakeRetain<CPDF_Dictionary>();
  form->SetNewFor<CPDF_Name>("Type", "XObject");
  form->SetNewFor<CPDF_Name>("Subtype", "Form");
  form->SetRectFor("BBox", bounds);
  form->SetFor("Resources", ResourcesOf(mark, highlight));
  return form;
}

// An appearance that is in no file yet goes away with the mark's reference to it.
void DropUnsavedAppearance(CPDF_Document& document, const CPDF_Dictionary& mark) {
  RetainPtr<const CPDF_Dictionary> appearances = mark.GetDictFor("AP");
  RetainPtr<const CPDF_Reference> normal =
      appearances ? ToReference(appearances->GetObjectFor("N")) : nullptr;
  const uint32_t last_in_file = document.GetParser() ? document.GetParser()->GetLastObjNum() : 0;
  if (normal && normal->GetRefObjNum() > last_in_file) {
    document.DeleteIndirectObject(normal->GetRefObjNum());
  }
}

}  // namespace

FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV
QuillmereEngine_WriteMarkAppearance(FPDF_ANNOTATION annotation, int text_turns) {
  const FPDF_ANNOTATION_SUBTYPE subtype = FPDFAnnot_GetSubtype(annotation);
  if (subtype != FPDF_ANNOT_HIGHLIGHT && subtype != FPDF_ANNOT_STRIKEOUT) {
    return false;
  }
  CPDF_AnnotContext* context = CPDFAnnotContextFromFPDFAnnotation(annotation);
  RetainPtr<CPDF_Dictionary> mark = context->GetMutableAnnotDict();
  const std::vector<CFX_FloatRect> boxes = BoxesOf(*mark);
  if (boxes.empty()) {
    return false;
  }
  const bool highlight = subtype == FPDF_ANNOT_HIGHLIGHT;
  const CFX_FloatRect bounds = BoundsOf(boxes);
  fxcrt::ostringstream content = ContentOf(*mark, boxes, highlight, text_turns % 2 != 0);

  CPDF_Document* document = context->GetPage()->GetDocument();
  DropUnsavedAppearance(*document, *mark);
  auto stream = document->NewIndirect<CPDF_Stream>(FormOf(*mark, bounds, highlight));
  stream->SetDataFromStringstream(&content);
  mark->SetNewFor<CPDF_Dictionary>("AP")->SetNewFor<CPDF_Reference>("N", document,
                                                                    stream->GetObjNum());
  // Readers stretch an appearance from its own box to the mark's.
  mark->SetRectFor("Rect", bounds);
  mark->RemoveFor("PDFIUM_HasGeneratedAP");
  return true;
}
