// Draws annotations into the content of their page. FPDFPage_Flatten() overwrites the page's boxes,
// drops links and whatever it cannot draw, and breaks pages that inherit their resources or share
// their content.

#include <stddef.h>

#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "constants/annotation_flags.h"
#include "core/fpdfapi/edit/cpdf_contentstream_write_utils.h"
#include "core/fpdfapi/page/cpdf_allstates.h"
#include "core/fpdfapi/page/cpdf_contentparser.h"
#include "core/fpdfapi/page/cpdf_page.h"
#include "core/fpdfapi/page/cpdf_streamcontentparser.h"
#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_name.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fpdfapi/parser/cpdf_stream.h"
#include "core/fpdfdoc/cpdf_annot.h"
#include "core/fpdfdoc/cpdf_annotlist.h"
#include "core/fxcrt/fx_coordinates.h"
#include "core/fxcrt/fx_extension.h"
#include "core/fxcrt/fx_string_wrappers.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdf_flatten.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "quillmere_engine.h"
#include "reach.h"

namespace {

struct ParserOf {
  friend constexpr auto Reached(ParserOf);
};
struct SavedStatesOf {
  friend constexpr auto Reached(SavedStatesOf);
};
template struct Reach<ParserOf, &CPDF_ContentParser::parser_>;
template struct Reach<SavedStatesOf, &CPDF_StreamContentParser::state_stack_>;

// An annotation's appearance and where it stands on the page.
struct Drawing {
  RetainPtr<const CPDF_Dictionary> annotation;
  RetainPtr<CPDF_Stream> form;
  CFX_Matrix matrix;
};

// From the form's own box to the annotation's, as the page is drawn.
CFX_Matrix MatrixOf(const CPDF_Annot& annotation,
                    const CFX_FloatRect& form_box,
                    const CPDF_Page& page) {
  CFX_Matrix matrix;
  const CFX_FloatRect place = annotation.GetRect();
  matrix.MatchRect(place, form_box);
  const int turns = page.GetPageRotation();
  if (turns != 0 && (annotation.GetFlags() & pdfium::annotation_flags::kNoRotate)) {
    matrix.Concat({1, 0, 0, 1, -place.Left(), -place.Top()});
    matrix.Rotate(FXSYS_PI / 2 * turns);
    matrix.Concat({1, 0, 0, 1, place.Left(), place.Top()});
  }
  return matrix;
}

// Links stay what they are, with their appearance if they have one.
std::optional<Drawing> DrawingOf(CPDF_Annot& annotation, const CPDF_Page& page) {
  constexpr int kNotSeen = pdfium::annotation_flags::kHidden | pdfium::annotation_flags::kNoView;
  if (annotation.GetSubtype() == CPDF_Annot::Subtype::LINK || (annotation.GetFlags() & kNotSeen)) {
    return std::nullopt;
  }
  RetainPtr<CPDF_Dictionary> dictionary = annotation.GetMutableAnnotDict();
  RetainPtr<CPDF_Stream> form = GetAnnotAP(dictionary.Get(), CPDF_Annot::AppearanceMode::kNormal);
  if (!form) {
    return std::nullopt;
  }
  const CFX_FloatRect box =
      form->GetDict()->GetMatrixFor("Matrix").TransformRect(form->GetDict()->GetRectFor("BBox"));
  if (box.IsEmpty() || annotation.GetRect().IsEmpty()) {
    return std::nullopt;
  }
  return Drawing{std::move(dictionary), std::move(form), MatrixOf(annotation, box, page)};
}

// What the page draws of its annotations: form fields lie above everything else.
std::vector<Drawing> DrawingsOf(CPDF_Page& page) {
  DrawnObjects::Scope drawn(*page.GetDocument());
  const CPDF_AnnotList annotations(&page);
  std::vector<Drawing> drawings;
  for (const bool fields : {false, true}) {
    for (size_t i = 0; i < annotations.Count(); ++i) {
      CPDF_Annot& annotation = *annotations.GetAt(i);
      if ((annotation.GetSubtype() == CPDF_Annot::Subtype::WIDGET) != fields) {
        continue;
      }
      if (std::optional<Drawing> drawing = DrawingOf(annotation, page)) {
        drawings.push_back(std::move(*drawing));
      }
    }
  }
  return drawings;
}

// The page's resources become its own, with a dictionary of forms that no other page shares.
RetainPtr<CPDF_Dictionary> OwnForms(CPDF_Page& page) {
  RetainPtr<const CPDF_Dictionary> before = page.GetResources();
  RetainPtr<CPDF_Dictionary> resources =
      before ? ToDictionary(before->Clone()) : pdfium::MakeRetain<CPDF_Dictionary>();
  RetainPtr<const CPDF_Dictionary> forms_before = resources->GetDictFor("XObject");
  RetainPtr<CPDF_Dictionary> forms =
      forms_before ? ToDictionary(forms_before->Clone()) : pdfium::MakeRetain<CPDF_Dictionary>();
  resources->SetFor("XObject", forms);
  page.GetMutableDict()->SetFor("Resources", resources);
  return forms;
}

// What a content stream calls |form|.
ByteString AddForm(CPDF_Document& document, CPDF_Dictionary& forms, const RetainPtr<CPDF_Stream>& form) {
  RetainPtr<CPDF_Stream> stream = form;
  if (stream->IsInline()) {
    stream = ToStream(form->Clone());
    document.AddIndirectObject(stream);
  }
  RetainPtr<CPDF_Dictionary> dictionary = stream->GetMutableDict();
  if (dictionary->GetNameFor("Subtype") != "Form") {
    dictionary->SetNewFor<CPDF_Name>("Subtype", "Form");
  }
  ByteString name;
  for (size_t number = forms.size(); name.IsEmpty() || forms.KeyExist(name.AsStringView()); ++number) {
    name = ByteString::Format("Flat%d", static_cast<int>(number));
  }
  forms.SetNewFor<CPDF_Reference>(name, &document, stream->GetObjNum());
  return name;
}

void AppendStream(CPDF_Document& document, CPDF_Array& contents, fxcrt::ostringstream& data) {
  auto stream = document.NewIndirect<CPDF_Stream>(&data);
  contents.AppendNew<CPDF_Reference>(&document, stream->GetObjNum());
}

// How many graphics states the page's content saves and does not restore.
size_t OpenStates(CPDF_Page& page) {
  CPDF_ContentParser content(&page);
  while (content.Continue(nullptr)) {
  }
  const auto& parser = content.*Reached(ParserOf());
  return parser ? ((*parser).*Reached(SavedStatesOf())).size() : 0;
}

// The streams that the page had, which other pages may use too, between new ones.
void WrapContents(CPDF_Page& page, fxcrt::ostringstream& drawn) {
  CPDF_Document& document = *page.GetDocument();
  RetainPtr<CPDF_Dictionary> dictionary = page.GetMutableDict();
  auto contents = pdfium::MakeRetain<CPDF_Array>();
  fxcrt::ostringstream start;
  start << "q\n";
  AppendStream(document, *contents, start);
  if (RetainPtr<const CPDF_Array> before = dictionary->GetArrayFor("Contents")) {
    for (size_t i = 0; i < before->size(); ++i) {
      contents->Append(before->GetObjectAt(i)->Clone());
    }
  } else if (RetainPtr<const CPDF_Stream> only = dictionary->GetStreamFor("Contents")) {
    contents->AppendNew<CPDF_Reference>(&document, only->GetObjNum());
  }
  AppendStream(document, *contents, drawn);
  dictionary->SetFor("Contents", std::move(contents));
}

// The annotations of |page| that go: those that are drawn, and their pop-ups.
std::set<const CPDF_Dictionary*> GoingFrom(const CPDF_Dictionary& page, const std::vector<Drawing>& drawings) {
  std::set<const CPDF_Dictionary*> going;
  std::set<const CPDF_Dictionary*> named;
  for (const Drawing& drawing : drawings) {
    going.insert(drawing.annotation.Get());
    if (RetainPtr<const CPDF_Dictionary> popup = drawing.annotation->GetDictFor("Popup")) {
      named.insert(popup.Get());
    }
  }
  RetainPtr<const CPDF_Array> annotations = page.GetArrayFor("Annots");
  for (size_t i = 0; i < annotations->size(); ++i) {
    RetainPtr<const CPDF_Dictionary> popup = annotations->GetDictAt(i);
    if (popup && popup->GetNameFor("Subtype") == "Popup" &&
        (named.contains(popup.Get()) || going.contains(popup->GetDictFor("Parent").Get()))) {
      going.insert(popup.Get());
    }
  }
  return going;
}

// The array may serve other pages too, so the page gets a new one.
void KeepOtherAnnotations(CPDF_Dictionary& page, const std::vector<Drawing>& drawings) {
  const std::set<const CPDF_Dictionary*> going = GoingFrom(page, drawings);
  auto kept = pdfium::MakeRetain<CPDF_Array>();
  RetainPtr<const CPDF_Array> before = page.GetArrayFor("Annots");
  for (size_t i = 0; i < before->size(); ++i) {
    RetainPtr<const CPDF_Dictionary> annotation = before->GetDictAt(i);
    if (annotation && !going.contains(annotation.Get())) {
      kept->Append(before->GetObjectAt(i)->Clone());
    }
  }
  if (kept->IsEmpty()) {
    page.RemoveFor("Annots");
  } else {
    page.SetFor("Annots", std::move(kept));
  }
}

}  // namespace

FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_FlattenPage(FPDF_DOCUMENT document, int page_index) {
  CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  RetainPtr<CPDF_Dictionary> dictionary = pdf ? pdf->GetMutablePageDictionary(page_index) : nullptr;
  if (!dictionary || !CPDF_Page::IsValidPageDictLoose(dictionary.Get())) {
    return FLATTEN_FAIL;
  }
  if (!dictionary->GetArrayFor("Annots")) {
    return FLATTEN_NOTHINGTODO;
  }
  auto page = pdfium::MakeRetain<CPDF_Page>(pdf, dictionary);
  const std::vector<Drawing> drawings = DrawingsOf(*page);
  if (drawings.empty()) {
    return FLATTEN_NOTHINGTODO;
  }
  RetainPtr<CPDF_Dictionary> forms = OwnForms(*page);
  fxcrt::ostringstream drawn;
  drawn << '\n';
  for (size_t open = OpenStates(*page) + 1; open > 0; --open) {
    drawn << "Q\n";
  }
  for (const Drawing& drawing : drawings) {
    drawn << "q ";
    WriteMatrix(drawn, drawing.matrix) << " cm /" << AddForm(*pdf, *forms, drawing.form) << " Do Q\n";
  }
  WrapContents(*page, drawn);
  KeepOtherAnnotations(*dictionary, drawings);
  return FLATTEN_SUCCESS;
}
