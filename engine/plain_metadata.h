#ifndef QUILLMERE_PLAIN_METADATA_H_
#define QUILLMERE_PLAIN_METADATA_H_

#include <stdint.h>

#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_reference.h"
#include "core/fpdfapi/parser/cpdf_security_handler.h"
#include "core/fxcrt/retain_ptr.h"

// Whether object |number| of an encrypted document is the metadata that its encryption leaves
// readable. The parser decrypts all others.
inline bool IsPlainMetadata(const CPDF_Document& document,
                            const CPDF_SecurityHandler& security,
                            uint32_t number) {
  if (security.IsMetadataEncrypted()) {
    return false;
  }
  const CPDF_Dictionary* root = document.GetRoot();
  RetainPtr<const CPDF_Reference> metadata = root ? ToReference(root->GetObjectFor("Metadata")) : nullptr;
  return metadata && metadata->GetRefObjNum() == number;
}

#endif  // QUILLMERE_PLAIN_METADATA_H_
