// A file of any content, opened and walked through in every mode, as the program and as a viewer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "core/open.h"
#include "core/session.h"
#include "platform/stand_in.h"
#include "store/working_documents.h"
#include "support/engine.h"
#include "support/session_invariants.h"
#include "view/modes.h"
#include "view/navigation.h"
#include "view/selection.h"

namespace {

using namespace quillmere;

const std::u16string kPath = u"C:\\fuzz.pdf";

void prepare(bool viewer) {
  resetSession();
  session.viewerRole = viewer;
  platform::standIn().window.client = {320, 240};
  platform::standIn().chooseAnswer = [](const platform::ShownBox&) {
    return platform::BoxAnswer::Ok;
  };
}

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

void requireSoundSession() {
  const std::string broken = test::brokenInvariant();
  if (broken.empty()) return;
  std::fprintf(stderr, "%s\n", broken.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::startEngine();
  platform::resetStandIn();
  platform::putFile(kPath, std::string_view(reinterpret_cast<const char*>(data), size));
  for (const bool viewer : {false, true}) {
    prepare(viewer);
    if (openDocument(&kPath, 0, kWorkingDocsLeaveAlone, true, nullptr)) walk();
    requireSoundSession();
  }
  resetSession();
  return 0;
}
