// A binder file of any content is read, and what is written of it reads as the same binder.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "session/binder.h"
#include "sound_session.h"
#include "store/binder_file.h"

namespace {

using namespace quillmere;
using fuzz::require;

constexpr std::size_t kSurelyFits = 400;  // units of a path behind which every field still fits

// Six digits of a number are written.
bool sameNumber(float left, float right) {
  return std::abs(double{left} - right) <= 5e-6 * std::abs(double{left});
}

// A mode brings its page along, and without one zoom and pan are not written.
void requireSameView(const BinderEntry& before, const BinderEntry& after) {
  require(after.page == before.page && after.mode == before.mode && after.bold == before.bold,
          "a view reads differently");
  require(after.hasPage == (before.hasPage || before.mode >= 0), "a page came or went");
  if (before.mode < 0) return;
  require(sameNumber(before.panX, after.panX) && sameNumber(before.panY, after.panY),
          "a pan reads differently");
  // What is rounded up to the first zoom that is not taken comes back as the default.
  require(sameNumber(before.zoom, after.zoom) || before.zoom > 99.9995f || before.zoom < 0.0100001f,
          "a zoom reads differently");
}

void requireSameBinder(const BinderFile& before, const BinderFile& after) {
  require(after.files == before.files, "files read differently");
  require(after.furtherLines == before.furtherLines, "further lines read differently");
  require(after.collapsed == before.collapsed && after.bold == before.bold,
          "a flag reads differently");
  for (const auto& [path, view] : before.views) {
    if (path.size() > kSurelyFits) continue;
    const auto found = after.views.find(path);
    require(found != after.views.end(), "a view is lost");
    requireSameView(view, found->second);
  }
  require(after.views.size() <= before.views.size(), "a view appeared");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  BinderFile first;
  if (!parseBinder(fuzz::textOf(data, size), first)) return 0;
  const std::string written = binderBytes(first);
  BinderFile second;
  require(parseBinder(written, second), "what was written is refused");
  requireSameBinder(first, second);
  return 0;
}
