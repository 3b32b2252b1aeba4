#include "support/engine.h"

#include <fpdfview.h>

namespace quillmere::test {
namespace {

struct Engine {
  Engine() {
    FPDF_LIBRARY_CONFIG config{};
    config.version = 2;
    FPDF_InitLibraryWithConfig(&config);
  }
  ~Engine() { FPDF_DestroyLibrary(); }
};

}  // namespace

void startEngine() {
  static const Engine engine;
}

}  // namespace quillmere::test
