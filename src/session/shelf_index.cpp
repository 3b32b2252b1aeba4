#include "session/shelf_index.h"

#include <utility>

namespace quillmere {

ShelfIndex::Iterator ShelfIndex::find(const std::u16string& path) {
  const auto place = places_.find(path);
  return place == places_.end() ? entries_.end() : place->second;
}

ShelfEntry& ShelfIndex::operator[](const std::u16string& path) {
  const Iterator known = find(path);
  if (known != entries_.end()) return *known;
  ShelfEntry entry;
  entry.path = path;
  const Iterator made = entries_.insert(entries_.end(), std::move(entry));
  places_.emplace(path, made);
  return *made;
}

void ShelfIndex::erase(Iterator entry) {
  places_.erase(entry->path);
  entries_.erase(entry);
}

void ShelfIndex::clear() {
  places_.clear();
  entries_.clear();
}

}  // namespace quillmere
