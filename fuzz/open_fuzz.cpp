// A file of any content, opened and paged through in every mode, in the main program and in a
// viewer.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "documents/modes.h"
#include "documents/open.h"
#include "sound_session.h"
#include "store/working_documents.h"
#include "support/engine.h"
#include "view/navigation.h"
#include "view/selection.h"

namespace {

using namespace quillmere;

void walk() {
  for (const ViewMode mode :
       {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments, ViewMode::SinglePage}) {
    setViewMode(mode);
    for (int page = 0; page < std::min(pageCountOf(0), 4); ++page) {
      goToPage(0, page, false);
      selectAll(0);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::startEngine();
  platform::resetStandIn();
  platform::putFile(fuzz::kPath, fuzz::textOf(data, size));
  for (const bool viewer : {false, true}) {
    fuzz::prepareSession(viewer);
    if (openDocument(&fuzz::kPath, 0, kWorkingDocsLeaveAlone, true, nullptr)) walk();
    fuzz::requireSoundSession();
  }
  resetSession();
  return 0;
}
