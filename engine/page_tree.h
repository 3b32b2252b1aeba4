#ifndef QUILLMERE_PAGE_TREE_H_
#define QUILLMERE_PAGE_TREE_H_

#include <stddef.h>

#include <optional>
#include <utility>
#include <vector>

#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fxcrt/retain_ptr.h"
#include "page_tree_limits.h"

// A node of the page tree and the place of the next child to look at.
struct PageTreeLevel {
  RetainPtr<const CPDF_Dictionary> node;
  RetainPtr<const CPDF_Array> kids;
  size_t next = 0;
};

// Goes through the pages of a document one by one. The numbering is that of
// FPDF_LoadPage(): a child that is no dictionary takes an index, a node that lists
// itself does not. A root of the page tree without children is itself the only
// page. Pages must not be inserted or deleted meanwhile.
class PageWalk {
 public:
  struct Page {
    int index;
    RetainPtr<const CPDF_Dictionary> dictionary;
  };

  explicit PageWalk(const CPDF_Document& document) : page_count_(document.GetPageCount()) {
    const CPDF_Dictionary* root = document.GetRoot();
    RetainPtr<const CPDF_Dictionary> top = root ? root->GetDictFor("Pages") : nullptr;
    if (top && page_count_ > 0) {
      RetainPtr<const CPDF_Array> kids = top->GetArrayFor("Kids");
      top_is_page_ = !top->KeyExist("Kids");
      path_.push_back({std::move(top), std::move(kids)});
    }
  }

  bool AtEnd() const {
    return path_.empty() || index_ >= page_count_ || steps_ >= kMostPageTreeSteps;
  }

  // Goes to the next child of a node, or back up. Returns the page it came to, if
  // any. Call it only before the end.
  std::optional<Page> Step() {
    ++steps_;
    PageTreeLevel& level = path_.back();
    if (top_is_page_) {
      Page top = {index_++, level.node};
      path_.clear();
      return top;
    }
    if (!level.kids || level.next >= level.kids->size()) {
      path_.pop_back();
      return std::nullopt;
    }
    RetainPtr<const CPDF_Dictionary> kid = level.kids->GetDictAt(level.next++);
    if (!kid) {
      ++index_;
    } else if (kid == level.node) {
      return std::nullopt;
    } else if (!kid->KeyExist("Kids")) {
      return Page{index_++, std::move(kid)};
    } else if (path_.size() >= kDeepestPageTreeLevel) {
      path_.clear();
    } else {
      RetainPtr<const CPDF_Array> kids = kid->GetArrayFor("Kids");
      path_.push_back({std::move(kid), std::move(kids)});
    }
    return std::nullopt;
  }

 private:
  const int page_count_;
  bool top_is_page_ = false;
  int index_ = 0;
  int steps_ = 0;
  std::vector<PageTreeLevel> path_;
};

// Calls |visit| with the index and the dictionary of every page of the document.
template <typename Visitor>
void ForEachPage(const CPDF_Document& document, Visitor visit) {
  PageWalk walk(document);
  while (!walk.AtEnd()) {
    if (std::optional<PageWalk::Page> page = walk.Step()) {
      visit(page->index, *page->dictionary);
    }
  }
}

#endif  // QUILLMERE_PAGE_TREE_H_
