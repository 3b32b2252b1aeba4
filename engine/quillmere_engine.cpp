#include "quillmere_engine.h"

#include <stddef.h>
#include <stdint.h>

#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_cross_ref_table.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fpdfapi/parser/cpdf_object_stream.h"
#include "core/fpdfapi/parser/cpdf_parser.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fpdfapi/parser/cpdf_stream_acc.h"
#include "core/fxcrt/retain_ptr.h"
#include "core/fxcrt/span.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "quillmere_engine_version.h"
#include "reach.h"

namespace {

// PDFium numbers the pages of a tree up to this depth and no further.
constexpr size_t kDeepestLevel = 1024;
// A damaged tree can reach the same nodes over and over without ever coming to
// a page; no sound one needs this many steps.
constexpr int kMostSteps = 4 * CPDF_Document::kPageMaxNum;

// PDFium offers no other way to the text of the object streams it has unpacked.
struct ObjectStreamOf {
  friend constexpr auto Reached(ObjectStreamOf);
};
struct TextOf {
  friend constexpr auto Reached(TextOf);
};
template struct Reach<ObjectStreamOf, &CPDF_Parser::GetObjectStream>;
template struct Reach<TextOf, &CPDF_ObjectStream::stream_acc_>;

// Whether |text|, the objects of an object stream, can hold a dictionary whose
// Subtype is the name Stamp: as such, with letters of either name written as
// escapes, or given as a reference.
bool MayHoldStamp(std::string_view text) {
  if (text.find("Stamp") != text.npos) {
    return true;
  }
  for (size_t at = text.find('#'); at != text.npos; at = text.find('#', at + 1)) {
    static constexpr std::string_view kEscapes = "53 74 61 6d 6D 70 75 62 79 65 ";
    if (kEscapes.find(text.substr(at + 1, 2)) != kEscapes.npos) {
      return true;
    }
  }
  static constexpr std::string_view kSubtype = "/Subtype";
  for (size_t at = text.find(kSubtype); at != text.npos; at = text.find(kSubtype, at + 1)) {
    const size_t value = text.find_first_not_of(std::string_view(" \t\r\n\f\0", 6), at + kSubtype.size());
    if (value != text.npos && text[value] != '/') {
      return true;
    }
  }
  return false;
}

// Finds stamps among the annotations of one document's pages. A manual has tens
// of thousands of links, and making objects of them all takes most of the time;
// those whose object stream cannot hold a stamp are passed over unread.
class StampFinder {
 public:
  explicit StampFinder(const CPDF_Document& document) : document_(document) {}

  bool IsOn(const CPDF_Dictionary& page) {
    RetainPtr<const CPDF_Array> annotations = page.GetArrayFor("Annots");
    if (!annotations) {
      return false;
    }
    for (size_t i = 0; i < annotations->size(); ++i) {
      RetainPtr<const CPDF_Object> entry = annotations->GetObjectAt(i);
      if (entry && entry->IsReference() && !MayBeStamp(entry->AsReference()->GetRefObjNum())) {
        continue;
      }
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

 private:
  bool MayBeStamp(uint32_t number) {
    CPDF_Parser* parser = document_.GetParser();
    if (!parser || document_.GetIndirectObject(number)) {
      return true;
    }
    const auto* place = parser->GetCrossRefTableForTesting()->GetObjectInfo(number);
    if (!place || place->type != CPDF_CrossRefTable::ObjectType::kCompressed) {
      return true;
    }
    const uint32_t stream_number = place->archive.obj_num;
    auto [known, is_new] = streams_.try_emplace(stream_number, true);
    if (is_new) {
      const CPDF_ObjectStream* stream = (parser->*Reached(ObjectStreamOf()))(stream_number);
      if (stream) {
        pdfium::span<const uint8_t> text = (stream->*Reached(TextOf()))->GetSpan();
        known->second = MayHoldStamp({reinterpret_cast<const char*>(text.data()), text.size()});
      }
    }
    return known->second;
  }

  const CPDF_Document& document_;
  // Numbers of object streams, and whether one can hold a stamp.
  std::unordered_map<uint32_t, bool> streams_;
};

// A node of the page tree and the place of the next child to look at.
struct Level {
  RetainPtr<const CPDF_Dictionary> node;
  RetainPtr<const CPDF_Array> kids;
  size_t next = 0;
};

// Calls |visit| with the index and the dictionary of every page below |top|. The
// numbering is that of FPDF_LoadPage(): a child that is no dictionary takes an
// index, a node that lists itself does not.
template <typename Visitor>
void ForEachPageBelow(RetainPtr<const CPDF_Dictionary> top, int page_count, Visitor visit) {
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

// The same for every page of the document; a root of the page tree without
// children is itself the only page.
template <typename Visitor>
void ForEachPage(const CPDF_Document& document, Visitor visit) {
  const CPDF_Dictionary* root = document.GetRoot();
  RetainPtr<const CPDF_Dictionary> top = root ? root->GetDictFor("Pages") : nullptr;
  if (!top) {
    return;
  }
  const int page_count = document.GetPageCount();
  if (top->KeyExist("Kids")) {
    ForEachPageBelow(std::move(top), page_count, visit);
  } else if (page_count > 0) {
    visit(0, *top);
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
  StampFinder stamp(*pdf);
  ForEachPage(*pdf, [&](int index, const CPDF_Dictionary& page) {
    if (!stamp.IsOn(page)) {
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
