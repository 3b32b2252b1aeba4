#include "documents/unsaved_dialog.h"

namespace quillmere {

// Nothing is shelved yet, so there is nothing to ask. Cancel loses nothing.
UnsavedAnswer ShowUnsavedDialog(std::vector<UnsavedFile>&, const std::u16string&) {
  return UnsavedAnswer::Cancel;
}

}  // namespace quillmere
