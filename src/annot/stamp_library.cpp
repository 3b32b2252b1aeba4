#include "annot/stamp_library.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "annot/date_stamp.h"
#include "annot/placements.h"
#include "annot/stamp_pictures.h"
#include "base/limits.h"
#include "base/text_format.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/replace_whole_file.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr char16_t kListFile[] = u"stamps.lst";
constexpr char16_t kPngExtension[] = u".png";
constexpr char16_t kOrphansTitle[] = u"Clear Orphaned Files";
constexpr char16_t kDateStampName[] = u"Date";
constexpr std::size_t kNameUnits = 63;
constexpr std::u16string_view kTrailing = u"\t\n\r ";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";
constexpr std::uint64_t kLargestList = 1 << 20;  // bytes

std::u16string listPath() {
  return session.stampsFolder + kListFile;
}

std::u16string withoutExtension(std::u16string_view name) {
  return std::u16string(name.substr(0, name.rfind(u'.')));
}

// A name that is too long loses its end first, and then what follows its last dot.
std::u16string shownName(std::u16string_view fileName) {
  return withoutExtension(fileName.substr(0, kNameUnits));
}

bool isDateStampFile(std::u16string_view name) {
  return platform::equalIgnoringCase(name, kDateStampFile);
}

std::u16string decoded(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Mark)) return platform::fromUtf8(bytes.substr(kUtf8Mark.size()));
  if (!bytes.starts_with(kUtf16Mark)) return platform::fromUtf8(bytes);
  std::u16string text;
  for (std::size_t at = kUtf16Mark.size(); at + 1 < bytes.size(); at += 2) {
    text += static_cast<char16_t>(static_cast<unsigned char>(bytes[at]) |
                                  static_cast<unsigned char>(bytes[at + 1]) << 8);
  }
  return text;
}

// A file that another program looks at just then cannot be replaced, but perhaps written. A full
// disk must leave it as it was.
void writeList(const std::string& bytes) {
  bool roomLacks = false;
  const Replacement replacement =
      replaceWholeFile(listPath(), [&bytes, &roomLacks](platform::FileInWriting& file) {
        roomLacks = !platform::writeBlock(file, bytes.data(), bytes.size());
        return !roomLacks;
      });
  if (replacement == Replacement::Done || roomLacks) return;
  platform::writeFile(listPath(), bytes.data(), bytes.size());
}

void appendListed(std::u16string_view line) {
  const std::size_t end = line.find_last_not_of(kTrailing);
  line = line.substr(0, end == std::u16string_view::npos ? 0 : end + 1);
  if (line.empty() || line.front() == u'#' || line.find(u'\0') != std::u16string_view::npos) return;
  const std::u16string path = session.stampsFolder + std::u16string(line);
  if (path.size() >= kPathBufferUnits || !platform::fileExists(path)) return;
  appendStamp(path, shownName(line), false);
}

std::optional<std::vector<std::uint8_t>> listBytes() {
  return platform::readFileShared(listPath(), kLargestList);
}

// The list is there, but another program holds it or it is too large to be one.
bool listUnreadable() {
  return platform::fileExists(listPath()) && !listBytes();
}

// A list that is there and cannot be read is not taken for an empty one.
void readList() {
  const auto bytes = listBytes();
  if (!bytes) return;
  const std::u16string text =
      decoded({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(u'\n', at), text.size());
    appendListed(std::u16string_view(text).substr(at, end - at));
    at = end + 1;
  }
}

// Nullopt when the folder cannot be read.
std::optional<std::vector<std::u16string>> stampFileNames() {
  if (session.stampsFolder.empty()) return std::nullopt;
  auto names = platform::listFiles(session.stampsFolder, kPngExtension);
  if (!names) return std::nullopt;
  std::erase_if(*names, [](const std::u16string& name) {
    return isDateStampFile(name) || session.stampsFolder.size() + name.size() >= kPathBufferUnits;
  });
  return names;
}

// An empty list would make orphans of all files in a folder that cannot be read just then.
void searchFolder() {
  const auto names = stampFileNames();
  if (!names) return;
  for (const std::u16string& name : *names) {
    appendStamp(session.stampsFolder + name, shownName(name), false);
  }
  SaveStampList();
}

template <typename Change>
void forEachStamp(Change change) {
  for (auto& [page, list] : session.placements) {
    for (Placement& placement : list) {
      if (placement.kind == PlacementKind::Stamp) change(placement);
    }
  }
}

// What pending stamps of one entry show.
struct HeldPicture {
  std::u16string path;  // of the entry's file; empty when they no longer stand on it
  platform::SharedPicture picture;
};
using HeldPictures = std::map<std::int32_t, HeldPicture>;  // by the entry's index

// Today's date stamp replaces the file of yesterday's, and a file that vanished or that another
// program keeps cannot be read later.
HeldPictures holdPendingPictures() {
  HeldPictures held;
  forEachStamp([&](const Placement& placement) {
    const std::int32_t index = placement.stampIndex;
    if (placement.image || !isStampIndex(index) || held.contains(index)) return;
    const StampEntry& entry = session.stampLibrary[static_cast<std::size_t>(index)];
    if (entry.isSystem) {
      held[index] = {{}, wholeStampPicture(index)};
    } else {
      held[index] = {entry.path, keptStampPicture(entry)};
    }
  });
  return held;
}

std::int32_t indexOfPath(const std::u16string& path) {
  const auto& library = session.stampLibrary;
  const auto found = std::find_if(library.begin(), library.end(), [&](const StampEntry& entry) {
    return platform::equalIgnoringCase(entry.path, path);
  });
  return found == library.end() ? -1 : static_cast<std::int32_t>(found - library.begin());
}

// Keeps the entry only if its file can be decoded; pending stamps stand on it.
void settleHeld(HeldPicture& held) {
  if (held.path.empty()) return;
  const std::int32_t index = indexOfPath(held.path);
  if (index < 0) {
    const platform::SharedPicture whole = platform::loadPicture(held.path);
    if (whole) held.picture = whole;
  } else if (!makeThumbnail(session.stampLibrary[static_cast<std::size_t>(index)])) {
    session.stampLibrary.erase(session.stampLibrary.begin() + index);
  }
}

// The entries have other numbers now, or are gone.
void followEntries(const HeldPictures& before) {
  forEachStamp([&](Placement& placement) {
    const auto found = before.find(placement.stampIndex);
    if (placement.image || found == before.end()) return;
    placement.stampIndex = indexOfPath(found->second.path);
    if (placement.stampIndex < 0) placement.image = found->second.picture;
  });
}

// Stamps on pages take over the entry's picture.
void takeOut(std::int32_t index) {
  platform::SharedPicture picture;
  forEachStamp([&](Placement& placement) {
    if (placement.stampIndex == index) {
      if (!picture) picture = wholeStampPicture(index);
      placement.image = picture;
      placement.stampIndex = -1;
    } else if (placement.stampIndex > index) {
      --placement.stampIndex;
    }
  });
  session.stampLibrary.erase(session.stampLibrary.begin() + index);
}

void deleteFiles(const std::vector<std::u16string>& paths, int& deleted) {
  for (const std::u16string& path : paths) {
    if (platform::deleteFile(path)) ++deleted;
  }
}

// Their pictures go with the library; written ones have theirs in the document.
void dropPendingStamps() {
  for (auto& [page, list] : session.placements) {
    std::erase_if(list, [](const Placement& placement) {
      return placement.pending() && placement.kind == PlacementKind::Stamp &&
             isStampIndex(placement.stampIndex) && !placement.image;
    });
  }
}

}  // namespace

bool isStampIndex(std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < session.stampLibrary.size();
}

int countUserStamps() {
  return static_cast<int>(std::count_if(session.stampLibrary.begin(), session.stampLibrary.end(),
                                        [](const StampEntry& entry) { return !entry.isSystem; }));
}

bool hasUserStamp(std::u16string_view fileName) {
  return std::any_of(
      session.stampLibrary.begin(), session.stampLibrary.end(), [&](const StampEntry& entry) {
        return !entry.isSystem && platform::equalIgnoringCase(fileNameOf(entry.path), fileName);
      });
}

bool appendStamp(const std::u16string& path, std::u16string_view name, bool isSystem) {
  const std::optional<PictureSize> size = stampPictureSize(path);
  if (!size) return false;
  StampEntry entry;
  entry.path = path;
  entry.name = name.substr(0, kNameUnits);
  entry.width = size->width;
  entry.height = size->height;
  entry.isSystem = isSystem;
  session.stampLibrary.push_back(std::move(entry));
  return true;
}

void LoadStampLibrary() {
  session.stampLibrary.clear();
  if (session.stampsFolder.empty()) return;
  appendStamp(session.stampsFolder + kDateStampFile, kDateStampName, true);
  if (platform::fileExists(listPath())) {
    readList();
  } else {
    searchFolder();
  }
}

void SaveStampList() {
  if (session.viewerRole || session.stampsFolder.empty() || listUnreadable()) return;
  std::string bytes(kUtf8Mark);
  for (const StampEntry& entry : session.stampLibrary) {
    if (!entry.isSystem) bytes += platform::toUtf8(fileNameOf(entry.path)) + "\r\n";
  }
  writeList(bytes);
}

void refreshStampLibrary() {
  HeldPictures held = holdPendingPictures();
  RenderDateStamp();
  LoadStampLibrary();
  for (auto& [index, picture] : held) settleHeld(picture);
  followEntries(held);
}

void dropUndecodableStamp(std::int32_t index) {
  if (!isStampIndex(index)) return;
  takeOut(index);
  stampLibraryChanged();
}

void RemoveStamp(std::int32_t index) {
  if (!isStampIndex(index)) return;
  if (session.stampLibrary[static_cast<std::size_t>(index)].isSystem) return;
  takeOut(index);
  SaveStampList();
  stampLibraryChanged();
}

std::vector<std::u16string> ListStampFiles(bool orphansOnly) {
  std::vector<std::u16string> paths;
  if (orphansOnly && listUnreadable()) return paths;
  for (const std::u16string& name : stampFileNames().value_or(std::vector<std::u16string>())) {
    std::u16string path = session.stampsFolder + name;
    if (orphansOnly && indexOfPath(path) >= 0) continue;
    paths.push_back(std::move(path));
  }
  return paths;
}

void DeleteAllStamps() {
  ClearPlacementSelection();
  dropPendingStamps();
  session.stampLibrary.clear();
  int deleted = 0;
  deleteFiles(ListStampFiles(false), deleted);
  platform::deleteFile(listPath());
  LoadStampLibrary();
  stampLibraryChanged();
  placementsChanged(session.placementDocument);
}

void readMissedList() {
  const auto bytes = listBytes();
  if (countUserStamps() > 0 || !bytes || bytes->size() <= kUtf8Mark.size()) return;
  refreshStampLibrary();
  stampLibraryChanged();
}

void ClearOrphanedStamps() {
  readMissedList();
  const std::size_t orphans = ListStampFiles(true).size();
  if (orphans == 0) {
    showBox(u"No orphaned files found.", kOrphansTitle, BoxButtons::Ok, BoxIcon::Information);
    return;
  }
  const std::u16string question = formatText(u"%d file(s) will be deleted. Continue?",
                                             {decimal(static_cast<std::int64_t>(orphans))});
  if (showBox(question, kOrphansTitle, BoxButtons::YesNo, BoxIcon::Question) != BoxAnswer::Yes) {
    return;
  }
  int deleted = 0;
  deleteFiles(ListStampFiles(true), deleted);
  showBox(formatText(u"%d file(s) deleted.", {decimal(deleted)}), kOrphansTitle, BoxButtons::Ok,
          BoxIcon::Information);
}

}  // namespace quillmere
