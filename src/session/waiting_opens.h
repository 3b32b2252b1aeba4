#pragma once

#include <string>
#include <vector>

// A box, dialog or menu handles messages of its own, so another instance can hand a path over while
// it is up. What it asks about must not change until the answer is carried out, so such a path
// waits, and so does a request to close the window. Logging off never waits.
namespace quillmere {

// Paths that arrived meanwhile, for the pane under `pane`; -1 for the active one.
struct WaitingOpen {
  std::vector<std::u16string> paths;
  int pane = -1;
};

// Holds back other openings for as long as it lives; guards nest. The end of the outermost one only
// posts a message: what waits is dealt with from the main message loop, never inside the operation
// that asked.
class DocumentWork {
 public:
  DocumentWork();
  DocumentWork(const DocumentWork&) = delete;
  DocumentWork& operator=(const DocumentWork&) = delete;
  ~DocumentWork();
};

// True when the open has to wait, and was noted.
bool openMustWait(const WaitingOpen& open);

// True when the main window cannot close yet; it is asked to again once it can.
bool closeMustWait();

}  // namespace quillmere
