#include "documents/save_target.h"

#include "platform/files.h"
#include "platform/text.h"
#include "session/session.h"

namespace quillmere {

namespace {

bool onShelf(const std::u16string& path) {
  const std::u16string& shelf = session.shelveFolder;
  return !shelf.empty() && path.size() > shelf.size() &&
         platform::equalIgnoringCase(path.substr(0, shelf.size()), shelf);
}

}  // namespace

bool targetInUse(const std::u16string& path, int writer) {
  if (onShelf(platform::absolutePath(path))) return true;
  const FPDF_DOCUMENT own = writer == kNoPane ? nullptr : documentOf(writer);
  for (int pane = 0; pane < 2; ++pane) {
    const DocumentSlot& slot = documentSlotOf(pane);
    if (!slot.document || slot.document.get() == own) continue;
    if (samePath(slot.path, path) || samePath(slot.loadedFrom.path, path)) return true;
  }
  return false;
}

bool samePath(const std::u16string& left, const std::u16string& right) {
  if (left.empty() || right.empty()) return false;
  return platform::equalIgnoringCase(platform::absolutePath(left), platform::absolutePath(right));
}

}  // namespace quillmere
