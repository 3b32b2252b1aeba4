#include "driver/stamp_scenario.h"
#include "support/compare_pictures.h"
#include "support/png_file.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{400, 400};
constexpr std::uint32_t kTeal = rgb(0x10, 0x90, 0x90);
constexpr std::uint32_t kViolet = rgb(0x60, 0x20, 0xA0);
constexpr std::uint32_t kGold = rgb(0xC0, 0xA0, 0x20);

// A picture with another colour in each quarter, larger than it is ever shown.
std::string quartersPng() {
  platform::Picture picture = test::plainPicture(800, 400, 0);
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const bool right = x >= picture.width / 2;
      const bool low = y >= picture.height / 2;
      picture.pixels[static_cast<std::size_t>(y * picture.width + x)] =
          0xFF000000 | (low ? (right ? kViolet : kGold) : (right ? kTeal : kOrange));
    }
  }
  return test::encodePng(picture);
}

// A square page at its largest, whose boxes begin away from 0,0.
std::string squarePage(int rotate) {
  test::PdfPage page;
  page.width = kPage.width + 100;
  page.height = kPage.height + 150;
  page.rotate = rotate;
  page.entries = "/CropBox [60 90 460 490]";
  return test::buildPdf({page});
}

// What the program shows of stamps and texts while they are its own, and once they are in the file.
class PlacementFiles : public StampScenario {
 protected:
  void SetUp() override {
    StampScenario::SetUp();
    makeLibraryOf({quartersPng()});
    startWithPanel(squarePage(0));
    press('F');
    path = scenarioFolder() + L"\\one.pdf";
    ASSERT_TRUE(pageIsShown(true));
  }
  bool pageIsShown(bool some) const {
    return eventually([&] { return (pixelsOf(kPaper) > 1000) == some; });
  }
  void close() {
    toFront();
    press('W', kCtrl);
    ASSERT_TRUE(pageIsShown(false));
  }
  void open() {
    sendPath(window, path);
    ASSERT_TRUE(pageIsShown(true));
  }
  // Another document in place of the one that is open, which is saved.
  void openNext(const std::string& document) {
    close();
    makeFile(L"one.pdf", document);
    open();
    toFront();
  }
  // Saves the document and opens its file again.
  void saveAndOpenAgain(bool turned = false) {
    toFront();
    ASSERT_TRUE(isWrittenBy(path, [&] {
      press('S', kCtrl);
      if (!turned) return;
      EXPECT_TRUE(answerBox(waitForBox(program), VK_RETURN));
    }));
    close();
    open();
  }
  // A place of the page as it is seen, in points from its top left corner, on the screen.
  POINT onPage(double x, double y) const {
    const RECT area = pageOnScreen(client(), page());
    const double zoom = (area.right - area.left) / kPage.width;
    return onScreen(area.left + static_cast<LONG>(x * zoom),
                    area.top + static_cast<LONG>(y * zoom));
  }
  // Outline and handles hide the edge of what is selected.
  void clearSelection() {
    click(onPage(8, 8));
    ASSERT_TRUE(eventually([&] { return pixelsOf(kRotationHandle) == 0; }));
  }
  Picture pageSeen() const {
    const RECT area = page();
    const POINT corner = onScreen(area.left, area.top);
    return capture(
        {corner.x, corner.y, corner.x + area.right - area.left, corner.y + area.bottom - area.top});
  }
  static test::PictureView viewOf(const Picture& picture) {
    return {picture.width(), picture.height(), picture.pixels()};
  }
  // Waits until nothing is farther than one pixel from where it was.
  ::testing::AssertionResult looksLike(const Picture& before) const {
    int strays = 0;
    const bool alike = eventually([&] {
      const Picture now = pageSeen();
      strays =
          test::strays(viewOf(before), viewOf(now)) + test::strays(viewOf(now), viewOf(before));
      return strays == 0;
    });
    if (alike) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << strays << " channels of pixels lie elsewhere";
  }
  bool pageIsBare() const {
    const RECT found = ink();
    return found.left > found.right;
  }
  // Around the letters, in client pixels. The background beside the page is dark as well.
  RECT ink() const {
    const RECT area = pageOnScreen(client(), page());
    const POINT corner = onScreen(area.left, area.top);
    const Picture seen = capture(
        {corner.x, corner.y, corner.x + area.right - area.left, corner.y + area.bottom - area.top});
    const test::InkBox box = test::inkBoxOf(viewOf(seen));
    return {area.left + box.left, area.top + box.top, area.left + box.right, area.top + box.bottom};
  }
  // Waits until the letters' edges are where they were. Each program draws letters in its own way.
  ::testing::AssertionResult inkLiesAt(const RECT& before) const {
    RECT now{};
    const auto alikeEdge = [](LONG one, LONG other) { return std::abs(one - other) <= 1; };
    const bool there = eventually([&] {
      now = ink();
      return alikeEdge(now.left, before.left) && alikeEdge(now.top, before.top) &&
             alikeEdge(now.right, before.right) && alikeEdge(now.bottom, before.bottom);
    });
    if (there) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << ::testing::PrintToString(now) << ", before " << ::testing::PrintToString(before);
  }
  // Places what the dialog holds with its baseline's start in the page's middle, after this many
  // quarter turns, and closes the dialog.
  void placeText(const std::wstring& text, int turns = 0) {
    openTextDialog(text);
    const POINT place = onPage(kPage.width / 2, kPage.height / 2);
    movePointer(place);
    for (int turn = 0; turn < turns; ++turn) {
      ASSERT_TRUE(inputIsHandled(window));
      click(place, Button::Right);
    }
    ASSERT_TRUE(inputIsHandled(window));
    click(place);
    ASSERT_TRUE(inputIsHandled(window));
    press(VK_ESCAPE);
    ASSERT_TRUE(eventually([&] { return program.find(kTextDialog) == nullptr; }));
    movePointer(onPage(8, 8));
    ASSERT_TRUE(inputIsHandled(window));
  }

  std::wstring path;
};

TEST_F(PlacementFiles, AStampLiesInTheFileWhereItWasShown) {
  for (const int rotate : {0, 90, 180, 270}) {
    SCOPED_TRACE(rotate);
    openNext(squarePage(rotate));
    // Half of them have a turn that waits for the save besides.
    const bool turned = rotate % 180 != 0;
    if (turned) press('R');
    const POINT place = middle(page());
    placeOrange(onScreen(place.x, place.y));
    const RECT quarter = extentOf(kOrange);
    drag(onScreen(quarter.left, quarter.top),
         onScreen(quarter.left + dip(37 + rotate / 9), quarter.top - dip(21)));
    clearSelection();
    const Picture shown = pageSeen();
    picture("PlacementFiles.StampShown" + std::to_string(rotate));
    saveAndOpenAgain(turned);
    EXPECT_TRUE(looksLike(shown));
    picture("PlacementFiles.StampWritten" + std::to_string(rotate));
    if (HasFatalFailure()) return;
  }
}

TEST_F(PlacementFiles, ATextStandsInTheFileOnTheLineThatWasClicked) {
  for (const int turns : {0, 1, 2, 3}) {
    SCOPED_TRACE(turns);
    openNext(squarePage(turns % 2 * 90));
    placeText(L"HHHH", turns);
    if (HasFatalFailure()) return;
    const POINT clicked = onPage(kPage.width / 2, kPage.height / 2);
    const RECT shown = ink();
    picture("PlacementFiles.TextShown" + std::to_string(turns));
    const POINT origin = onScreen(0, 0);
    const LONG feet[] = {shown.bottom + origin.y, shown.left + origin.x, shown.top + origin.y,
                         shown.right + origin.x};
    EXPECT_NEAR(feet[turns], turns % 2 == 0 ? clicked.y : clicked.x, 1.5);
    saveAndOpenAgain();
    EXPECT_TRUE(inkLiesAt(shown));
    picture("PlacementFiles.TextWritten" + std::to_string(turns));
    if (HasFatalFailure()) return;
  }
}

TEST_F(PlacementFiles, ATextOfTheFileIsMovedStretchedAndDeleted) {
  placeText(L"HHHH");
  saveAndOpenAgain();
  const RECT first = ink();
  drag(onScreen(middle(first).x, middle(first).y),
       onScreen(middle(first).x - dip(60), middle(first).y + dip(70)));
  clearSelection();
  RECT moved = first;
  OffsetRect(&moved, -dip(60), dip(70));
  EXPECT_TRUE(inkLiesAt(moved));
  picture("PlacementFiles.TextMoved");

  click(onScreen(middle(moved).x, middle(moved).y));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kRotationHandle) > 20; }));
  // The box has no room beside the letters, and this much below them.
  const RECT turning = extentOf(kRotationHandle);
  const LONG below = (moved.bottom - moved.top) * 3 / 10;
  picture("PlacementFiles.TextSelected");
  drag(onScreen(2 * middle(moved).x - middle(turning).x, moved.bottom + below),
       onScreen(2 * middle(moved).x - middle(turning).x + dip(50), moved.bottom + below));
  clearSelection();
  const RECT stretched = ink();
  EXPECT_GT(stretched.right, moved.right + dip(40));
  EXPECT_NEAR(stretched.left, moved.left, dip(4));
  saveAndOpenAgain();
  EXPECT_TRUE(inkLiesAt(stretched));
  picture("PlacementFiles.TextStretched");

  click(onScreen(middle(stretched).x, middle(stretched).y));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kRotationHandle) > 20; }));
  press(VK_DELETE);
  ASSERT_TRUE(eventually([&] { return pageIsBare(); }));
  saveAndOpenAgain();
  EXPECT_TRUE(pageIsBare());
  EXPECT_EQ(readFile(path).find("/QMR"), std::string::npos);
}

// The standard fonts of a PDF have no letters for it, so the file gets its picture.
TEST_F(PlacementFiles, APolishNameIsWrittenAsItWasShown) {
  placeText(L"\u0141\u00F3d\u017A");
  const RECT shown = ink();
  picture("PlacementFiles.NameShown");
  saveAndOpenAgain();
  EXPECT_TRUE(inkLiesAt(shown));
  picture("PlacementFiles.NameWritten");
}

}  // namespace
}  // namespace quillmere::e2e
