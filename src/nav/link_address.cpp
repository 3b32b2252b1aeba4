#include "nav/link_address.h"

#include <algorithm>
#include <iterator>

#include "platform/text.h"

namespace quillmere {

namespace {

constexpr std::u16string_view kAllowedSchemes[] = {u"http://", u"https://", u"mailto:"};

bool hasAllowedScheme(std::u16string_view address) {
  return std::any_of(std::begin(kAllowedSchemes), std::end(kAllowedSchemes),
                     [&](std::u16string_view scheme) {
                       return platform::equalIgnoringCase(address.substr(0, scheme.size()), scheme);
                     });
}

// Unicode's blanks and control characters: programs differ in what separates their arguments.
bool isBlankOrControl(char16_t unit) {
  return unit <= u' ' || (unit >= 0x7F && unit <= 0xA0) || unit == 0x1680 ||
         (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F ||
         unit == 0x205F || unit == 0x3000;
}

bool needsEncoding(char16_t unit) {
  return unit == u'"' || unit == u'\'' || isBlankOrControl(unit);
}

void appendEncoded(char16_t unit, std::u16string& result) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  for (const char byte : platform::toUtf8({&unit, 1})) {
    const auto value = static_cast<unsigned char>(byte);
    result.append({u'%', kDigits[value >> 4], kDigits[value & 15]});
  }
}

}  // namespace

std::u16string openableAddress(std::u16string_view address) {
  if (!hasAllowedScheme(address) || address.size() > kLongestAddress) return {};
  std::u16string result;
  for (const char16_t unit : address) {
    if (needsEncoding(unit)) {
      appendEncoded(unit, result);
    } else {
      result += unit;
    }
  }
  return result.size() <= kLongestAddress ? result : std::u16string();
}

}  // namespace quillmere
