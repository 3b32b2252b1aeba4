// A user working with sound and damaged files: see support/session_actions.h.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "platform/stand_in.h"
#include "session/session.h"
#include "support/engine.h"
#include "support/session_actions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmere;
  test::startEngine();
  resetSession();
  platform::resetStandIn();
  platform::standIn().window.client = {320, 240};
  const std::string broken = test::playSessionActions(data, size);
  resetSession();
  if (broken.empty()) return 0;
  std::fprintf(stderr, "%s\n", broken.c_str());
  std::abort();
}
