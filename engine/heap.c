// mimalloc as the Windows DLL's own heap, in one object file. PDFium makes and
// drops very many small blocks, and the C library of Windows hands each one to
// the system's heap.
//
// mimalloc finds the heap of the running thread in a thread-local variable. The
// compiler would make that a function call that locks, several times the cost of
// the allocation itself, so the heap's address stands in one of the thread's own
// slots, where the system itself keeps such values.

#include <intrin.h>
#include <stddef.h>
#include <stdlib.h>
#include <windows.h>

// Where the 64 slots stand that every thread has from its start.
#define FIRST_SLOT_OFFSET 0x1480
#define NEAR_SLOTS 64

static DWORD heap_slot = TLS_OUT_OF_INDEXES;

static inline void* mi_tls_slot(size_t slot) {
  if (__builtin_expect(slot < NEAR_SLOTS, 1)) {
    return (void*)__readgsqword((unsigned long)(FIRST_SLOT_OFFSET + slot * sizeof(void*)));
  }
  return TlsGetValue((DWORD)slot);
}

static inline void mi_tls_slot_set(size_t slot, void* heap) {
  TlsSetValue((DWORD)slot, heap);
}

// Before every other constructor, as these may allocate.
static void __attribute__((constructor(101))) take_slot(void) {
  heap_slot = TlsAlloc();
  if (heap_slot == TLS_OUT_OF_INDEXES) {
    abort();
  }
}

#define MI_TLS_SLOT heap_slot
#include "static.c"

// Free memory goes back to the system a millisecond after it was freed. mimalloc's own 25 let the
// memory of one search stay when the next one fills other pages; without any wait a picture's
// memory is mapped anew each time.
static void __attribute__((constructor(102))) give_back_soon(void) {
  mi_option_set(mi_option_decommit_delay, 1);
}
