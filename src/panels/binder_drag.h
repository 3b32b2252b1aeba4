#pragma once

#include <cstdint>

// Dragging binders and documents to another place in their list.
namespace quillmere {

bool draggingBinderRow();

// Starts a drag of the row; false for rows that have no other place to go to.
bool startBinderDrag(std::int32_t value);

// The row under the pointer, in client pixels of the tree. A value of -1 stands for none.
struct BinderDragTarget {
  std::int32_t value = -1;
  int top = 0;
  int bottom = 0;
  int pointerY = 0;
};
// Marks where the row would be dropped; false where it cannot be.
bool moveBinderDrag(const BinderDragTarget& target);

void dropBinderDrag();
void cancelBinderDrag();

}  // namespace quillmere
