// Does to a document what a user would, saves it, and compares what the window shows before and
// after: a mark, a stamp, a text, a turned page and a deleted one; then everything is flattened.
//
// Usage: edit_document SOURCE FOLDER
//
// FOLDER receives saved.pdf, pictures as the window drew them, and pages.txt, which names them; see
// look_with_others.py. Exits with 0 if all was well, 2 if the document does not open, and otherwise
// with 1 after a line for each fault.

#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <fpdf_text.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "annot/markups.h"
#include "annot/place_stamp.h"
#include "annot/placement_view.h"
#include "annot/placements.h"
#include "annot/stamp_library.h"
#include "annot/text_tool.h"
#include "documents/close.h"
#include "documents/open.h"
#include "documents/page_operations.h"
#include "documents/save.h"
#include "platform/pictures.h"
#include "platform/stand_in.h"
#include "platform/text.h"
#include "session/session.h"
#include "support/engine.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

constexpr int kPane = 0;
const std::u16string kPath = u"C:\\documents\\document.pdf";
constexpr int kPagesSearched = 20;   // for one with a word to mark
constexpr int kPagesCompared = 12;   // of those that are not edited
constexpr int kSmallWidth = 200;     // pixels, of their pictures
constexpr int kColourTolerance = 2;  // of 255
// A letter or two: PDFium draws what lies under a mark once more, and letters land elsewhere in
// their pixels.
constexpr int kMostStrays = 20;  // pixels

int faults = 0;

void check(bool held, const std::string& what) {
  if (held) return;
  std::printf("%s\n", what.c_str());
  ++faults;
}

struct PagePixels {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;  // 0xRRGGBB from the top left corner

  std::uint32_t at(int x, int y) const {
    return pixels[static_cast<std::size_t>(y * width + x)] & 0xFFFFFF;
  }
};

int channel(const PagePixels& picture, int x, int y, int shift) {
  return static_cast<int>(picture.at(x, y) >> shift & 0xFF);
}

// Whether a colour value of one picture lies between those that the other has within one pixel:
// the same matrix, multiplied in another order, can move a letter to the next pixel.
bool foundNear(const PagePixels& one, const PagePixels& other, int x, int y, int shift) {
  int least = 255;
  int most = 0;
  for (int row = std::max(y - 1, 0); row <= std::min(y + 1, other.height - 1); ++row) {
    for (int column = std::max(x - 1, 0); column <= std::min(x + 1, other.width - 1); ++column) {
      const int value = channel(other, column, row, shift);
      least = std::min(least, value);
      most = std::max(most, value);
    }
  }
  const int value = channel(one, x, y, shift);
  return value >= least - kColourTolerance && value <= most + kColourTolerance;
}

bool pixelsAlike(const PagePixels& one, const PagePixels& other, int x, int y) {
  return std::ranges::all_of(std::array{0, 8, 16}, [&](int shift) {
    return foundNear(one, other, x, y, shift) && foundNear(other, one, x, y, shift);
  });
}

// Whether two pictures are alike outside of `except`.
bool picturesAlike(const PagePixels& one, const PagePixels& other,
                   const std::vector<PixelRect>& except = {}) {
  if (one.width != other.width || one.height != other.height) return false;
  int count = 0;
  for (int y = 0; y < one.height; ++y) {
    for (int x = 0; x < one.width; ++x) {
      if (one.at(x, y) == other.at(x, y)) continue;
      const bool left = std::ranges::any_of(except, [&](const PixelRect& rect) {
        return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
      });
      if (!left && !pixelsAlike(one, other, x, y)) ++count;
    }
  }
  return count <= kMostStrays;
}

PagePixels shownPicture() {
  const PaneSlot& slot = session.panes[kPane];
  PagePixels shown{slot.pageBitmapWidth, slot.pageBitmapHeight, {}};
  if (!slot.pageBitmap) return shown;
  const std::uint32_t* pixels = platform::pixelsOf(slot.pageBitmap.get());
  shown.pixels.assign(pixels, pixels + shown.width * shown.height);
  return shown;
}

PagePixels pictureOf(std::int32_t page) {
  goToPage(kPane, page, false);
  return shownPicture();
}

// What PDFium draws of a page, without the window.
PagePixels smallPicture(FPDF_DOCUMENT document, int index) {
  const PageHandle page(FPDF_LoadPage(document, index));
  if (!page) return {};
  const float ratio = FPDF_GetPageHeightF(page.get()) / FPDF_GetPageWidthF(page.get());
  PagePixels picture{kSmallWidth, std::clamp(static_cast<int>(kSmallWidth * ratio), 1, 2000), {}};
  picture.pixels.resize(static_cast<std::size_t>(picture.width * picture.height), 0xFFFFFF);
  const FPDF_BITMAP bitmap = FPDFBitmap_CreateEx(picture.width, picture.height, FPDFBitmap_BGRx,
                                                 picture.pixels.data(), picture.width * 4);
  FPDF_RenderPageBitmap(bitmap, page.get(), 0, 0, picture.width, picture.height, 0, FPDF_ANNOT);
  FPDFBitmap_Destroy(bitmap);
  return picture;
}

std::string ppmOf(const PagePixels& picture) {
  std::string ppm =
      "P6\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) + "\n255\n";
  for (const std::uint32_t pixel : picture.pixels) {
    for (const int shift : {16, 8, 0}) ppm += static_cast<char>(pixel >> shift & 0xFF);
  }
  return ppm;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  check(file.good(), "could not write " + path.string());
}

// The user agrees to everything; boxes that nobody expects are faults.
platform::BoxAnswer answer(const platform::ShownBox& box) {
  if (box.title == u"Save Rotation") return platform::BoxAnswer::Yes;
  const bool expected = box.title == u"Delete Page" || box.title == u"Flatten Annotations";
  check(expected, "unexpected box: " + platform::toUtf8(box.text));
  return platform::BoxAnswer::Ok;
}

// A stamp with a colour of its own in each quarter.
void makeStamp() {
  constexpr int kSide = 64;
  constexpr std::uint32_t kQuarters[] = {0xFFE02020, 0xFF20A020, 0xFF2020E0, 0xFFE0C020};
  platform::Picture picture;
  picture.width = kSide;
  picture.height = kSide;
  for (int i = 0; i < kSide * kSide; ++i) {
    const int right = i % kSide >= kSide / 2 ? 1 : 0;
    const int low = i / kSide >= kSide / 2 ? 2 : 0;
    picture.pixels.push_back(kQuarters[right + low]);
  }
  const std::u16string path = u"C:\\stamps\\quarters.png";
  platform::putFolder(u"C:\\stamps");
  check(platform::savePng(picture, path) && appendStamp(path, u"quarters", false), "no stamp");
}

// The first character of the shown page that stands in a word; -1 for none.
int characterOfWord() {
  const FPDF_TEXTPAGE text = session.panes[kPane].textPage.get();
  const int count = text ? FPDFText_CountChars(text) : 0;
  const auto isLetter = [&](int index) {
    const unsigned code = FPDFText_GetUnicode(text, index);
    return (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
  };
  for (int i = 0; i + 2 < count; ++i) {
    if (isLetter(i) && isLetter(i + 1) && isLetter(i + 2)) return i + 1;
  }
  return -1;
}

// Zero-based pages before the edits.
struct Plan {
  int marked = 0;
  int turned = 0;
  int deleted = -1;  // -1 for none
};

// The first page goes where there are three, so that all others get new numbers.
Plan planFor(int pages) {
  if (pages == 1) return {};
  if (pages == 2) return {.marked = 0, .turned = 0, .deleted = 1};
  Plan plan{.marked = 1, .turned = 2, .deleted = 0};
  for (int page = 1; page < std::min(pages - 1, kPagesSearched); ++page) {
    goToPage(kPane, page, false);
    if (characterOfWord() < 0) continue;
    plan.marked = page;
    plan.turned = page + 1;
    break;
  }
  return plan;
}

int numberAfter(const Plan& plan, int page) {
  return plan.deleted >= 0 && page > plan.deleted ? page - 1 : page;
}

// True when the page has a word, which is marked now.
bool markWord() {
  const int character = characterOfWord();
  double left = 0;
  double right = 0;
  double bottom = 0;
  double top = 0;
  const FPDF_TEXTPAGE text = session.panes[kPane].textPage.get();
  if (character < 0 || !FPDFText_GetCharBox(text, character, &left, &right, &bottom, &top)) {
    return false;
  }
  const PanePoint middle = pageToPane(kPane, (left + right) / 2, (bottom + top) / 2);
  const PixelRect rect = paneRect(kPane);
  selectWordAt(kPane, rect.left + static_cast<int>(middle.x),
               rect.top + static_cast<int>(middle.y));
  if (!hasTextSelection(kPane)) return false;
  highlightSelection();
  return true;
}

int highlightsOn(FPDF_DOCUMENT document, int index) {
  const PageHandle page(FPDF_LoadPage(document, index));
  int count = 0;
  for (int i = 0; i < FPDFPage_GetAnnotCount(page.get()); ++i) {
    const AnnotationHandle annotation(FPDFPage_GetAnnot(page.get(), i));
    if (FPDFAnnot_GetSubtype(annotation.get()) == FPDF_ANNOT_HIGHLIGHT) ++count;
  }
  return count;
}

// Where the page's placements are painted in its picture, with a pixel around them.
std::vector<PixelRect> placementsIn(std::int32_t page) {
  const PaneSlot& slot = session.panes[kPane];
  const int dx = static_cast<int>(slot.panX);
  const int dy = static_cast<int>(slot.panY);
  std::vector<PixelRect> rects;
  for (const Placement& placement : session.placements[page]) {
    const PixelRect rect = PlacementScreenBounds(kPane, placement);
    rects.push_back(
        {rect.left - dx - 2, rect.top - dy - 2, rect.right - dx + 2, rect.bottom - dy + 2});
  }
  return rects;
}

void placeStampAndText(const Plan& plan) {
  const PageBox box = pageBoxOf(kPane);
  const double width = box.right - box.left;
  const double height = box.top - box.bottom;
  PlaceStamp(static_cast<std::int32_t>(session.stampLibrary.size()) - 1, box.left + 0.75 * width,
             box.bottom + 0.25 * height);
  PlaceTextDrop(plan.marked, box.left + 0.1 * width, box.bottom + 0.1 * height, u"High tide at 14",
                18, 0, 3, pageRotationOf(kPane));
  ClearPlacementSelection();
}

// The document while it goes through the edits.
class Edited {
 public:
  Edited(std::string source, std::filesystem::path folder)
      : source_(std::move(source)),
        folder_(std::move(folder)),
        original_(FPDF_LoadMemDocument64(source_.data(), source_.size(), nullptr)),
        plan_(planFor(session.active.pageCount)) {}

  void edit() {
    keepPicture("marked-source", pictureOf(plan_.marked));
    marksBefore_ = highlightsOn(original_.get(), plan_.marked);
    if (markWord()) ++marksBefore_;
    placeStampAndText(plan_);
    goToPage(kPane, plan_.turned, false);
    rotatePage(kPane);
    if (plan_.deleted < 0) return;
    goToPage(kPane, plan_.deleted, false);
    DeleteCurrentPage();
    check(session.active.pageCount == pagesAfter(), "the page was not deleted");
  }

  void save() {
    const PagePixels turned = pictureOf(turnedAfter());
    const PagePixels marked = pictureOf(markedAfter());
    const std::vector<PixelRect> placements = placementsIn(markedAfter());
    check(placements.size() == 2, "stamp and text are not on their page");
    if (!placements.empty()) text_ = placements.back();
    SaveCommand();
    check(!hasUnsavedChanges(), "it was not saved");
    check(session.active.document != nullptr, "it was not opened again");
    if (session.active.document == nullptr) return;
    const PagePixels markedSaved = pictureOf(markedAfter());
    const PagePixels turnedSaved = pictureOf(turnedAfter());
    check(picturesAlike(marked, markedSaved, placements),
          "the marked page looks different when saved");
    if (!sameEditedPage()) {
      check(picturesAlike(turned, turnedSaved), "the turned page looks different when saved");
    }
    keepPicture("marked", markedSaved);
    keepPicture("turned", turnedSaved);
  }

  void inspect() {
    const FPDF_DOCUMENT saved = session.active.document.get();
    check(FPDF_GetPageCount(saved) == pagesAfter(), "another number of pages was saved");
    check(
        FPDF_GetSecurityHandlerRevision(saved) == FPDF_GetSecurityHandlerRevision(original_.get()),
        "it is encrypted in another way");
    check(highlightsOn(saved, markedAfter()) == marksBefore_, "the mark was not saved");
    readWaitingPlacements();
    const auto& placements = session.placements[markedAfter()];
    check(placements.size() >= 2 && std::ranges::none_of(placements, &Placement::pending),
          "stamp and text were not saved");
    for (const int page : comparedPages()) {
      check(picturesAlike(smallPicture(original_.get(), page),
                          smallPicture(saved, numberAfter(plan_, page))),
            "page " + std::to_string(page + 1) + " looks different when saved");
    }
  }

  void flatten() {
    const FPDF_DOCUMENT saved = session.active.document.get();
    std::vector<int> pages = {markedAfter(), turnedAfter()};
    for (const int page : comparedPages()) pages.push_back(numberAfter(plan_, page));
    std::vector<PagePixels> before;
    for (const int page : pages) before.push_back(smallPicture(saved, page));
    FlattenAnnotations();
    for (std::size_t i = 0; i < pages.size(); ++i) {
      check(picturesAlike(before[i], smallPicture(saved, pages[i])),
            "page " + std::to_string(pages[i] + 1) + " looks different when flattened");
    }
    check(highlightsOn(saved, markedAfter()) == 0, "marks outlive flattening");
  }

  void keep() {
    writeFile(folder_ / "saved.pdf", platform::fileBytes(kPath).value_or(std::string()));
    writeFile(folder_ / "pages.txt",
              "pages " + std::to_string(pagesAfter()) + "\nmarked " +
                  std::to_string(plan_.marked + 1) + " " + std::to_string(markedAfter() + 1) +
                  "\nturned " + std::to_string(plan_.turned + 1) + " " +
                  std::to_string(turnedAfter() + 1) + "\ntext" + sidesOf(text_) + "\n");
  }

 private:
  int markedAfter() const { return numberAfter(plan_, plan_.marked); }
  int turnedAfter() const { return numberAfter(plan_, plan_.turned); }
  bool sameEditedPage() const { return plan_.marked == plan_.turned; }
  int pagesAfter() const {
    return FPDF_GetPageCount(original_.get()) - (plan_.deleted >= 0 ? 1 : 0);
  }

  static std::string sidesOf(const PixelRect& rect) {
    std::string sides;
    for (const int side : {rect.left, rect.top, rect.right, rect.bottom}) {
      sides += " " + std::to_string(side);
    }
    return sides;
  }

  std::vector<int> comparedPages() const {
    std::vector<int> pages;
    const int count = FPDF_GetPageCount(original_.get());
    for (int page = 0; page < count; page += count / kPagesCompared + 1) {
      if (page != plan_.marked && page != plan_.turned && page != plan_.deleted) {
        pages.push_back(page);
      }
    }
    return pages;
  }

  void keepPicture(const std::string& name, const PagePixels& picture) {
    check(!picture.pixels.empty(), "no picture of a page");
    if (!picture.pixels.empty()) writeFile(folder_ / (name + ".ppm"), ppmOf(picture));
  }

  const std::string source_;
  const std::filesystem::path folder_;
  const DocumentHandle original_;
  const Plan plan_;
  PixelRect text_;  // in the picture of the marked page
  int marksBefore_ = 0;
};

int run(const std::filesystem::path& path, const std::filesystem::path& folder) {
  startEngine();
  resetSession();
  platform::resetStandIn();
  platform::standIn().window.client = {1000, 800};
  platform::standIn().chooseAnswer = answer;
  makeStamp();
  std::string source = readFile(path);
  platform::putFile(kPath, source);
  const DocumentHandle opens(FPDF_LoadMemDocument64(source.data(), source.size(), nullptr));
  if (!opens || FPDF_GetPageCount(opens.get()) < 1) return 2;
  if (!openDocument(&kPath, kPane, kWorkingDocsLeaveAlone, false, nullptr)) return 2;
  {
    Edited document(std::move(source), folder);
    document.edit();
    document.save();
    if (session.active.document) {
      document.inspect();
      document.keep();
      document.flatten();
    }
  }
  closeAllDocuments();
  resetSession();
  return faults == 0 ? 0 : 1;
}

}  // namespace
}  // namespace quillmere::test

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("Usage: edit_document SOURCE FOLDER\n", stderr);
    return 1;
  }
  return quillmere::test::run(argv[1], argv[2]);
}
