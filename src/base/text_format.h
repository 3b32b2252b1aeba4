#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

// Text with values put in. The wide printf formats of the C runtimes differ between platforms, so
// the few that the program needs are written here.
namespace quillmere {

// Decimal digits, with a minus sign for negative values.
std::u16string decimal(std::int64_t value);

// `pattern` with its placeholders ("%d", "%u", "%lu", "%s", "%ls") replaced by `values` in order;
// "%%" gives one percent sign. A placeholder without a value gives nothing.
std::u16string formatText(std::u16string_view pattern,
                          std::initializer_list<std::u16string> values);

}  // namespace quillmere
