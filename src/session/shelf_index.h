#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <unordered_map>

#include "base/fnv1a.h"
#include "session/shelf_entry.h"

namespace quillmere {

// The shelf's entries, found by the lower-cased paths of their documents and kept in the order in
// which they were made.
class ShelfIndex {
 public:
  using Entries = std::list<ShelfEntry>;
  using Iterator = Entries::iterator;

  ShelfIndex() = default;
  ShelfIndex(const ShelfIndex&) = delete;  // the places in the list cannot be copied
  ShelfIndex& operator=(const ShelfIndex&) = delete;

  // end() when the document has none.
  Iterator find(const std::u16string& path);
  // The document's entry; an empty one is made at the end when it has none.
  ShelfEntry& operator[](const std::u16string& path);
  void erase(Iterator entry);
  void clear();

  Iterator begin() { return entries_.begin(); }
  Iterator end() { return entries_.end(); }
  Entries::const_iterator begin() const { return entries_.begin(); }
  Entries::const_iterator end() const { return entries_.end(); }
  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }

 private:
  Entries entries_;
  std::unordered_map<std::u16string, Iterator, Fnv1aTextHash> places_;
};

}  // namespace quillmere
