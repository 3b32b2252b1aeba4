#pragma once

#include <fpdfview.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/tree.h"

namespace quillmere {

enum class BinderRowKind { None, NewBinder, AddDocument, Head, File };

// What a row of the binder tree stands for. The paths decide: the library can change before the
// rows do. The indexes are those that the row was made with.
struct BinderRow {
  BinderRowKind kind = BinderRowKind::None;
  std::u16string binder;  // path of the binder's file
  std::u16string file;    // path of the document; empty unless the row is a file's
  int binderIndex = -1;
  int fileIndex = -1;
};

// A row of a document as it was made.
struct ShownBinderFile {
  std::u16string path;
  platform::TreeRow row = platform::kNoTreeRow;
  bool tested = false;  // whether the file is missing is known
  bool dimmed = false;
};

// The rows of a binder as they were made.
struct ShownBinder {
  std::u16string path;  // of the binder's file
  platform::TreeRow head = platform::kNoTreeRow;
  platform::TreeRow addDocument = platform::kNoTreeRow;  // not for the documents in use
  bool filled = false;                                   // the rows below the head were made
  std::vector<ShownBinderFile> files;
};

// A row that is dragged to another place.
struct DragState {
  BinderRow source;  // of no kind while nothing is dragged
  BinderRow over;    // the row with the drop mark; of no kind where nothing can be dropped
  bool after = false;
};

struct BinderTree {
  platform::TreeRow newBinder = platform::kNoTreeRow;
  std::vector<ShownBinder> binders;     // by the binder index in a row's value
  std::int32_t guards = 0;              // BinderTreeGuards alive: the control works on its rows
  bool rebuildWaits = false;            // for the last of them
  bool rebuildingTree = false;          // what the control reports is the program's own doing
  std::optional<BinderRow> selectNext;  // what the next rebuild selects; unset: what is selected
  BinderRow lastOpened;
  // The document about whose changes the user was asked when the selection moved.
  FPDF_DOCUMENT askedAbout = nullptr;
  DragState drag;
};

}  // namespace quillmere
