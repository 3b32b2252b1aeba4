#pragma once

#include <cstdint>

#include "session/binder_tree.h"

// The tree of binders and their documents.
namespace quillmere {

// While one lives, the tree's control works on its rows (it handles a message, a name is being
// edited), so a rebuild waits and is posted when the last of them ends.
class BinderTreeGuard {
 public:
  BinderTreeGuard();
  BinderTreeGuard(const BinderTreeGuard&) = delete;
  BinderTreeGuard& operator=(const BinderTreeGuard&) = delete;
  ~BinderTreeGuard();
};

// While one lives, what the control reports is no choice of the user: nothing is asked or opened.
class OwnTreeChange {
 public:
  OwnTreeChange();
  OwnTreeChange(const OwnTreeChange&) = delete;
  OwnTreeChange& operator=(const OwnTreeChange&) = delete;
  ~OwnTreeChange();

 private:
  bool before_;
};

// Rebuilds the binder tree from the loaded binders. It keeps its scroll place and its selection.
// Waits while the control works on its rows or a row is dragged.
void BuildBinderTree();

// Posts a rebuild that had to wait, unless it still has to.
void releaseWaitingRebuild();

// Selects a row, after the rebuild if one waits. Opens nothing.
void selectBinderRow(const BinderRow& row);
// The same for the head of a binder.
void SelectBinderHead(int index);

// Repaints the existing rows with their current state.
void RepaintBinderTree();

// Adds the rows below a head that is about to be expanded for the first time.
void fillBinderHead(std::int32_t value);
// A head was expanded or collapsed, which the binder's file keeps.
void binderHeadToggled(std::int32_t value, bool collapsed);
void collapseAllBinders();

// Whether a row is drawn dimmed: its document is missing. Local documents are looked for when
// their row is first drawn, those on a share never, since a dead one would block the window.
bool binderRowDimmed(std::int32_t value);

}  // namespace quillmere
