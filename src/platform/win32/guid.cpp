#include "platform/guid.h"

#include <windows.h>

#include <objbase.h>

#include "platform/text.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {

std::u16string newGuid() {
  GUID guid{};
  wchar_t text[40] = {};
  if (FAILED(CoCreateGuid(&guid))) return {};
  const int units = StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
  if (units < 3) return {};
  // Braces around it and the terminator are counted.
  return toLower(fromWide({text + 1, static_cast<std::size_t>(units) - 3}));
}

}  // namespace quillmere::platform
