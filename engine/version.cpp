#include "quillmere_engine.h"
#include "quillmere_engine_version.h"

FPDF_EXPORT const char* FPDF_CALLCONV QuillmereEngine_Version() {
  return QUILLMERE_ENGINE_VERSION;
}
