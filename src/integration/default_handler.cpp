#include "integration/default_handler.h"

#include <string>

#include "base/text_format.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "platform/text.h"

namespace quillmere {

namespace {

constexpr const char16_t* kTypeIdentifier = u"quillmere.pdf";
constexpr const char16_t* kTypeKey = u"Software\\Classes\\quillmere.pdf";
constexpr const char16_t* kIconKey = u"Software\\Classes\\quillmere.pdf\\DefaultIcon";
constexpr const char16_t* kCommandKey = u"Software\\Classes\\quillmere.pdf\\shell\\open\\command";
constexpr const char16_t* kOpenWithKey = u"Software\\Classes\\.pdf\\OpenWithProgids";
constexpr const char16_t* kUserChoiceKey =
    u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\.pdf\\UserChoice";

// Whether the identifier names this program: by its file type, or, for a packaged program, by the
// package behind the identifier that the system made up at installation.
bool isThisProgram(const std::u16string& identifier, const std::u16string& package) {
  if (identifier.empty()) return false;
  if (platform::equalIgnoringCase(identifier, kTypeIdentifier)) return true;
  if (package.empty()) return false;
  const std::u16string key = u"Software\\Classes\\" + identifier + u"\\Application";
  return platform::readUserRegistryText(key, u"AppUserModelID") == package;
}

}  // namespace

bool RegisterPdfHandler() {
  const std::u16string program = platform::executablePath();
  if (program.empty()) return false;
  if (!platform::setUserRegistryText(kTypeKey, u"", u"Quillmere PDF Document")) return false;
  // Without its icon, or missing from the list of programs to choose from, the type still works.
  platform::setUserRegistryText(kIconKey, u"", formatText(u"\"%s\",0", {program}));
  if (!platform::setUserRegistryText(kCommandKey, u"", formatText(u"\"%s\" \"%%1\"", {program}))) {
    return false;
  }
  platform::addUserRegistryName(kOpenWithKey, kTypeIdentifier);
  platform::announceAssociationChange();
  return true;
}

bool IsDefaultPdfHandler() {
  const std::u16string package = platform::packageIdentity();
  const std::u16string chosen =
      platform::readUserRegistryText(kUserChoiceKey, u"ProgId").value_or(std::u16string());
  const std::u16string effective = platform::effectiveDefaultHandler(u".pdf");
  return isThisProgram(chosen, package) || isThisProgram(effective, package);
}

}  // namespace quillmere
