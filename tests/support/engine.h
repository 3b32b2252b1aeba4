#pragma once

namespace quillmere::test {

// Starts PDFium, once in a process; it ends with the process.
void startEngine();

}  // namespace quillmere::test
