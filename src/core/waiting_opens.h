#pragma once

#include <string>
#include <vector>

// A box or dialog that stands in the middle of opening or closing still lets another instance hand
// a path over. What it asks about must not change until the answer is carried out, so such a path
// waits.
namespace quillmere {

// Paths that arrived meanwhile, for the pane under `pane`; -1 for the active one.
struct WaitingOpen {
  std::vector<std::u16string> paths;
  int pane = -1;
};

// Brackets everything that asks about documents and then acts on the answer. The brackets nest; the
// end of the outermost one opens what waits.
void beginDocumentWork();
void endDocumentWork();

// True when the open has to wait, and was noted.
bool mustWait(const WaitingOpen& open);

}  // namespace quillmere
