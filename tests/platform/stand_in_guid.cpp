#include <cstdint>
#include <random>
#include <string>

#include "platform/guid.h"
#include "stand_in.h"

namespace quillmere::platform {

std::u16string newGuid() {
  if (standIn().failGuids) return {};
  constexpr const char16_t* kDigits = u"0123456789abcdef";
  static std::mt19937_64 numbers{std::random_device{}()};
  std::u16string guid;
  for (const int group : {8, 4, 4, 4, 12}) {
    if (!guid.empty()) guid += u'-';
    for (int n = 0; n < group; ++n) guid += kDigits[numbers() % 16];
  }
  return guid;
}

}  // namespace quillmere::platform
