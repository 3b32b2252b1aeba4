#include "ui/show_in_folder.h"

#include "platform/shell.h"
#include "session/waiting_opens.h"

namespace quillmere {

bool showInFolder(const std::u16string& path) {
  const DocumentWork work;
  return platform::showInFolder(path);
}

}  // namespace quillmere
