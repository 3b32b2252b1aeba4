#include "base/text_format.h"

#include <charconv>

namespace quillmere {

namespace {

// Length of the placeholder at the start of `text`, which begins with '%'; 0 when it is not a
// placeholder.
std::size_t placeholderLength(std::u16string_view text) {
  for (const std::u16string_view form : {u"%d", u"%u", u"%s", u"%lu", u"%ls"}) {
    if (text.substr(0, form.size()) == form) return form.size();
  }
  return 0;
}

}  // namespace

std::u16string decimal(std::int64_t value) {
  const std::string digits = std::to_string(value);
  return std::u16string(digits.begin(), digits.end());
}

std::u16string sixDigits(double value) {
  constexpr int kDigits = 6;
  char text[32];
  const auto end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::general, kDigits).ptr;
  return std::u16string(text, end);
}

std::u16string formatText(std::u16string_view pattern,
                          std::initializer_list<std::u16string> values) {
  std::u16string result;
  const std::u16string* next = values.begin();
  for (std::size_t i = 0; i < pattern.size();) {
    if (pattern[i] != u'%') {
      result += pattern[i++];
    } else if (pattern.substr(i, 2) == u"%%") {
      result += u'%';
      i += 2;
    } else if (const std::size_t length = placeholderLength(pattern.substr(i)); length > 0) {
      if (next != values.end()) result += *next++;
      i += length;
    } else {
      result += pattern[i++];
    }
  }
  return result;
}

}  // namespace quillmere
