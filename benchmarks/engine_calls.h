#pragma once

// Watches a program's calls to PDFium through its import table.
namespace quillmere::bench {

struct EngineCalls {
  int documentLoads = 0;
  int pageLoads = 0;
  int textPageLoads = 0;
  int renders = 0;

  EngineCalls& operator+=(const EngineCalls& more) {
    documentLoads += more.documentLoads;
    pageLoads += more.pageLoads;
    textPageLoads += more.textPageLoads;
    renders += more.renders;
    return *this;
  }
};

// Starts counting these calls. Call it once in a process.
void startCountingEngineCalls();

// The counts since the last call of this function.
EngineCalls takeEngineCalls();

// While it lives, every PDFium function is replaced by one that only counts, so run only code that
// should not call PDFium at all.
class EngineBarred {
 public:
  EngineBarred();
  ~EngineBarred();
  EngineBarred(const EngineBarred&) = delete;
  EngineBarred& operator=(const EngineBarred&) = delete;

  int calls() const;
};

}  // namespace quillmere::bench
