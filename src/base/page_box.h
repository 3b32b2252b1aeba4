#pragma once

namespace quillmere {

// An upright rectangle of page points; top lies above bottom.
struct PageBox {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

}  // namespace quillmere
