#include "output/print.h"

namespace quillmere {

// There is no print engine yet, so every job fails.
int runPrintChild(std::u16string_view) {
  return kPrintChildFailed;
}

}  // namespace quillmere
