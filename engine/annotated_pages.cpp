// Finds pages by the annotations on them, from the pages' dictionaries alone.

#include <stddef.h>
#include <stdint.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
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
#include "core/fpdfdoc/cpdf_annot.h"
#include "core/fxcrt/fx_extension.h"
#include "core/fxcrt/observed_ptr.h"
#include "core/fxcrt/retain_ptr.h"
#include "core/fxcrt/span.h"
#include "fpdf_annot.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "page_tree.h"
#include "quillmere_engine.h"
#include "reach.h"
#include "unused_objects.h"

namespace {

// What has been read is forgotten after this many pages.
constexpr int kPagesReadAtATime = 16;

// How often a page that the tree names over and over is reported. Whoever reads the pages
// reads it that often, and a file of a kilobyte can name one page a million times.
constexpr int kMostMentionsOfAPage = 16;

// PDFium offers no other way to the text of the object streams it has unpacked.
struct ObjectStreamOf {
  friend constexpr auto Reached(ObjectStreamOf);
};
struct TextOf {
  friend constexpr auto Reached(TextOf);
};
struct ObjectStreamsOf {
  friend constexpr auto Reached(ObjectStreamsOf);
};
template struct Reach<ObjectStreamOf, &CPDF_Parser::GetObjectStream>;
template struct Reach<ObjectStreamsOf, &CPDF_Parser::object_stream_map_>;
template struct Reach<TextOf, &CPDF_ObjectStream::stream_acc_>;

// A set of annotation subtypes: bit n stands for the value n of fpdf_annot.h.
using SubtypeSet = uint32_t;
static_assert(FPDF_ANNOT_REDACT < 32);

ByteString NameOf(FPDF_ANNOTATION_SUBTYPE subtype) {
  return CPDF_Annot::AnnotSubtypeToString(static_cast<CPDF_Annot::Subtype>(subtype));
}

SubtypeSet SetOf(const FPDF_ANNOTATION_SUBTYPE* subtypes, int count) {
  SubtypeSet set = 0;
  for (int i = 0; i < count; ++i) {
    if (subtypes[i] > FPDF_ANNOT_UNKNOWN && subtypes[i] <= FPDF_ANNOT_REDACT) {
      set |= SubtypeSet{1} << subtypes[i];
    }
  }
  return set;
}

// The annotation subtypes that are looked for, by name.
class Subtypes {
 public:
  explicit Subtypes(SubtypeSet wanted) : all_(wanted) {
    for (int i = FPDF_ANNOT_UNKNOWN + 1; i <= FPDF_ANNOT_REDACT; ++i) {
      const ByteString name = (wanted >> i & 1) ? NameOf(i) : ByteString();
      if (!name.IsEmpty()) {
        names_.emplace_back(name.c_str());
        sets_.push_back(SubtypeSet{1} << i);
      }
    }
  }

  SubtypeSet All() const { return all_; }

  // The one that |name| names; none if it is not looked for.
  SubtypeSet Named(const CPDF_Object& name) const {
    if (!name.IsName()) {
      return 0;
    }
    const ByteString value = name.GetString();
    for (size_t i = 0; i < names_.size(); ++i) {
      if (value == names_[i].c_str()) {
        return sets_[i];
      }
    }
    return 0;
  }

  // Whether |text|, the objects of an object stream, can hold a dictionary whose
  // Subtype is one of the names: as such, with letters of either name written as
  // escapes, or given as a reference.
  bool MayBeIn(std::string_view text) const {
    for (const std::string& name : names_) {
      if (text.find(name) != text.npos) {
        return true;
      }
    }
    return HasEscapedLetter(text) || HasSubtypeThatIsNoName(text);
  }

 private:
  bool HasEscapedLetter(std::string_view text) const {
    for (size_t at = text.find('#'); at != text.npos && at + 2 < text.size();
         at = text.find('#', at + 1)) {
      if (FXSYS_IsHexDigit(text[at + 1]) && FXSYS_IsHexDigit(text[at + 2]) &&
          IsLetterOfNames(static_cast<char>(FXSYS_HexCharToInt(text[at + 1]) * 16 +
                                            FXSYS_HexCharToInt(text[at + 2])))) {
        return true;
      }
    }
    return false;
  }

  bool IsLetterOfNames(char letter) const {
    if (std::string_view("Subtype").find(letter) != std::string_view::npos) {
      return true;
    }
    for (const std::string& name : names_) {
      if (name.find(letter) != name.npos) {
        return true;
      }
    }
    return false;
  }

  static bool HasSubtypeThatIsNoName(std::string_view text) {
    static constexpr std::string_view kSubtype = "/Subtype";
    static constexpr std::string_view kBlanks(" \t\r\n\f\0", 6);
    for (size_t at = text.find(kSubtype); at != text.npos; at = text.find(kSubtype, at + 1)) {
      const size_t value = text.find_first_not_of(kBlanks, at + kSubtype.size());
      if (value != text.npos && text[value] != '/') {
        return true;
      }
    }
    return false;
  }

  const SubtypeSet all_;
  std::vector<std::string> names_;
  std::vector<SubtypeSet> sets_;  // of each name
};

// Finds annotations of some subtypes on one document's pages. A manual has tens
// of thousands of links, and making objects of them all takes most of the time;
// those whose object stream cannot hold what is looked for are passed over unread.
// No array is gone through twice, however many pages share it.
class AnnotationFinder {
 public:
  AnnotationFinder(CPDF_Document& document, Subtypes subtypes)
      : document_(document), subtypes_(std::move(subtypes)) {
    KeepObjects();
  }

  // What is in memory now stays there: whoever read it, as the outline does, will want it again.
  void KeepObjects() {
    known_objects_.clear();
    for (const auto& [number, object] : document_) {
      known_objects_.insert(number);
    }
    known_streams_.clear();
    if (CPDF_Parser* parser = document_.GetParser()) {
      for (const auto& [number, stream] : parser->*Reached(ObjectStreamsOf())) {
        known_streams_.insert(number);
      }
    }
  }

  // Which of the subtypes |page| has annotations of.
  SubtypeSet On(const CPDF_Dictionary& page) {
    if (page.GetObjNum() != 0 && ++mentions_[page.GetObjNum()] > kMostMentionsOfAPage) {
      return 0;
    }
    if (++pages_read_ % kPagesReadAtATime == 0) {
      ForgetObjects();
    }
    RetainPtr<const CPDF_Array> annotations = page.GetArrayFor("Annots");
    if (!annotations) {
      return 0;
    }
    if (annotations->GetObjNum() == 0) {
      return In(*annotations);
    }
    const auto [known, is_new] = arrays_.try_emplace(annotations->GetObjNum(), 0);
    if (is_new) {
      known->second = In(*annotations);
    }
    return known->second;
  }

  // Forgets what has been read meanwhile and nobody else uses; the parser reads it again
  // when asked. The pages of a manual take several times the memory of the rest.
  void ForgetObjects() {
    std::vector<uint32_t> unused;
    for (const auto& [number, object] : document_) {
      if (!known_objects_.contains(number) && IsUnused(object.Get())) {
        unused.push_back(number);
      }
    }
    for (uint32_t number : unused) {
      document_.DeleteIndirectObject(number);
    }
    if (CPDF_Parser* parser = document_.GetParser()) {
      std::erase_if(parser->*Reached(ObjectStreamsOf()),
                    [this](const auto& entry) { return !known_streams_.contains(entry.first); });
    }
  }

 private:
  SubtypeSet In(const CPDF_Array& annotations) {
    SubtypeSet found = 0;
    for (size_t i = 0; i < annotations.size() && found != subtypes_.All(); ++i) {
      RetainPtr<const CPDF_Object> entry = annotations.GetObjectAt(i);
      if (entry && entry->IsReference() && !MayBeWanted(entry->AsReference()->GetRefObjNum())) {
        continue;
      }
      RetainPtr<const CPDF_Dictionary> annotation = annotations.GetDictAt(i);
      RetainPtr<const CPDF_Object> subtype =
          annotation ? annotation->GetDirectObjectFor("Subtype") : nullptr;
      if (subtype) {
        found |= subtypes_.Named(*subtype);
      }
    }
    return found;
  }

  bool MayBeWanted(uint32_t number) {
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
        known->second = subtypes_.MayBeIn({reinterpret_cast<const char*>(text.data()), text.size()});
      }
    }
    return known->second;
  }

  CPDF_Document& document_;
  const Subtypes subtypes_;
  // Numbers of the objects and object streams that KeepObjects() found.
  std::unordered_set<uint32_t> known_objects_;
  std::unordered_set<uint32_t> known_streams_;
  int pages_read_ = 0;
  // Numbers of page objects, and how often the tree named each.
  std::unordered_map<uint32_t, int> mentions_;
  // Numbers of arrays of annotations, and which of the subtypes are in them.
  std::unordered_map<uint32_t, SubtypeSet> arrays_;
  // Numbers of object streams, and whether one can hold such an annotation.
  std::unordered_map<uint32_t, bool> streams_;
};

}  // namespace

struct quillmere_page_search_t__ {
  quillmere_page_search_t__(CPDF_Document& pdf, SubtypeSet wanted)
      : document(&pdf), finder(pdf, Subtypes(wanted)), walk(pdf) {}

  bool Continue(int steps) {
    if (!document || walk.AtEnd()) {
      return false;
    }
    finder.KeepObjects();
    for (; steps > 0 && !walk.AtEnd(); --steps) {
      std::optional<PageWalk::Page> page = walk.Step();
      const SubtypeSet subtypes = page ? finder.On(*page->dictionary) : 0;
      if (subtypes != 0) {
        found.push_back({page->index, subtypes});
      }
    }
    finder.ForgetObjects();
    return !walk.AtEnd();
  }

  struct AnnotatedPage {
    int index;
    SubtypeSet subtypes;
  };

  ObservedPtr<CPDF_Document> document;
  AnnotationFinder finder;
  PageWalk walk;
  std::vector<AnnotatedPage> found;
};

FPDF_EXPORT QUILLMERE_PAGE_SEARCH FPDF_CALLCONV
QuillmereEngine_StartPageSearch(FPDF_DOCUMENT document,
                                const FPDF_ANNOTATION_SUBTYPE* subtypes,
                                int subtype_count) {
  CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  return pdf && subtypes ? new quillmere_page_search_t__(*pdf, SetOf(subtypes, subtype_count))
                         : nullptr;
}

FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV
QuillmereEngine_ContinuePageSearch(QUILLMERE_PAGE_SEARCH search, int steps) {
  return search && search->Continue(steps);
}

FPDF_EXPORT int FPDF_CALLCONV
QuillmereEngine_FoundPages(QUILLMERE_PAGE_SEARCH search,
                           const FPDF_ANNOTATION_SUBTYPE* subtypes,
                           int subtype_count,
                           int* pages,
                           int capacity) {
  if (!search || !subtypes) {
    return 0;
  }
  const SubtypeSet wanted = SetOf(subtypes, subtype_count);
  int count = 0;
  for (const auto& page : search->found) {
    if ((page.subtypes & wanted) == 0) {
      continue;
    }
    if (pages && count < capacity) {
      pages[count] = page.index;
    }
    ++count;
  }
  return count;
}

FPDF_EXPORT void FPDF_CALLCONV QuillmereEngine_EndPageSearch(QUILLMERE_PAGE_SEARCH search) {
  delete search;
}
