#pragma once

// The resources that a process uses.
namespace quillmere::bench {

struct Memory {
  double workingSet = 0;      // MiB
  double peakWorkingSet = 0;  // MiB
};

// The memory of this process, or of the one with this process handle.
Memory memory();
Memory memoryOf(void* process);

// The objects that this process has open. Counted one by one, since Wine lacks the functions that
// report these numbers.
struct OpenObjects {
  int gdiObjects = 0;
  int windows = 0;
  int handles = 0;
};
OpenObjects openObjects();

}  // namespace quillmere::bench
