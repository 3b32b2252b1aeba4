// A binder file of any content is read, and what is written of it reads as the same binder.
#include <cstddef>
#include <cstdint>
#include <string>

#include "session/binder.h"
#include "sound_session.h"
#include "store/binder_file.h"
#include "support/binder_texts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmere;
  BinderFile binder;
  if (!parseBinder(fuzz::textOf(data, size), binder)) return 0;
  const std::string lost = test::lostByWriting(binder);
  fuzz::require(lost.empty(), lost.c_str());
  return 0;
}
