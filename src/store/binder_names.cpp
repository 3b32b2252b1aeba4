#include "store/binder_names.h"

#include <algorithm>

#include "platform/text.h"

namespace quillmere {

namespace {

constexpr std::u16string_view kForbidden = u"<>:\"/\\|?*";
constexpr char16_t kFirstPrintable = 32;

// The system takes these names for devices in every folder.
constexpr std::u16string_view kDevices[] = {
    u"CON",  u"PRN",  u"AUX",  u"NUL",  u"COM1", u"COM2", u"COM3", u"COM4",
    u"COM5", u"COM6", u"COM7", u"COM8", u"COM9", u"LPT1", u"LPT2", u"LPT3",
    u"LPT4", u"LPT5", u"LPT6", u"LPT7", u"LPT8", u"LPT9",
};

bool isDevice(std::u16string_view name) {
  return std::any_of(std::begin(kDevices), std::end(kDevices), [name](std::u16string_view device) {
    return platform::equalIgnoringCase(name, device);
  });
}

}  // namespace

std::u16string_view trimmedBinderName(std::u16string_view typed) {
  const std::size_t first = typed.find_first_not_of(u" \t");
  if (first == std::u16string_view::npos) return {};
  return typed.substr(first, typed.find_last_not_of(u" \t") - first + 1);
}

const char16_t* binderNameComplaint(std::u16string_view name) {
  if (name.empty()) return u"The name cannot be empty.";
  if (std::any_of(name.begin(), name.end(), [](char16_t unit) { return unit < kFirstPrintable; })) {
    return u"The name contains an invalid control character.";
  }
  if (name.find_first_of(kForbidden) != std::u16string_view::npos) {
    return u"The name cannot contain any of these characters:\n    <  >  :  \"  /  \\  |  ?  *";
  }
  if (name.back() == u' ' || name.back() == u'.') {
    return u"The name cannot end with a space or period.";
  }
  if (isDevice(name)) return u"The name is a reserved Windows device name.";
  return nullptr;
}

}  // namespace quillmere
