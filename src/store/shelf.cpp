#include "store/shelf.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/guid.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/replace_whole_file.h"
#include "store/text_lines.h"

namespace quillmere {

namespace {

constexpr std::size_t kLongestLine = 2046;         // units, not counting the line end
constexpr std::uint64_t kLargestIndex = 64 << 20;  // bytes
constexpr std::u16string_view kNoName = u"-";

// The last two are there only while a save replaces the document.
enum Field : std::size_t { kName, kDirty, kSize, kTime, kPath, kSavedSize, kSavedTime, kFields };
using Tokens = std::array<std::u16string_view, kFields>;

// Runs of tabs are one separator. False when there is no path.
bool splitLine(std::u16string_view line, Tokens& tokens) {
  for (std::u16string_view& token : tokens) {
    line.remove_prefix(std::min(line.find_first_not_of(u'\t'), line.size()));
    token = line.substr(0, line.find(u'\t'));
    line.remove_prefix(token.size());
  }
  return !tokens[kPath].empty();
}

// The digits at the start of the text, at most the largest number; 0 without any.
std::uint64_t countOf(std::u16string_view digits) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t count = 0;
  for (const char16_t unit : digits) {
    if (unit < u'0' || unit > u'9') break;
    const auto digit = static_cast<std::uint64_t>(unit - u'0');
    if (count > (kMost - digit) / 10) return kMost;
    count = count * 10 + digit;
  }
  return count;
}

bool holdsAnything(const ShelfEntry& entry) {
  return entry.dirty || !entry.shelfName.empty();
}

void readLine(std::u16string_view line, ShelfIndex& index) {
  while (line.ends_with(u'\r')) line.remove_suffix(1);
  Tokens tokens;
  if (!splitLine(line, tokens)) return;
  ShelfEntry entry;
  entry.path = platform::toLower(tokens[kPath]);
  if (tokens[kName] != kNoName) entry.shelfName = tokens[kName];
  entry.dirty = !tokens[kDirty].starts_with(u'0');
  entry.sourceSize = countOf(tokens[kSize]);
  entry.sourceTime = countOf(tokens[kTime]);
  entry.savedSize = countOf(tokens[kSavedSize]);
  entry.savedTime = countOf(tokens[kSavedTime]);
  if (holdsAnything(entry)) index[entry.path] = entry;
}

std::u16string digitsOf(std::uint64_t count) {
  return platform::fromUtf8(std::to_string(count));
}

std::u16string lineOf(const ShelfEntry& entry) {
  const std::u16string name = entry.shelfName.empty() ? std::u16string(kNoName) : entry.shelfName;
  const std::u16string saved =
      entry.savedTime == 0 ? std::u16string()
                           : u"\t" + digitsOf(entry.savedSize) + u"\t" + digitsOf(entry.savedTime);
  return name + u"\t" + (entry.dirty ? u"1" : u"0") + u"\t" + digitsOf(entry.sourceSize) + u"\t" +
         digitsOf(entry.sourceTime) + u"\t" + entry.path + saved + u"\r\n";
}

std::optional<std::string> indexBytes(const std::u16string& path) {
  const auto bytes = platform::readFileShared(path, kLargestIndex);
  if (!bytes) return std::nullopt;
  return std::string(bytes->begin(), bytes->end());
}

// Adds what the file holds; entries made since the start count more.
void adoptStored(const std::string& bytes) {
  ShelfIndex stored;
  parseShelfIndex(bytes, stored);
  for (const ShelfEntry& entry : stored) {
    if (session.shelfIndex.find(entry.path) == session.shelfIndex.end()) {
      session.shelfIndex[entry.path] = entry;
    }
  }
}

// The index may have been locked when the program started.
bool catchUpWithFile() {
  if (!session.shelfIndexUnread) return true;
  const std::u16string path = ShelfIndexPath();
  if (const auto bytes = indexBytes(path)) {
    adoptStored(*bytes);
  } else if (platform::fileExists(path)) {
    return false;
  }
  session.shelfIndexUnread = false;
  return true;
}

// A file that a document is still read from cannot be deleted yet.
void deleteOrRemember(const std::u16string& path) {
  if (platform::deleteFile(path) || !platform::fileExists(path)) return;
  std::vector<std::u16string>& left = session.shelfFilesLeft;
  if (std::find(left.begin(), left.end(), path) == left.end()) left.push_back(path);
}

bool isOpen(const std::u16string& path) {
  return paneWithPath(path) >= 0;
}

// A copy that cannot be looked at for any other reason may come back.
bool hasGone(const std::u16string& copy) {
  const platform::AttributeQuery query = platform::queryAttributes(copy);
  if (query.attributes != platform::kInvalidAttributes) return false;
  return query.error == platform::kErrorFileNotFound || query.error == platform::kErrorPathNotFound;
}

}  // namespace

bool keepsShelf() {
  return !session.viewerRole && session.ownsPrimaryName;
}

std::u16string ShelfIndexPath() {
  return session.shelveFolder.empty() ? std::u16string() : session.shelveFolder + u"_index.txt";
}

std::u16string ShelfFilePath(const std::u16string& shelfName) {
  if (session.shelveFolder.empty() || shelfName.empty()) return {};
  // A damaged index must not lead to a file elsewhere.
  if (shelfName.find_first_of(u"\\/:*?\"<>|") != std::u16string::npos) return {};
  return session.shelveFolder + shelfName + u".pdf";
}

std::u16string NewShelfName() {
  return platform::newGuid();
}

void parseShelfIndex(std::string_view bytes, ShelfIndex& index) {
  readTextLines(bytes, kLongestLine, [&index](std::u16string_view line) { readLine(line, index); });
}

std::string shelfIndexBytes(const ShelfIndex& index) {
  std::u16string text;
  for (const ShelfEntry& entry : index) {
    if (holdsAnything(entry)) text += lineOf(entry);
  }
  return textFileBytes(text);
}

void LoadShelfIndex() {
  session.shelfIndex.clear();
  if (!keepsShelf() || ShelfIndexPath().empty()) return;
  session.shelfIndexUnread = true;
  catchUpWithFile();
}

bool SaveShelfIndex() {
  const std::u16string path = ShelfIndexPath();
  if (path.empty() || !keepsShelf() || !catchUpWithFile()) return false;
  const std::string bytes = shelfIndexBytes(session.shelfIndex);
  const auto write = [&bytes](platform::FileInWriting& file) {
    return platform::writeBlock(file, bytes.data(), bytes.size());
  };
  return replaceWholeFile(path, write) == Replacement::Done;
}

bool shelfIndexKnown() {
  return catchUpWithFile();
}

std::u16string shelfKeyOf(const std::u16string& path) {
  return platform::toLower(platform::absolutePath(path));
}

ShelfEntry* shelfEntryOf(const std::u16string& path) {
  const auto found = session.shelfIndex.find(shelfKeyOf(path));
  return found == session.shelfIndex.end() ? nullptr : &*found;
}

bool stampDiffers(const ShelfEntry& entry, const platform::FileStamp& stamp) {
  return (entry.sourceSize != 0 && entry.sourceSize != stamp.size) ||
         (entry.sourceTime != 0 && entry.sourceTime != stamp.writeTime);
}

void noteSaveBegins(const std::u16string& path, const std::u16string& finished) {
  ShelfEntry* entry = shelfEntryOf(path);
  const auto stamp = platform::fileStamp(finished);
  if (entry == nullptr || entry->shelfName.empty() || !stamp) return;
  entry->savedSize = stamp->size;
  entry->savedTime = stamp->writeTime;
  SaveShelfIndex();
}

void noteSaveFailed(const std::u16string& path) {
  ShelfEntry* entry = shelfEntryOf(path);
  if (entry == nullptr || entry->savedTime == 0) return;
  forgetSave(*entry);
  SaveShelfIndex();
}

bool caughtUp(const ShelfEntry& entry, const platform::FileStamp& stamp) {
  return entry.savedTime != 0 && stamp == platform::FileStamp{entry.savedSize, entry.savedTime};
}

void forgetSave(ShelfEntry& entry) {
  entry.savedSize = 0;
  entry.savedTime = 0;
}

bool IsShelved(const std::u16string& path) {
  const ShelfEntry* entry = shelfEntryOf(path);
  return entry != nullptr && entry->dirty && (!entry->shelfName.empty() || isOpen(path));
}

bool ActiveIsShelved() {
  const std::u16string& path = pathOf(session.activePane);
  return !path.empty() && IsShelved(path);
}

std::u16string liveShelfCopy(const std::u16string& path) {
  if (!IsShelved(path)) return {};
  const std::u16string copy = ShelfFilePath(shelfEntryOf(path)->shelfName);
  return !copy.empty() && !hasGone(copy) ? copy : std::u16string();
}

void DropShelfEntry(const std::u16string& path) {
  const auto found = session.shelfIndex.find(shelfKeyOf(path));
  if (found == session.shelfIndex.end()) return;
  const std::u16string name = found->shelfName;
  session.shelfIndex.erase(found);
  SaveShelfIndex();
  DeleteShelfFile(name);
}

void DropShelfCopy(const std::u16string& path) {
  ShelfEntry* entry = shelfEntryOf(path);
  if (entry == nullptr || entry->shelfName.empty()) return;
  const std::u16string name = std::exchange(entry->shelfName, {});
  forgetSave(*entry);
  SaveShelfIndex();
  DeleteShelfFile(name);
}

void DeleteShelfFile(const std::u16string& shelfName) {
  const std::u16string path = ShelfFilePath(shelfName);
  if (!path.empty() && keepsShelf()) deleteOrRemember(path);
}

void deleteLeftShelfFiles() {
  std::erase_if(session.shelfFilesLeft, [](const std::u16string& path) {
    return platform::deleteFile(path) || !platform::fileExists(path);
  });
}

// An index that still cannot be read may name copies that nobody was asked about: everything stays.
void ClearShelf() {
  if (session.shelveFolder.empty() || !keepsShelf() || !catchUpWithFile()) return;
  // Besides the copies, files that were being written when a process ended.
  for (const char16_t* extension : {u".pdf", u".tmp"}) {
    const auto names = platform::listFiles(session.shelveFolder, extension);
    if (!names) continue;
    for (const std::u16string& name : *names) deleteOrRemember(session.shelveFolder + name);
  }
  session.shelfIndex.clear();
  platform::deleteFile(ShelfIndexPath());
  binderFilesChanged();
}

}  // namespace quillmere
