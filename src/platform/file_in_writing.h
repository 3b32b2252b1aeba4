#pragma once

#include <cstdint>
#include <memory>
#include <string>

// For files too large to be built in memory; they are written block by block.
namespace quillmere::platform {

// A file being written. Nothing else can open it until it is closed.
struct FileInWriting;

// Creates the file unless one of that name exists; null on failure. Any length of path.
FileInWriting* startNewFile(const std::u16string& path);

// Appends a block. False unless every byte was written.
bool writeBlock(FileInWriting& file, const void* bytes, std::uint64_t size);

// Flushes everything written so far to the disk. False when the system cannot promise that.
bool flushFile(FileInWriting& file);

// Closes the file and keeps what was written. False when closing failed; `file` is invalid then
// too.
bool closeFile(FileInWriting* file);

struct FileInWritingCloser {
  void operator()(FileInWriting* file) const { closeFile(file); }
};
using FileInWritingHandle = std::unique_ptr<FileInWriting, FileInWritingCloser>;

}  // namespace quillmere::platform
