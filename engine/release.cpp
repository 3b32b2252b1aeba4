// Gives back what can be read from the file again. PDFium keeps every object that
// it has parsed until the document is closed, so that turning through a document
// would end with most of it in memory, several times the size of the file.

#include <stdint.h>

#include <map>
#include <set>
#include <vector>

#include "core/fpdfapi/font/cpdf_font.h"
#include "core/fpdfapi/page/cpdf_docpagedata.h"
#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_cross_ref_table.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fpdfapi/parser/cpdf_object_stream.h"
#include "core/fpdfapi/parser/cpdf_parser.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fpdfapi/parser/cpdf_stream.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "quillmere_engine.h"
#include "reach.h"
#include "unused_objects.h"

namespace {

struct ObjectStreamsOf {
  friend constexpr auto Reached(ObjectStreamsOf);
};
struct FontsOf {
  friend constexpr auto Reached(FontsOf);
};
template struct Reach<ObjectStreamsOf, &CPDF_Parser::object_stream_map_>;
template struct Reach<FontsOf, &CPDF_DocPageData::font_map_>;

bool IsInFile(const CPDF_Parser& parser, uint32_t number) {
  const auto* place = parser.GetCrossRefTableForTesting()->GetObjectInfo(number);
  return place && place->type != CPDF_CrossRefTable::ObjectType::kFree;
}

bool SeemsUnchanged(const CPDF_Document& document) {
  const CPDF_Parser* parser = document.GetParser();
  const DrawnObjects& drawn = document.drawn_objects();
  if (!parser || !document.has_valid_cross_reference_table() ||
      document.GetLastObjNum() != parser->GetLastObjNum() + drawn.Count()) {
    return false;
  }
  for (const auto& [number, object] : document) {
    if (drawn.Has(number)) {
      continue;
    }
    const CPDF_Stream* stream = ToStream(object.Get());
    if (!object || !IsInFile(*parser, number) || (stream && stream->has_new_data())) {
      return false;
    }
  }
  return true;
}

// Objects that stay although nothing counts as holding them.
class KeptObjects {
 public:
  explicit KeptObjects(const CPDF_Document& document) : document_(document) {
    KeepTrailer();
    KeepOutline();
  }

  bool Has(uint32_t number) const { return numbers_.contains(number); }

 private:
  // When PDFium saves, it finds what the trailer names in memory alone.
  void KeepTrailer() {
    const CPDF_Dictionary* trailer = document_.GetParser()->GetTrailer();
    if (!trailer) {
      return;
    }
    CPDF_DictionaryLocker locker(trailer);
    for (const auto& [key, value] : locker) {
      if (const CPDF_Reference* reference = value->AsReference()) {
        numbers_.insert(reference->GetRefObjNum());
      }
    }
  }

  // Bookmark handles are plain pointers to the outline's dictionaries, which in a
  // malicious file can be anything else at the same time.
  void KeepOutline() {
    Visit(document_.GetRoot(), "Outlines");
    while (!waiting_.empty()) {
      const CPDF_Dictionary* item = waiting_.back();
      waiting_.pop_back();
      Visit(item, "First");
      Visit(item, "Next");
    }
  }

  void Visit(const CPDF_Dictionary* parent, const char* key) {
    const CPDF_Object* entry = parent ? parent->GetObjectFor(key).Get() : nullptr;
    if (!entry) {
      return;
    }
    if (const CPDF_Reference* reference = entry->AsReference()) {
      const uint32_t number = reference->GetRefObjNum();
      numbers_.insert(number);
      if (!visited_.insert(number).second) {
        return;
      }
      entry = document_.GetIndirectObject(number).Get();
    }
    if (const CPDF_Dictionary* item = DictionaryOf(entry)) {
      waiting_.push_back(item);
    }
  }

  const CPDF_Document& document_;
  std::set<uint32_t> numbers_;
  // Objects of the outline whose own links were followed. What the trailer names is kept
  // without that and can be a part of the outline as well.
  std::set<uint32_t> visited_;
  std::vector<const CPDF_Dictionary*> waiting_;
};

// Page tree, resources and the like stay: they are small, and what is read of them
// is repaired in memory where the file is not quite sound.
bool CanBeReadAgain(const CPDF_Object& object) {
  const CPDF_Dictionary* dictionary = object.AsDictionary();
  return object.AsStream() || (dictionary && dictionary->GetNameFor("Subtype") == "Link");
}

void DropObjects(CPDF_Document& document) {
  const KeptObjects kept(document);
  std::vector<uint32_t> dropped;
  for (const auto& [number, object] : document) {
    if (IsInFile(*document.GetParser(), number) && CanBeReadAgain(*object) &&
        IsUnused(object.Get()) && !kept.Has(number)) {
      dropped.push_back(number);
    }
  }
  for (uint32_t number : dropped) {
    document.DeleteIndirectObject(number);
  }
}

// Type 3 fonts stay, as the renderer finds their glyphs by the font's address.
void DropFonts(CPDF_Document& document) {
  auto& fonts = CPDF_DocPageData::FromDocument(&document)->*Reached(FontsOf());
  std::erase_if(fonts, [](const auto& entry) {
    const CPDF_Font& font = *entry.second;
    return font.HasOneRef() && font.IsEmbedded() && !font.IsType3Font();
  });
}

}  // namespace

FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_ReleaseParsedObjects(FPDF_DOCUMENT document) {
  CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  if (!pdf || !SeemsUnchanged(*pdf)) {
    return false;
  }
  pdf->SetLinksContext(nullptr);
  DropFonts(*pdf);
  DropObjects(*pdf);
  (pdf->GetParser()->*Reached(ObjectStreamsOf())).clear();
  pdf->GetByteStringPool()->Clear();
  return true;
}
