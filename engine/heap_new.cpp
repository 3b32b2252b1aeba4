// C++ allocations of the DLL, its copy of the C++ library included, go to the
// same heap as those of C.
#include "mimalloc-new-delete.h"
