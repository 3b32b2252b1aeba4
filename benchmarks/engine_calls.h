#pragma once

// Watches what a program asks of PDFium, by the table through which the program reaches the
// library.
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

// From here on these calls are counted. Once in a process.
void startCountingEngineCalls();

// What was counted since the last call of this function.
EngineCalls takeEngineCalls();

// While it lives every function of PDFium is replaced by one that counts and does nothing, so only
// code that should not reach PDFium at all may run.
class EngineBarred {
 public:
  EngineBarred();
  ~EngineBarred();
  EngineBarred(const EngineBarred&) = delete;
  EngineBarred& operator=(const EngineBarred&) = delete;

  int calls() const;
};

}  // namespace quillmere::bench
