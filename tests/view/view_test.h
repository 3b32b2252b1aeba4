#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/stand_in.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"

namespace quillmere::test {

// Panels are hidden and the window has 1000 by 800 pixels with a status bar of 22, so that the one
// pane of SinglePage has 1000 by 778 and those of the other modes 500 and 498 by 778.
class ViewTest : public SessionTest {
 protected:
  // Opens a document in a one-document mode and shows its first page in pane 0.
  FPDF_DOCUMENT openAndShow(const std::string& bytes,
                            const std::u16string& path = u"C:\\active.pdf");
  // Opens a document in a pane of TwoDocuments and shows its first page there.
  FPDF_DOCUMENT openAndShowIn(int pane, const std::string& bytes);

  static void show(int pane, std::int32_t page);

  // Changes zoom and pan as a user would, in Custom Fit, and renders.
  static void setView(int pane, float zoom, float panX, float panY);

  static platform::StandInWindow& window() { return platform::standIn().window; }
  static PaneSlot& pane(int index) { return session.panes[index]; }
};

// A document of `pages` pages whose page `broken` (zero-based) cannot be loaded.
std::string pdfWithBrokenPage(int pages, int broken);

// Rotation that the page itself has, in quarter turns, read through a page handle of its own.
int ownRotationOf(FPDF_DOCUMENT document, int page);

}  // namespace quillmere::test
