#include "nav/find.h"

#include "core/session.h"
#include "platform/main_window.h"

namespace quillmere {

void FindClear() {
  FindState& find = session.find;
  find.results.clear();
  find.currentIndex = -1;
  find.capped = false;
  find.wholeDocument = false;
  find.badPattern = false;
  find.query.clear();
  platform::invalidateMainWindow(false);
}

// Hits follow the shown page only while a search is in force, and none can be started yet.
void FindSyncToPage(int) {}

}  // namespace quillmere
