// Page trees may name one page, or one node with all its pages, several times, and pages may share
// a list of annotations. An edit of such a page then changes others as well, and one that comes or
// goes takes them along.

#include <stddef.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "core/fpdfapi/page/cpdf_page.h"
#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_name.h"
#include "core/fpdfapi/parser/cpdf_number.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "page_tree_limits.h"
#include "quillmere_engine.h"
#include "reach.h"

namespace {

struct PageListOf {
  friend constexpr auto Reached(PageListOf);
};
struct ResetTraversalOf {
  friend constexpr auto Reached(ResetTraversalOf);
};
template struct Reach<PageListOf, &CPDF_Document::page_list_>;
template struct Reach<ResetTraversalOf, &CPDF_Document::ResetTraversal>;

// A node of the page tree and the place of the next child to look at.
struct Level {
  RetainPtr<CPDF_Dictionary> node;
  RetainPtr<CPDF_Array> kids;
  size_t next = 0;
  int pages = 0;  // so far
};

// Copies and the entries of their annotations: hostile trees name a page a million times.
constexpr size_t kMostCopied = 200'000;

class PageSeparator {
 public:
  explicit PageSeparator(CPDF_Document& document) : document_(document) {}

  // Whether anything is named twice; nothing about a tree that leads back into itself, does not come
  // to an end or names too much.
  enum class Tree { kSeparate, kShared, kEndless };
  Tree Look() {
    Walk(false);
    return endless_ ? Tree::kEndless : shared_ ? Tree::kShared : Tree::kSeparate;
  }

  // PDFium finds a page by what is below the nodes, and the place to insert or delete one by their
  // counts and types. Not to be used for endless trees.
  void CorrectNodes() {
    for (auto& [node, pages] : wrong_counts_) {
      node->SetNewFor<CPDF_Number>("Count", pages);
    }
    for (auto& kid : wrong_types_) {
      kid->SetNewFor<CPDF_Name>("Type", kid->KeyExist("Kids") ? "Pages" : "Page");
    }
  }

  // Replaces what is named again by copies. Not to be used for endless trees.
  void Separate() {
    Walk(true);
    auto& pages = document_.*Reached(PageListOf());
    std::fill(pages.begin(), pages.end(), 0);
    (document_.*Reached(ResetTraversalOf()))();
    document_.page_indexes().Forget();
  }

 private:
  void Walk(bool separate) {
    RetainPtr<CPDF_Dictionary> root = document_.GetMutableRoot();
    RetainPtr<CPDF_Dictionary> top = root ? root->GetMutableDictFor("Pages") : nullptr;
    if (!top) {
      return;
    }
    // An unshared tree has fewer nodes than pages, however it is built.
    int steps_left = 4 * document_.GetPageCount() + 1000;
    seen_.insert(top.Get());
    std::vector<Level> path;
    Enter(path, std::move(top), separate);
    while (!path.empty() && !endless_) {
      Level& level = path.back();
      if (!level.kids || level.next >= level.kids->size()) {
        Leave(path);
      } else if (--steps_left < 0) {
        endless_ = true;
      } else {
        Visit(path, separate);
      }
    }
  }

  void Enter(std::vector<Level>& path, RetainPtr<CPDF_Dictionary> node, bool separate) {
    RetainPtr<CPDF_Array> kids = node->GetMutableArrayFor("Kids");
    if (kids && !seen_.insert(kids.Get()).second) {
      shared_ = true;
      if (separate) {
        kids = ToArray(kids->Clone());
        node->SetFor("Kids", kids);
      }
    }
    path.push_back({std::move(node), std::move(kids)});
  }

  void Leave(std::vector<Level>& path) {
    const Level done = std::move(path.back());
    path.pop_back();
    if (path.empty()) {
      return;
    }
    path.back().pages += done.pages;
    if (done.kids && done.node->GetIntegerFor("Count") != done.pages) {
      wrong_counts_.emplace_back(done.node, done.pages);
    }
  }

  void Visit(std::vector<Level>& path, bool separate) {
    Level& level = path.back();
    const size_t place = level.next++;
    RetainPtr<CPDF_Dictionary> kid = level.kids->GetMutableDictAt(place);
    if (!kid) {
      ++level.pages;  // what is no page takes an index as well
      return;
    }
    if (kid == level.node) {
      return;
    }
    const bool on_path =
        std::ranges::any_of(path, [&kid](const Level& above) { return above.node == kid; });
    if (on_path || path.size() >= kDeepestPageTreeLevel) {
      endless_ = true;
      return;
    }
    if (!seen_.insert(kid.Get()).second) {
      shared_ = true;
      NoteCopy(*kid);
      if (separate) {
        kid = CopyAt(level, place, *kid);
        seen_.insert(kid.Get());
      }
    }
    const bool is_node = kid->KeyExist("Kids");
    if (kid->GetNameFor("Type") == (is_node ? "Page" : "Pages")) {
      wrong_types_.push_back(kid);
    }
    if (is_node) {
      Enter(path, std::move(kid), separate);
    } else {
      ++level.pages;
      GiveOwnAnnotations(*kid, separate);
    }
  }

  // An annotation that comes to a page's list, or leaves it, must not do so on other pages.
  void GiveOwnAnnotations(CPDF_Dictionary& page, bool separate) {
    RetainPtr<CPDF_Array> annotations = page.GetMutableArrayFor("Annots");
    if (!annotations || seen_.insert(annotations.Get()).second) {
      return;
    }
    shared_ = true;
    copied_ += 1 + annotations->size();
    endless_ = endless_ || copied_ > kMostCopied;
    if (separate) {
      page.SetFor("Annots", annotations->Clone());
    }
  }

  void NoteCopy(const CPDF_Dictionary& kid) {
    RetainPtr<const CPDF_Array> annotations = kid.GetArrayFor("Annots");
    copied_ += 1 + (annotations ? annotations->size() : 0);
    endless_ = endless_ || copied_ > kMostCopied;
  }

  // A copy of |kid| takes its place. A page keeps what it inherits where it was first.
  RetainPtr<CPDF_Dictionary> CopyAt(const Level& level, size_t place, CPDF_Dictionary& kid) {
    RetainPtr<CPDF_Dictionary> copy = ToDictionary(kid.Clone());
    if (RetainPtr<const CPDF_Array> kids = kid.GetArrayFor("Kids")) {
      copy->SetFor("Kids", kids->Clone());
    } else {
      CopyInherited(kid, *copy);
      if (RetainPtr<const CPDF_Array> annotations = kid.GetArrayFor("Annots")) {
        copy->SetFor("Annots", annotations->Clone());
      }
    }
    document_.AddIndirectObject(copy);
    copy->SetNewFor<CPDF_Reference>("Parent", &document_, level.node->GetObjNum());
    level.kids->SetNewAt<CPDF_Reference>(place, &document_, copy->GetObjNum());
    return copy;
  }

  static void CopyInherited(const CPDF_Dictionary& page, CPDF_Dictionary& copy) {
    for (const char* key : {"Resources", "MediaBox", "CropBox", "Rotate"}) {
      RetainPtr<const CPDF_Dictionary> node = pdfium::WrapRetain(&page);
      std::set<RetainPtr<const CPDF_Dictionary>> visited;
      while (node && !node->KeyExist(key) && visited.insert(node).second) {
        node = node->GetDictFor("Parent");
      }
      if (node && node->KeyExist(key)) {
        copy.SetFor(key, node->GetObjectFor(key)->Clone());
      }
    }
  }

  CPDF_Document& document_;
  std::set<const CPDF_Object*> seen_;
  std::vector<std::pair<RetainPtr<CPDF_Dictionary>, int>> wrong_counts_;
  std::vector<RetainPtr<CPDF_Dictionary>> wrong_types_;
  size_t copied_ = 0;
  bool shared_ = false;
  bool endless_ = false;
};

}  // namespace

FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_SeparatePages(FPDF_DOCUMENT document) {
  CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  if (!pdf) {
    return false;
  }
  PageSeparator look(*pdf);
  const PageSeparator::Tree tree = look.Look();
  if (tree == PageSeparator::Tree::kEndless) {
    return false;
  }
  look.CorrectNodes();
  if (tree == PageSeparator::Tree::kShared) {
    PageSeparator(*pdf).Separate();
  }
  return true;
}
