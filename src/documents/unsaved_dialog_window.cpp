#include "documents/unsaved_dialog.h"

namespace quillmere {

// Nothing is shelved yet, so nobody is asked. Cancel loses nothing.
UnsavedAnswer ShowUnsavedDialog(std::vector<UnsavedFile>&, const std::u16string&) {
  return UnsavedAnswer::Cancel;
}

}  // namespace quillmere
