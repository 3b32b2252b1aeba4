#include "integration/viewers.h"

#include "base/product.h"
#include "platform/instances.h"
#include "platform/process.h"
#include "ui/boxes.h"

namespace quillmere {

bool startViewer(const std::u16string& path) {
  if (path.empty()) return false;
  const std::u16string program = platform::executablePath();
  if (program.empty()) return false;
  return platform::startProcess(program, u"\"" + program + u"\" --viewer \"" + path + u"\"");
}

void showInViewer(const std::u16string& path) {
  if (!startViewer(path)) showNotice(u"Could not open a separate viewer window.", BoxIcon::Error);
}

int countViewers() {
  return platform::countTopWindows(kViewerWindowClass);
}

void closeViewers() {
  platform::closeTopWindows(kViewerWindowClass);
}

}  // namespace quillmere
