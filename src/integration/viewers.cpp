#include "integration/viewers.h"

#include "base/product.h"
#include "platform/instances.h"
#include "platform/process.h"

namespace quillmere {

bool startViewer(const std::u16string& path) {
  if (path.empty()) return false;
  const std::u16string program = platform::executablePath();
  if (program.empty()) return false;
  return platform::startProcess(program, u"\"" + program + u"\" --viewer \"" + path + u"\"");
}

int countViewers() {
  return platform::countTopWindows(kViewerWindowClass);
}

void closeViewers() {
  platform::closeTopWindows(kViewerWindowClass);
}

}  // namespace quillmere
