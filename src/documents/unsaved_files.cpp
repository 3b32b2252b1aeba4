#include "documents/unsaved_files.h"

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "base/fnv1a.h"
#include "base/limits.h"
#include "base/text_format.h"
#include "documents/shelve.h"
#include "session/changes.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/binder_library.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

struct BinderPlace {
  int binder = 0;
  int file = 0;
};
using BinderPlaces = std::unordered_map<std::u16string, BinderPlace, Fnv1aTextHash>;

// Where binders first list the documents of the index.
BinderPlaces placesOfShelved() {
  BinderPlaces places;
  for (int binder = 0; IsValidBinder(binder); ++binder) {
    const std::vector<std::u16string>& files = binderAt(binder).files;
    for (std::size_t file = 0; file < files.size(); ++file) {
      if (shelfEntryOf(files[file]) == nullptr) continue;
      places.try_emplace(shelfKeyOf(files[file]), BinderPlace{binder, static_cast<int>(file)});
    }
  }
  return places;
}

}  // namespace

UnsavedFile unsavedFileOf(int binderIndex, int fileIndex) {
  const BinderFile& binder = binderAt(binderIndex);
  UnsavedFile file;
  file.binderIndex = binderIndex;
  file.fileIndex = fileIndex;
  file.path = binder.files[static_cast<std::size_t>(fileIndex)];
  file.label = formatText(u"%s  -  %s", {fileNameOf(file.path), binder.name});
  file.isOpen = paneWithPath(file.path) >= 0;
  return file;
}

std::vector<UnsavedFile> BuildUnsavedList() {
  std::vector<UnsavedFile> list;
  shelfIndexKnown();
  if (session.shelfIndex.empty()) return list;
  const BinderPlaces places = placesOfShelved();
  for (const ShelfEntry& entry : session.shelfIndex) {
    const auto place = places.find(entry.path);
    if (place == places.end()) continue;
    UnsavedFile file = unsavedFileOf(place->second.binder, place->second.file);
    if (IsShelved(file.path)) list.push_back(std::move(file));
  }
  return list;
}

bool saveChosenFiles(std::vector<UnsavedFile>& files) {
  const auto failed = std::erase_if(files, [](const UnsavedFile& file) {
    return file.save && !SaveShelved(file.binderIndex, file.fileIndex);
  });
  return failed == 0;
}

void SaveAll() {
  if (session.viewerRole) return;
  const DocumentWork work;
  std::vector<UnsavedFile> files = BuildUnsavedList();
  if (files.empty()) return reportNothingUnsaved();
  saveChosenFiles(files);
  for (const UnsavedFile& file : files) DropShelfEntry(file.path);
  bindersChanged();
}

bool confirmDiscardAll(std::size_t count) {
  return showBox(formatText(u"Discard unsaved changes to all %d file%s?\n\nThis cannot be undone.",
                            {decimal(static_cast<std::int64_t>(count)), count == 1 ? u"" : u"s"}),
                 u"Discard All", BoxButtons::YesDefaultNo, BoxIcon::Warning) == BoxAnswer::Yes;
}

void reportNothingUnsaved() {
  showNotice(u"No documents have unsaved changes.", BoxIcon::Information);
}

}  // namespace quillmere
