#include "integration/desktop_shortcut.h"

#include <string>

#include "platform/files.h"
#include "platform/process.h"
#include "platform/shell.h"

namespace quillmere {

bool createDesktopShortcut() {
  std::u16string desktop = platform::desktopFolder();
  if (desktop.empty()) return false;
  if (desktop.back() != u'\\') desktop += u'\\';
  // A packaged program cannot be started by its executable's path.
  const std::u16string package = platform::packageIdentity();
  const std::u16string target =
      package.empty() ? platform::executablePath() : u"shell:AppsFolder\\" + package;
  if (target.empty()) return false;
  return platform::createShortcut({desktop + u"Quillmere.lnk", target, u"Quillmere PDF Viewer"});
}

}  // namespace quillmere
