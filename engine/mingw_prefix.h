// Read before every file of the Windows build.
#ifndef QUILLMERE_ENGINE_MINGW_PREFIX_H_
#define QUILLMERE_ENGINE_MINGW_PREFIX_H_

#include <stddef.h>

// C allocations go to the DLL's own heap (heap.c). Renaming the symbols behind
// the functions, unlike macros, leaves everything that is called malloc or free
// in some class alone. posix_memalign() exists only there; PDFium takes it for
// granted with every compiler but Microsoft's.
#ifdef __cplusplus
extern "C" {
#endif
void* __cdecl malloc(size_t size) __asm__("mi_malloc");
void* __cdecl calloc(size_t count, size_t size) __asm__("mi_calloc");
void* __cdecl realloc(void* block, size_t size) __asm__("mi_realloc");
void __cdecl free(void* block) __asm__("mi_free");
int __cdecl posix_memalign(void** block, size_t alignment, size_t size) __asm__("mi_posix_memalign");
#ifdef __cplusplus
}  // extern "C"
#endif

#endif  // QUILLMERE_ENGINE_MINGW_PREFIX_H_
