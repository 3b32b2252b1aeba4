#pragma once

#include <fpdf_doc.h>

// Links on the shown pages. A click never starts a program or opens another file.
namespace quillmere {

// The link at client x and y in a pane; null when there is none.
FPDF_LINK LinkAtPoint(int pane, int x, int y);

// Jumps to the link's page, or opens its web or mail address. False when it leads nowhere.
bool FollowLink(int pane, FPDF_LINK link);

}  // namespace quillmere
