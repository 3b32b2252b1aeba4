// A settings file of any content is read, written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/stand_in.h"
#include "session/session.h"
#include "store/data_folder.h"
#include "store/settings.h"
#include "support/engine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmere;
  test::startEngine();
  platform::resetStandIn();
  platform::putFile(u"C:\\Users\\User\\AppData\\Local\\Quillmere\\quillmere.ini",
                    std::string_view(reinterpret_cast<const char*>(data), size));
  resetSession();
  LoadSettings();
  const int width = session.leftPanelWidth;
  SaveSettings();
  resetSession();
  LoadSettings();
  if (session.leftPanelWidth != width) std::abort();
  resetSession();
  return 0;
}
