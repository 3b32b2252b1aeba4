#pragma once

// What a process holds of the machine.
namespace quillmere::bench {

struct Memory {
  double workingSet = 0;      // MiB
  double peakWorkingSet = 0;  // MiB
};

// Of this process, or of the one behind a process handle.
Memory memory();
Memory memoryOf(void* process);

// What this process has open. Counted one by one, since Wine does not answer the functions that
// tell these numbers.
struct OpenObjects {
  int gdiObjects = 0;
  int windows = 0;
  int handles = 0;
};
OpenObjects openObjects();

}  // namespace quillmere::bench
