#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/opening_test.h"

namespace quillmere::test {

// A test that edits whole pages by the commands; page numbers are zero-based. Questions are
// answered OK, and the session's rules must hold at the end.
class PageEditTest : public OpeningTest {
 protected:
  ~PageEditTest() override;

  static FPDF_DOCUMENT document() { return documentOf(session.activePane); }
  static PaneSlot& pane(int index) { return session.panes[index]; }

  // Deletes the page that the active pane shows, or goes to a page first.
  static void deletePage();
  static void deletePage(std::int32_t page);

  // Inserts a file with these bytes above or below the page that the active pane shows.
  static void insert(bool below, const std::string& bytes);

  // What a page says, and how many annotations it has, read through a handle of its own.
  static std::string textOf(FPDF_DOCUMENT document, int page);
  static std::vector<std::string> textsOf(FPDF_DOCUMENT document);
  static int annotationsOn(FPDF_DOCUMENT document, int page);

  // Dictionaries of annotations.
  static std::string stampAnnotation();
  static std::string highlight();

  // A text on a page of the active document that is no annotation yet.
  static void addText(std::int32_t page, const std::u16string& text = u"Text");
  static std::vector<std::int32_t> pagesWithPlacements();
};

}  // namespace quillmere::test
