#ifndef QUILLMERE_DRAWN_OBJECTS_H_
#define QUILLMERE_DRAWN_OBJECTS_H_

#include <stdint.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

// The objects that drawing has added to a document: appearances for annotations that
// lack one, and numbers for annotations that stood in the page's own array. They are made
// from the file alone and once, so they are no edits.
class DrawnObjects {
 public:
  // Notes what |Document| gains while this lives.
  template <typename Document>
  class Scope {
   public:
    explicit Scope(Document& document) : document_(document), before_(document.GetLastObjNum()) {}
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { document_.drawn_objects().Add(before_ + 1, document_.GetLastObjNum()); }

   private:
    Document& document_;
    const uint32_t before_;
  };

  bool Has(uint32_t number) const {
    const auto after = std::upper_bound(
        ranges_.begin(), ranges_.end(), number,
        [](uint32_t value, const std::pair<uint32_t, uint32_t>& range) { return value < range.first; });
    return after != ranges_.begin() && number <= std::prev(after)->second;
  }

  uint32_t Count() const { return count_; }

 private:
  // Numbers only grow, so the ranges are in order.
  void Add(uint32_t first, uint32_t last) {
    if (last < first) {
      return;
    }
    count_ += last - first + 1;
    if (!ranges_.empty() && ranges_.back().second + 1 == first) {
      ranges_.back().second = last;
    } else {
      ranges_.emplace_back(first, last);
    }
  }

  std::vector<std::pair<uint32_t, uint32_t>> ranges_;
  uint32_t count_ = 0;
};

#endif  // QUILLMERE_DRAWN_OBJECTS_H_
