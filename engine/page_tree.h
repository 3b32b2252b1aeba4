#ifndef QUILLMERE_PAGE_TREE_H_
#define QUILLMERE_PAGE_TREE_H_

#include <stddef.h>

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

// Calls |visit| with the index and the dictionary of every page below |top|. The
// numbering is that of FPDF_LoadPage(): a child that is no dictionary takes an
// index, a node that lists itself does not.
template <typename Visitor>
void ForEachPageBelow(RetainPtr<const CPDF_Dictionary> top, int page_count, Visitor visit) {
  std::vector<PageTreeLevel> path;
  path.push_back({top, top->GetArrayFor("Kids")});
  int index = 0;
  for (int steps = 0; !path.empty() && index < page_count && steps < kMostPageTreeSteps; ++steps) {
    PageTreeLevel& level = path.back();
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
    } else if (path.size() >= kDeepestPageTreeLevel) {
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

#endif  // QUILLMERE_PAGE_TREE_H_
