#pragma once

#include <string>
#include <vector>

#include "documents/modes.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "platform/find_bar.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"

namespace quillmere::test {

// A page with one line of text for each entry.
inline PdfPage pageWith(const std::vector<std::string>& lines) {
  PdfPage page;
  double y = 750;
  for (const std::string& line : lines) {
    page.content += textContent(line, 72, y, 12);
    y -= 14;
  }
  return page;
}

// Opens documents the way a user does and types into the find bar.
class NavTest : public OpeningTest {
 protected:
  NavTest() { platform::standIn().findBar.onFieldChanged = findFieldChanged; }

  // Page i carries lines[i].
  static bool openLines(const std::vector<std::string>& lines) {
    std::vector<PdfPage> pages;
    for (const std::string& line : lines) pages.push_back(pageWith({line}));
    return open(buildPdf(pages));
  }

  static void type(const std::u16string& text) {
    session.findBarVisible = true;
    platform::setFindFieldText(text);
  }

  static platform::StandInFindBar& bar() { return platform::standIn().findBar; }
  static PaneSlot& pane(int index) { return session.panes[index]; }
  static FindState& find() { return session.find; }
};

}  // namespace quillmere::test
