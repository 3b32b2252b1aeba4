#pragma once

struct HWND__;

namespace quillmere {

// While a mouse button is down on the tree, and while one of its rows is being renamed, documents
// that others ask to open wait: the tree handles messages then, and what it works on must stay.
void holdOpensWhileTreeWorks(HWND__* tree);

}  // namespace quillmere
