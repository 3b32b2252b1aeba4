#pragma once

namespace quillmere::platform {

// A zeroed structure with its own size in `cbSize`.
template <typename Record>
Record sized() {
  Record record{};
  record.cbSize = sizeof(Record);
  return record;
}

}  // namespace quillmere::platform
