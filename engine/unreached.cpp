// The linker wants a definition for everything that a needed object file
// mentions. These functions of ICU and Abseil stand in the same files as the few
// that PDFium calls, and nothing that PDFium calls leads to them. Defining them
// here spares the engine the many files that hold the real ones.

#include <stdlib.h>

#include "absl/container/internal/hashtablez_sampler.h"
#include "unicode/ucptrie.h"
#include "unicode/unistr.h"
#include "utrie2.h"

U_CAPI void U_EXPORT2 utrie2_enum(const UTrie2*, UTrie2EnumValue*, UTrie2EnumRange*, const void*) {
  abort();
}

U_CAPI uint32_t U_EXPORT2 ucptrie_get(const UCPTrie*, UChar32) {
  abort();
}

U_CAPI UChar32 U_EXPORT2 ucptrie_getRange(const UCPTrie*,
                                          UChar32,
                                          UCPMapRangeOption,
                                          uint32_t,
                                          UCPMapValueFilter*,
                                          const void*,
                                          uint32_t*) {
  abort();
}

U_NAMESPACE_BEGIN
UnicodeString& UnicodeString::setTo(UBool, ConstChar16Ptr, int32_t) {
  abort();
}
U_NAMESPACE_END

namespace absl {
ABSL_NAMESPACE_BEGIN
namespace container_internal {

// Hash table statistics are off, and the handle is empty then.
HashtablezInfoHandle ForcedTrySample(size_t, size_t, size_t, uint16_t) {
  return HashtablezInfoHandle{};
}

}  // namespace container_internal
ABSL_NAMESPACE_END
}  // namespace absl
