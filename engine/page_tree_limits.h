#ifndef QUILLMERE_PAGE_TREE_LIMITS_H_
#define QUILLMERE_PAGE_TREE_LIMITS_H_

#include <stddef.h>

// PDFium numbers the pages of a tree up to this depth and no further.
inline constexpr size_t kDeepestPageTreeLevel = 1024;

// A damaged tree can reach the same nodes over and over without ever coming to
// a page; no sound one needs this many steps.
inline constexpr int kMostPageTreeSteps = 4 * 0xFFFFF;

#endif  // QUILLMERE_PAGE_TREE_LIMITS_H_
