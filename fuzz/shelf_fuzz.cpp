// An index of any content is read, and what is written of it reads as the same index.
#include <cstddef>
#include <cstdint>
#include <string>

#include "session/shelf_index.h"
#include "sound_session.h"
#include "store/shelf.h"

namespace {

using namespace quillmere;
using fuzz::require;

void requireSameEntry(const ShelfEntry& before, const ShelfEntry& after) {
  require(after.path == before.path, "the entries come in another order");
  require(after.shelfName == before.shelfName, "a name reads differently");
  require(after.dirty == before.dirty, "a flag reads differently");
  require(after.sourceSize == before.sourceSize && after.sourceTime == before.sourceTime,
          "a stamp reads differently");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ShelfIndex first;
  parseShelfIndex(fuzz::textOf(data, size), first);
  for (const ShelfEntry& entry : first) {
    require(entry.dirty || !entry.shelfName.empty(), "an entry holds nothing");
    require(!entry.path.empty(), "an entry of no document");
  }
  ShelfIndex second;
  parseShelfIndex(shelfIndexBytes(first), second);
  auto read = second.begin();
  for (const ShelfEntry& entry : first) {
    require(read != second.end(), "an entry is lost");
    requireSameEntry(entry, *read++);
  }
  require(read == second.end(), "an entry appeared");
  return 0;
}
