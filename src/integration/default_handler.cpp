#include "integration/default_handler.h"

#include <optional>
#include <string>

#include "platform/shell.h"
#include "platform/text.h"

namespace quillmere {

namespace {

constexpr const char16_t* kTypeIdentifier = u"quillmere.pdf";
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

bool IsDefaultPdfHandler() {
  const std::u16string package = platform::packageIdentity();
  const std::u16string chosen =
      platform::readUserRegistryText(kUserChoiceKey, u"ProgId").value_or(std::u16string());
  const std::u16string effective = platform::effectiveDefaultHandler(u".pdf");
  return isThisProgram(chosen, package) || isThisProgram(effective, package);
}

}  // namespace quillmere
