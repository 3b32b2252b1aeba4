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

// Whether the identifier stands for this program: either its file type or, for a packaged program,
// an identifier that the system generated for its package at installation.
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
  // The file type works even without its icon or its entry in the list of programs to choose from.
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
