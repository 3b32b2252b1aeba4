// Read before every PDFium file of the Windows build, for what PDFium expects of
// a compiler that is not Microsoft's and MinGW-w64 does not have.
#ifndef QUILLMERE_ENGINE_MINGW_PREFIX_H_
#define QUILLMERE_ENGINE_MINGW_PREFIX_H_

#include <errno.h>
#include <stddef.h>

// Nothing that is built here asks for aligned memory, and the C library's free()
// could not give it back. Refusing makes a first caller fail at once.
static inline int posix_memalign(void** pointer, size_t alignment, size_t size) {
  (void)pointer;
  (void)alignment;
  (void)size;
  return ENOMEM;
}

#endif  // QUILLMERE_ENGINE_MINGW_PREFIX_H_
