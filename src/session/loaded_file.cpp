#include "session/loaded_file.h"

namespace quillmere {

namespace {

bool stampDiffers(const LoadedFile& file) {
  return file.stamp && platform::fileStamp(file.path) != file.stamp;
}

}  // namespace

LoadedFile loadedFileNow(const std::u16string& path) {
  LoadedFile file;
  file.path = path;
  file.stamp = platform::fileStamp(path);
  return file;
}

void guardLoadedFile(LoadedFile& file) {
  if (file.path.empty() || file.guard) return;
  file.guard.reset(platform::denyWriters(file.path));
  // Nothing changes from now on, but it may have before.
  if (file.guard && stampDiffers(file)) file.guard.reset();
}

bool changedSinceLoad(const LoadedFile& file) {
  return !file.path.empty() && !file.guard && stampDiffers(file);
}

}  // namespace quillmere
