#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// printf-style formatting of UTF-16 text. Wide printf formats differ between C runtimes, so the few
// that the program needs are implemented here.
namespace quillmere {

// Decimal digits, with a minus sign for negative values.
std::u16string decimal(std::int64_t value);

// Six significant digits, as the runtime's "%g" prints them in any locale.
std::u16string sixDigits(double value);

// `pattern` with its placeholders ("%d", "%u", "%lu", "%s", "%ls") replaced by `values` in order;
// "%%" gives one percent sign. A placeholder with no value left is dropped.
std::u16string formatText(std::u16string_view pattern,
                          std::initializer_list<std::u16string> values);

}  // namespace quillmere
