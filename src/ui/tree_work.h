#pragma once

struct HWND__;

namespace quillmere {

// While a mouse button is down on the tree, and while one of its rows is being renamed, other
// openings wait: the tree handles messages meanwhile, and what it acts on must stay.
void holdOpensWhileTreeWorks(HWND__* tree);

}  // namespace quillmere
