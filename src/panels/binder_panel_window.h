#pragma once

#include <cstdint>
#include <optional>

struct HWND__;
struct tagNMHDR;

namespace quillmere {

// The styles of the binder tree besides those of any tree.
std::uint32_t binderTreeStyle();

// Handles the tree's keys and drags, and holds rebuilds back while the control is at work.
void watchBinderTree(HWND__* tree);

// Ends the typing of a binder's name, which stays as it was.
void cancelBinderEdit();

// Handles what the tree reports to the main window, and gives the reply.
std::optional<std::intptr_t> binderTreeReports(tagNMHDR& report);

}  // namespace quillmere
