#pragma once

#include <string>
#include <vector>

// A box, dialog or menu runs a message loop of its own, so another instance can hand over a path
// while it is up. What it asks about must not change until the answer is carried out, so the path
// waits, and so does a request to close the window. Logging off never waits.
namespace quillmere {

// Paths to open in `pane`; -1 means the active one.
struct WaitingOpen {
  std::vector<std::u16string> paths;
  int pane = -1;
};

// Holds back other opens while it exists; guards nest. When the outermost one ends it only posts a
// message: what waits is handled by the main message loop, never inside the operation that asked.
class DocumentWork {
 public:
  DocumentWork();
  DocumentWork(const DocumentWork&) = delete;
  DocumentWork& operator=(const DocumentWork&) = delete;
  ~DocumentWork();
};

// True when the open must wait; it is then queued.
bool openMustWait(const WaitingOpen& open);

// True when the main window cannot close yet; it is asked again once it can.
bool closeMustWait();

}  // namespace quillmere
