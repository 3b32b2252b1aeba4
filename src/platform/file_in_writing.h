#pragma once

#include <cstdint>
#include <memory>
#include <string>

// Files that are too large to be built in memory and go out block by block.
namespace quillmere::platform {

// A file that is being written. Until it is closed nobody else can open it.
struct FileInWriting;

// Makes the file only where none of that name exists; null on failure.
FileInWriting* startNewFile(const std::u16string& path);

// Appends a block. False when not every byte went out.
bool writeBlock(FileInWriting& file, const void* bytes, std::uint64_t size);

// Hands everything written so far to the disk. False when the system cannot promise that.
bool flushFile(FileInWriting& file);

// Closes the file, which keeps what was written. False when closing failed; `file` is gone then
// too.
bool closeFile(FileInWriting* file);

struct FileInWritingCloser {
  void operator()(FileInWriting* file) const { closeFile(file); }
};
using FileInWritingHandle = std::unique_ptr<FileInWriting, FileInWritingCloser>;

}  // namespace quillmere::platform
