#include "panels/binder_rows.h"

#include <algorithm>

#include "platform/text.h"
#include "session/session.h"
#include "store/binder_library.h"

namespace quillmere {

namespace {

using platform::equalIgnoringCase;
using platform::kNoTreeRow;
using platform::TreeRow;

constexpr std::u16string_view kPdf = u".pdf";

ShownBinder* shownBinder(std::uint32_t index) {
  std::vector<ShownBinder>& binders = session.binderTree.binders;
  return index < binders.size() ? &binders[index] : nullptr;
}

BinderRowKind kindOf(std::uint32_t low) {
  switch (low) {
    case kNewBinderMarker:
      return BinderRowKind::NewBinder;
    case kAddDocumentMarker:
      return BinderRowKind::AddDocument;
    case kHeadMarker:
      return BinderRowKind::Head;
    default:
      return BinderRowKind::File;
  }
}

// A viewer's documents in use have no file.
int findBinder(const std::u16string& path) {
  return path.empty() ? WorkingDocumentsIndex() : FindBinder(path);
}

// The entry of `files` with this path, preferably the one at `index`: a list can hold a path twice.
template <typename Files, typename PathOf>
int findFile(const Files& files, const std::u16string& path, int index, PathOf pathOf) {
  const auto isIt = [&](const auto& file) { return equalIgnoringCase(pathOf(file), path); };
  if (index >= 0 && static_cast<std::size_t>(index) < files.size() &&
      isIt(files[static_cast<std::size_t>(index)])) {
    return index;
  }
  const auto found = std::find_if(files.begin(), files.end(), isIt);
  return found == files.end() ? kNoBinder : static_cast<int>(found - files.begin());
}

const ShownBinder* findShown(const std::u16string& path) {
  const std::vector<ShownBinder>& binders = session.binderTree.binders;
  const auto found = std::find_if(binders.begin(), binders.end(), [&](const ShownBinder& binder) {
    return equalIgnoringCase(binder.path, path);
  });
  return found == binders.end() ? nullptr : &*found;
}

TreeRow rowOfFile(const ShownBinder& binder, const BinderRow& row) {
  if (!binder.filled) return binder.head;
  if (binder.files.empty()) {
    return binder.addDocument != kNoTreeRow ? binder.addDocument : binder.head;
  }
  const int found = findFile(binder.files, row.file, row.fileIndex,
                             [](const ShownBinderFile& file) { return file.path; });
  const int last = static_cast<int>(binder.files.size()) - 1;
  const int index = found != kNoBinder ? found : std::clamp(row.fileIndex, 0, last);
  return binder.files[static_cast<std::size_t>(index)].row;
}

// The row that has taken the place of a binder that is gone.
TreeRow headAt(int index) {
  const std::vector<ShownBinder>& binders = session.binderTree.binders;
  if (binders.empty()) return session.binderTree.newBinder;
  const int last = static_cast<int>(binders.size()) - 1;
  return binders[static_cast<std::size_t>(std::clamp(index, 0, last))].head;
}

}  // namespace

std::int32_t binderRowValue(std::size_t binderIndex, std::uint32_t low) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(binderIndex) << 16 | low);
}

BinderRow binderRowOf(std::int32_t value) {
  BinderRow row;
  if (value < 0) return row;
  const std::uint32_t high = static_cast<std::uint32_t>(value) >> 16;
  const std::uint32_t low = static_cast<std::uint32_t>(value) & 0xFFFF;
  const BinderRowKind kind = kindOf(low);
  const ShownBinder* binder = shownBinder(high);
  if (kind == BinderRowKind::NewBinder) {
    row.kind = kind;
    return row;
  }
  if (binder == nullptr) return row;
  if (kind == BinderRowKind::File) {
    if (low >= binder->files.size()) return row;
    row.file = binder->files[low].path;
    row.fileIndex = static_cast<int>(low);
  }
  row.kind = kind;
  row.binder = binder->path;
  row.binderIndex = static_cast<int>(high);
  return row;
}

BinderRow selectedBinderRow() {
  return binderRowOf(platform::treeRowEntry(kBinderTree, platform::selectedTreeRow(kBinderTree)));
}

bool sameBinderRow(const BinderRow& one, const BinderRow& other) {
  return one.kind == other.kind && equalIgnoringCase(one.binder, other.binder) &&
         equalIgnoringCase(one.file, other.file);
}

int binderIndexOf(const BinderRow& row) {
  if (row.kind == BinderRowKind::None || row.kind == BinderRowKind::NewBinder) return kNoBinder;
  return findBinder(row.binder);
}

int fileIndexOf(const BinderRow& row) {
  const int binder = binderIndexOf(row);
  if (row.kind != BinderRowKind::File || binder == kNoBinder) return kNoBinder;
  return findFile(binderAt(binder).files, row.file, row.fileIndex,
                  [](const std::u16string& path) { return path; });
}

bool isWorkingDocuments(const BinderRow& row) {
  const int binder = binderIndexOf(row);
  return binder != kNoBinder && binderAt(binder).isWorkingDocuments;
}

BinderRow headRowOf(int binderIndex) {
  BinderRow row;
  if (!IsValidBinder(binderIndex)) return row;
  row.kind = BinderRowKind::Head;
  row.binder = binderAt(binderIndex).path;
  row.binderIndex = binderIndex;
  return row;
}

BinderRow fileRowOf(int binderIndex, int fileIndex) {
  if (!IsValidBinderFile(binderIndex, fileIndex)) return {};
  BinderRow row = headRowOf(binderIndex);
  row.kind = BinderRowKind::File;
  row.file = binderAt(binderIndex).files[static_cast<std::size_t>(fileIndex)];
  row.fileIndex = fileIndex;
  return row;
}

TreeRow nearestTreeRow(const BinderRow& row) {
  if (row.kind == BinderRowKind::None) return kNoTreeRow;
  if (row.kind == BinderRowKind::NewBinder) return session.binderTree.newBinder;
  const ShownBinder* binder = findShown(row.binder);
  if (binder == nullptr) return headAt(row.binderIndex);
  if (row.kind == BinderRowKind::File) return rowOfFile(*binder, row);
  const bool add = row.kind == BinderRowKind::AddDocument && binder->addDocument != kNoTreeRow;
  return add ? binder->addDocument : binder->head;
}

ShownBinderFile* shownFile(std::int32_t value) {
  if (value < 0) return nullptr;
  ShownBinder* binder = shownBinder(static_cast<std::uint32_t>(value) >> 16);
  const std::uint32_t low = static_cast<std::uint32_t>(value) & 0xFFFF;
  return binder == nullptr || low >= binder->files.size() ? nullptr : &binder->files[low];
}

std::u16string binderFileText(std::u16string_view path) {
  // Lists that are edited by hand may have slashes of either kind.
  std::u16string name(path.substr(path.find_last_of(u"\\/") + 1));
  if (name.size() <= kPdf.size()) return name;
  const std::size_t stem = name.size() - kPdf.size();
  if (equalIgnoringCase(std::u16string_view(name).substr(stem), kPdf)) name.resize(stem);
  return name;
}

std::u16string binderRowTip(std::int32_t value) {
  const BinderRow row = binderRowOf(value);
  if (row.kind == BinderRowKind::File) return row.file;
  const bool custom = row.kind == BinderRowKind::Head && !isWorkingDocuments(row);
  return custom ? row.binder : std::u16string();
}

TreeRow firstSiblingOfSelected() {
  const BinderRow row = selectedBinderRow();
  if (row.kind == BinderRowKind::None) return kNoTreeRow;
  if (row.kind == BinderRowKind::NewBinder || row.kind == BinderRowKind::Head) {
    return session.binderTree.newBinder;
  }
  const ShownBinder* binder = findShown(row.binder);
  if (binder == nullptr) return kNoTreeRow;
  return binder->addDocument != kNoTreeRow ? binder->addDocument : binder->files.front().row;
}

TreeRow lastSiblingOfSelected() {
  const BinderRow row = selectedBinderRow();
  if (row.kind == BinderRowKind::None) return kNoTreeRow;
  if (row.kind == BinderRowKind::NewBinder || row.kind == BinderRowKind::Head) {
    const std::vector<ShownBinder>& binders = session.binderTree.binders;
    return binders.empty() ? session.binderTree.newBinder : binders.back().head;
  }
  const ShownBinder* binder = findShown(row.binder);
  if (binder == nullptr) return kNoTreeRow;
  return binder->files.empty() ? binder->addDocument : binder->files.back().row;
}

}  // namespace quillmere
