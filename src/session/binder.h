#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/fnv1a.h"

namespace quillmere {

// How one file of a binder was last viewed.
struct BinderEntry {
  std::int32_t page = 0;
  float panX = 0;
  float panY = 0;
  float zoom = 1;
  std::int32_t mode = -1;  // a zoom mode, -1 when no view was stored
  bool bold = false;
  bool hasPage = false;
};

// A named list of documents, held in one ".lst" file.
struct BinderFile {
  std::u16string name;
  std::u16string path;                // empty for a binder with no file
  std::vector<std::u16string> files;  // document paths as written in the file
  std::unordered_map<std::u16string, BinderEntry, Fnv1aTextHash> views;  // by lower-cased path
  std::string furtherLines;  // in UTF-8: file lines beyond those that `files` holds, as they came
  bool dirty = false;
  bool collapsed = false;
  bool bold = false;
  bool isWorkingDocuments = false;
};

// A binder that the settings name and whose file could not be reached or opened, which says nothing
// about whether it is still wanted.
struct AbsentBinder {
  std::u16string path;
  std::u16string before;  // path of the loaded binder that it follows; empty for the first place
};

}  // namespace quillmere
