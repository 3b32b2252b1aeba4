#include "session/loaded_file.h"

#include <utility>

#include "platform/text.h"
#include "session/session.h"

namespace quillmere {

namespace {

bool stampDiffers(const LoadedFile& file) {
  return file.stamp && platform::fileStamp(file.path) != file.stamp;
}

void keepSourceOpen(LoadedFile& file) {
  if (!file.path.empty() && !file.opened) file.opened.reset(platform::keepOpen(file.path));
}

}  // namespace

LoadedFile loadedFileNow(const std::u16string& path) {
  LoadedFile file;
  file.path = path;
  file.stamp = platform::fileStamp(path);
  return file;
}

void keepSourcesOpen() {
  if (session.viewerRole) return;
  keepSourceOpen(session.active.loadedFrom);
  for (PaneSlot& pane : session.panes) keepSourceOpen(pane.loadedFrom);
}

void guardLoadedFile(LoadedFile& file) {
  if (file.path.empty() || file.guard) return;
  file.guard.reset(platform::denyWriters(file.path));
  // Nothing changes from now on, but it may have before.
  if (file.guard && stampDiffers(file)) file.guard.reset();
}

void noteLoaded(DocumentSlot& slot, LoadedFile from) {
  slot.loadedFrom = std::move(from);
  slot.knownFile.reset();
  const std::u16string own = platform::absolutePath(slot.path);
  const std::u16string source = platform::absolutePath(slot.loadedFrom.path);
  if (!platform::equalIgnoringCase(own, source)) slot.knownFile = platform::fileStamp(slot.path);
}

bool ownFileReplaced(const DocumentSlot& slot) {
  if (!slot.knownFile) return false;
  const auto now = platform::fileStamp(slot.path);
  return now && now != slot.knownFile;
}

SourceState sourceState(const LoadedFile& file) {
  if (file.path.empty()) return SourceState::Sound;
  if (file.opened && !platform::canStillRead(*file.opened)) return SourceState::Lost;
  return !file.guard && stampDiffers(file) ? SourceState::Changed : SourceState::Sound;
}

}  // namespace quillmere
