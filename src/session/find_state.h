#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillmere {

// One hit: `count` characters from `start` in PDFium's numbering of the zero-based page.
struct FindResult {
  std::int32_t page = 0;
  std::int32_t start = 0;
  std::int32_t count = 0;
};

// The results of the last search. An empty query means that no search is active.
struct FindState {
  std::u16string query;
  std::vector<FindResult> results;  // ordered by page, then by start
  std::int32_t currentIndex = -1;   // into results; -1 when there is none
  bool regexMode = false;
  bool matchCase = false;
  bool wholeWord = false;
  bool badPattern = false;
  bool capped = false;
  bool wholeDocument = false;
};

}  // namespace quillmere
