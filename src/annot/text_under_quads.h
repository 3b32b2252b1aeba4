#pragma once

#include <fpdf_annot.h>
#include <fpdf_text.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/page_box.h"

namespace quillmere {

// The box around one quad's corners; nullopt when the quad cannot be read.
std::optional<PageBox> boxOfQuad(FPDF_ANNOTATION annotation, std::size_t index);

// The text of one page that lies under quads. It must not outlive the page.
class TextUnderQuads {
 public:
  // For a page without text, given as null, the text is always empty.
  explicit TextUnderQuads(FPDF_TEXTPAGE textPage) : textPage_(textPage) {}

  // The text of each line, joined by blanks; a word divided at a line's end comes out whole. What
  // all calls together look at is limited; beyond, the text is empty.
  std::u16string under(const std::vector<PageBox>& quads);

 private:
  struct Character {
    int index = 0;  // in the text page
    double x = 0;   // its centre
    double y = 0;
    char32_t code = 0;
  };

  std::u16string piece(const PageBox& quad);
  std::u16string boundedText(const PageBox& quad);
  std::u16string charactersIn(const PageBox& quad);
  void readCharacters();

  FPDF_TEXTPAGE textPage_;
  std::u16string buffer_;
  std::size_t compared_ = 0;  // characters compared with quads so far
  bool charactersRead_ = false;
  std::vector<Character> characters_;  // visible ones, from the bottom up
  std::vector<int> blanks_;            // indexes of blanks and line ends, ascending
};

}  // namespace quillmere
