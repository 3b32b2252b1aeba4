#ifndef QUILLMERE_PAGE_INDEXES_H_
#define QUILLMERE_PAGE_INDEXES_H_

#include <stdint.h>

#include <optional>
#include <unordered_map>

class CPDF_Document;

// Which page a page object is. Every CPDF_Document has one of these, made at the first
// question: asking the tree each time is slow, and a tree that leads back into itself
// would be walked for ever.
class PageIndexes {
 public:
  // The zero-based index that FPDF_LoadPage() gives the page whose dictionary is object
  // |number|, the first one where it stands in the tree more than once, or -1.
  int Of(const CPDF_Document& document, uint32_t number);

  // To be called when pages came, went or moved.
  void Forget() { indexes_.reset(); }

 private:
  std::optional<std::unordered_map<uint32_t, int>> indexes_;
};

#endif  // QUILLMERE_PAGE_INDEXES_H_
