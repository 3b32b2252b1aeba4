#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/tree.h"

// The few things that the shared cases need and the seam does not offer. Each side, the scripted
// machine and the real one, has its own implementation.
namespace quillmere::platform {

// Makes an empty folder for one test; its path ends in a backslash.
std::u16string makeScratchFolder();
// Removes the folder with everything in it, read-only files included.
void removeScratchFolder(const std::u16string& folder);

// Makes an existing folder the one that the process works in, until the test ends.
void workIn(const std::u16string& folder);

// Puts these bytes into a file, by other means than the seam's.
void putBytes(const std::u16string& path, const std::string& bytes);
std::string bytesOf(const std::u16string& path);

enum class LockKind {
  Exclusive,     // open with no sharing
  SharedWriter,  // open for writing, others may read, write and delete
};

// Another program's use of an existing file, while this object lives.
class FileLock {
 public:
  FileLock(const std::u16string& path, LockKind kind);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  std::u16string path_;
  void* handle_ = nullptr;
};

// A window with an empty navigation tree in it, for as long as this lives. One at a time.
class TreeScene {
 public:
  TreeScene();
  ~TreeScene();
  TreeScene(const TreeScene&) = delete;
  TreeScene& operator=(const TreeScene&) = delete;

  // The rows as they stand below each other, indented by a blank for each level: "+" for one that
  // can be expanded, "-" for one that is, the text.
  std::vector<std::u16string> rows() const;
};

class PlatformSuite : public testing::Test {
 protected:
  void SetUp() override { folder = makeScratchFolder(); }
  void TearDown() override { removeScratchFolder(folder); }

  std::u16string in(const std::u16string& name) const { return folder + name; }

  std::u16string folder;
};

}  // namespace quillmere::platform
