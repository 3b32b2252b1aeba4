// A settings file of any content is read, written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/stand_in.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/data_folder.h"
#include "store/settings.h"
#include "store/settings_table.h"
#include "support/engine.h"

namespace {

void requireSameNumbers(const quillmere::AppSettings& written) {
  for (const quillmere::SettingRow& row : quillmere::settingsTable()) {
    if (row.get(quillmere::session.settings) == row.get(written)) continue;
    const std::string key = quillmere::platform::toUtf8(row.key);
    std::fprintf(stderr, "%s reads %d after %d was written\n", key.c_str(),
                 row.get(quillmere::session.settings), row.get(written));
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmere;
  test::startEngine();
  platform::resetStandIn();
  platform::putFile(u"C:\\Users\\User\\AppData\\Local\\Quillmere\\quillmere.ini",
                    std::string_view(reinterpret_cast<const char*>(data), size));
  resetSession();
  LoadSettings();
  SaveSettings();  // notes what is seen, so what is noted counts from here on
  const AppSettings written = session.settings;
  resetSession();
  LoadSettings();
  requireSameNumbers(written);
  resetSession();
  return 0;
}
