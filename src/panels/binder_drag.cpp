#include "panels/binder_drag.h"

#include <utility>

#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/binder_library.h"

namespace quillmere {

namespace {

constexpr std::size_t kFewestFilesToReorder = 2;

bool mayBeDragged(const BinderRow& row) {
  const int binder = binderIndexOf(row);
  if (session.viewerRole || binder == kNoBinder) return false;
  if (row.kind == BinderRowKind::Head) return !isWorkingDocuments(row);
  return fileIndexOf(row) != kNoBinder && binderAt(binder).files.size() >= kFewestFilesToReorder;
}

bool mayBeDropped(const BinderRow& source, const BinderRow& over, bool after) {
  if (over.kind != source.kind || binderIndexOf(over) == kNoBinder) return false;
  if (source.kind == BinderRowKind::Head) return after || !isWorkingDocuments(over);
  return platform::equalIgnoringCase(over.binder, source.binder);
}

// Ends the drag and returns what it was.
DragState takeDrag() {
  DragState drag = std::exchange(session.binderTree.drag, {});
  platform::clearTreeDropMark(kBinderTree);
  return drag;
}

void dropBinder(const DragState& drag) {
  const int from = binderIndexOf(drag.source);
  const int to = MoveBinder(from, {binderIndexOf(drag.over), drag.after});
  if (to == from) return;
  BuildBinderTree();
  SelectBinderHead(to);
}

void dropFile(const DragState& drag) {
  const int from = fileIndexOf(drag.source);
  const int over = fileIndexOf(drag.over);
  if (from == kNoBinder || over == kNoBinder) return;
  const int binder = binderIndexOf(drag.source);
  const int to = MoveFileInBinder(binder, from, {over, drag.after});
  if (to != from) BuildBinderTree();
  selectBinderRow(fileRowOf(binder, to));
}

}  // namespace

bool draggingBinderRow() {
  return session.binderTree.drag.source.kind != BinderRowKind::None;
}

bool startBinderDrag(std::int32_t value) {
  const BinderRow row = binderRowOf(value);
  if (!mayBeDragged(row)) return false;
  session.binderTree.drag = {row, {}, false};
  return true;
}

bool moveBinderDrag(const BinderDragTarget& target) {
  if (!draggingBinderRow()) return false;
  DragState& drag = session.binderTree.drag;
  const BinderRow over = binderRowOf(target.value);
  const bool after = target.pointerY > (target.top + target.bottom) / 2;
  const bool allowed = mayBeDropped(drag.source, over, after);
  drag.over = allowed ? over : BinderRow{};
  drag.after = after;
  if (allowed) {
    platform::markTreeDrop(kBinderTree, nearestTreeRow(over), after);
  } else {
    platform::clearTreeDropMark(kBinderTree);
  }
  return allowed;
}

void dropBinderDrag() {
  if (!draggingBinderRow()) return;
  const DragState drag = takeDrag();
  const bool resolved = binderIndexOf(drag.source) != kNoBinder && binderIndexOf(drag.over) >= 0;
  if (resolved && drag.source.kind == BinderRowKind::Head) dropBinder(drag);
  if (resolved && drag.source.kind == BinderRowKind::File) dropFile(drag);
  releaseWaitingRebuild();
}

void cancelBinderDrag() {
  if (!draggingBinderRow()) return;
  takeDrag();
  releaseWaitingRebuild();
}

}  // namespace quillmere
