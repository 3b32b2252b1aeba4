#include "ui/open_with_system.h"

#include "platform/process.h"
#include "session/waiting_opens.h"

namespace quillmere {

bool openWithSystem(const std::u16string& target) {
  const DocumentWork work;
  return platform::openWithSystem(target);
}

}  // namespace quillmere
