#include "driver/other_window.h"
#include "driver/stamp_scenario.h"
#include "support/png_file.h"

namespace quillmere::e2e {
namespace {

constexpr std::uint32_t kTeal = rgb(0x10, 0x90, 0x90);
constexpr std::uint32_t kBlack = rgb(0, 0, 0);
constexpr std::uint32_t kRed = rgb(0xFF, 0, 0);
constexpr std::uint32_t kTextRed = rgb(0xC8, 0x1E, 0x1E);

// A stamp of 160 by 80 points in the document's file, as the program writes it: its left bottom
// corner and its colour.
struct WrittenStamp {
  int left;
  int bottom;
  std::uint32_t color;
};

int addWrittenStamp(test::PdfFile& file, const WrittenStamp& stamp) {
  std::string pixels;
  for (int n = 0; n < 16; ++n) {
    for (const int shift : {16, 8, 0}) pixels += static_cast<char>(stamp.color >> shift & 0xFF);
  }
  const int image = file.addStream(pixels,
                                   "/Type /XObject /Subtype /Image /Width 4 /Height 4 "
                                   "/ColorSpace /DeviceRGB /BitsPerComponent 8");
  const std::string corner = std::to_string(stamp.left) + " " + std::to_string(stamp.bottom);
  const std::string rect = "[" + corner + " " + std::to_string(stamp.left + 160) + " " +
                           std::to_string(stamp.bottom + 80) + "]";
  const int form = file.addStream("q 160 0 0 80 " + corner + " cm /Im Do Q",
                                  "/Type /XObject /Subtype /Form /BBox " + rect +
                                      " /Resources << /XObject << /Im " +
                                      test::PdfFile::reference(image) + " >> >>");
  return file.add("<< /Type /Annot /Subtype /Stamp /F 4 /Rect " + rect + " /QMR (QMR1;S;0;" +
                  std::to_string(stamp.left) + ";" + std::to_string(stamp.bottom) +
                  ";160;80;) /AP << /N " + test::PdfFile::reference(form) + " >> >>");
}

// One white page with these stamps.
std::string stampedPdf(const std::vector<WrittenStamp>& stamps) {
  test::PdfFile file;
  const int tree = file.reserve();
  std::string annotations;
  for (const WrittenStamp& stamp : stamps) {
    annotations += test::PdfFile::reference(addWrittenStamp(file, stamp)) + " ";
  }
  const int page = file.add("<< /Type /Page /MediaBox [0 0 612 792] /Parent " +
                            test::PdfFile::reference(tree) + " /Annots [" + annotations + "] >>");
  file.set(tree, "<< /Type /Pages /Count 1 /Kids [" + test::PdfFile::reference(page) + "] >>");
  return file.finish(
      file.add("<< /Type /Catalog /Pages " + test::PdfFile::reference(tree) + " >>"));
}

class Stamps : public StampScenario {
 protected:
  void startWithStamp() {
    makeLibrary({kOrange});
    startWithPanel(whitePage());
  }
  static bool lying(const RECT& rect) {
    return rect.right - rect.left > 3 * (rect.bottom - rect.top) / 2;
  }
  static bool standing(const RECT& rect) {
    return rect.bottom - rect.top > 3 * (rect.right - rect.left) / 2;
  }
  void import(const std::wstring& path) {
    click(inPanel(dip(60), dip(76)));
    const HWND opened = waitForFileDialog(program);
    ASSERT_NE(opened, nullptr);
    ASSERT_TRUE(chooseInFileDialog(opened, path));
  }
};

TEST_F(Stamps, AStampIsDraggedMovedSizedTurnedAndDeleted) {
  startWithStamp();
  const POINT target = onScreen(dip(400), dip(300));
  placeOrange(target);
  picture("Stamps.Placed");
  RECT before = extentOf(kOrange);
  EXPECT_NEAR(middle(before).x, dip(400), 2);
  EXPECT_NEAR(middle(before).y, dip(300), 2);
  EXPECT_GT(pixelsOf(kRotationHandle), 20) << "it is selected";

  const POINT centre = middle(before);
  drag(onScreen(centre.x, centre.y), onScreen(centre.x + dip(60), centre.y + dip(40)));
  ASSERT_TRUE(
      eventually([&] { return std::abs(middle(extentOf(kOrange)).x - centre.x - dip(60)) < 3; }));
  before = extentOf(kOrange);

  // The right bottom handle lies at the corner.
  drag(onScreen(before.right, before.bottom),
       onScreen(before.right + dip(50), before.bottom + dip(30)));
  ASSERT_TRUE(eventually([&] {
    const RECT now = extentOf(kOrange);
    return now.right - now.left > before.right - before.left + dip(40);
  }));
  picture("Stamps.Sized");

  const RECT wide = extentOf(kOrange);
  const POINT middleNow = middle(wide);
  const int halfWidth = (wide.right - wide.left) / 2;
  const int halfHeight = (wide.bottom - wide.top) / 2;
  drag(onScreen(wide.left, wide.top), onScreen(middleNow.x + halfHeight, middleNow.y - halfWidth));
  ASSERT_TRUE(eventually([&] {
    const RECT now = extentOf(kOrange);
    return now.bottom - now.top > now.right - now.left;
  })) << "a quarter turn stands it on its side";
  picture("Stamps.Turned");

  toFront();
  press(VK_DELETE);
  EXPECT_TRUE(shown(kOrange, false));
}

TEST_F(Stamps, PicturesAreImportedReorderedAndRemoved) {
  startWithStamp();
  const std::wstring teal = makeFile(L"teal.png", test::plainPng(200, 100, 0xFF000000 | kTeal));
  click(inPanel(dip(60), dip(76)));
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(chooseInFileDialog(dialog, teal));
  ASSERT_TRUE(eventually([&] {
    return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBFs1.png\r\nteal.png\r\n";
  }));
  ASSERT_TRUE(eventually([&] { return stampInPanel(kTeal).y > stampInPanel(kOrange).y; }));
  picture("Stamps.Library");

  const POINT orange = stampInPanel(kOrange);
  const POINT dragged = stampInPanel(kTeal);
  drag(dragged, {orange.x, orange.y - dip(30)});
  ASSERT_TRUE(eventually([&] {
    return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBFteal.png\r\ns1.png\r\n";
  }));
  press(VK_DELETE);
  ASSERT_TRUE(eventually(
      [&] { return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBFs1.png\r\n"; }));
  EXPECT_TRUE(exists(stampsFolder() + L"teal.png"));
}

TEST_F(Stamps, TextIsPlacedByClicksWhileItsDialogIsOpen) {
  startWithStamp();
  openTextDialog(L"Paid in full");
  EXPECT_EQ(titleOf(dialog), L"Add Text");
  movePointer(onScreen(dip(330), dip(260)));
  ASSERT_TRUE(inputIsHandled(window));
  picture("Stamps.TextGhost");
  click(onScreen(dip(330), dip(260)));
  click(onScreen(dip(330), dip(360)));
  movePointer(onScreen(dip(330), dip(150)));
  ASSERT_TRUE(inputIsHandled(window));
  picture("Stamps.Text");
  const auto inked = [&](int top, int bottom) {
    return client().countAlike({dip(330), dip(top), dip(600), dip(bottom)}, rgb(0, 0, 0)) > 100;
  };
  EXPECT_TRUE(eventually([&] { return inked(225, 262) && inked(325, 362); }));
  press(VK_ESCAPE);
  EXPECT_TRUE(eventually([&] { return program.find(kTextDialog) == nullptr; }));
  EXPECT_TRUE(eventually([] { return setting(L"TextDialog", L"SizePt") == L"48"; }));
}

TEST_F(Stamps, NoButtonStaysMarkedWhenThePointerIsOnThePage) {
  constexpr std::uint32_t kHoverEdge = rgb(150, 185, 230);
  startWithStamp();
  const auto marked = [&] {
    const POINT corner = inPanel(0, dip(40));
    const Picture edge = capture({corner.x, corner.y, corner.x + dip(12), corner.y + dip(12)});
    return edge.count({0, 0, edge.width(), edge.height()}, kHoverEdge) > 0;
  };
  movePointer(inPanel(dip(60), dip(46)));
  ASSERT_TRUE(eventually(marked));
  openTextDialog(L"HH");
  movePointer(onScreen(dip(400), dip(300)));
  EXPECT_TRUE(eventually([&] { return !marked(); }));
}

TEST_F(Stamps, ShiftHidesThePreviewWhileTheDialogHasTheKeyboard) {
  startWithStamp();
  openTextDialog(L"HHHHHH");
  movePointer(onScreen(dip(400), dip(260)));
  // The cross at the pointer, and the first letter.
  const RECT around{dip(390), dip(230), dip(420), dip(270)};
  const int pixels = (around.right - around.left) * (around.bottom - around.top);
  const auto previewShown = [&](bool some) {
    return eventually([&] { return (client().countAlike(around, kPaper) < pixels - 20) == some; });
  };
  ASSERT_TRUE(previewShown(true));
  holdKeys(kShift);
  EXPECT_TRUE(previewShown(false));
  releaseKeys(kShift);
  EXPECT_TRUE(previewShown(true));
}

TEST_F(Stamps, TheRightButtonTurnsTheTextThatIsPlaced) {
  startWithStamp();
  openTextDialog(L"HHHHHH");
  const POINT place = onScreen(dip(500), dip(200));
  movePointer(place);
  ASSERT_TRUE(inputIsHandled(window));
  click(place, Button::Right);
  ASSERT_TRUE(inputIsHandled(window));
  picture("Stamps.TurnedGhost");
  click(place);
  movePointer(onScreen(dip(400), dip(150)));
  ASSERT_TRUE(inputIsHandled(window));
  // It runs down from the place, with its letters' feet to the left.
  ASSERT_TRUE(eventually([&] { return standing(extentOf(kBlack)); }));
  const RECT ink = extentOf(kBlack);
  EXPECT_NEAR(ink.left, dip(500), 4);
  EXPECT_GT(ink.top, dip(200) - 2);
  picture("Stamps.TurnedText");
}

TEST_F(Stamps, FontAndColourAreChosenInTheirLists) {
  startWithStamp();
  openTextDialog(L"HHHHHH");
  press(VK_TAB, kShift);
  press(VK_DOWN);
  press(VK_DOWN);
  press(VK_TAB);
  press(VK_TAB);
  press(VK_DOWN);
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_EQ(controlText(GetDlgItem(dialog, kFontField)), L"Times Roman");
  EXPECT_EQ(controlText(GetDlgItem(dialog, kColorField)), L"Red");
  picture("Stamps.TextChoices");
  click(onScreen(dip(400), dip(200)));
  movePointer(onScreen(dip(400), dip(400)));
  EXPECT_TRUE(eventually([&] { return lying(extentOf(kTextRed)); }));
  EXPECT_TRUE(eventually([] {
    return setting(L"TextDialog", L"FontIdx") == L"2" &&
           setting(L"TextDialog", L"ColorIdx") == L"1";
  }));
}

TEST_F(Stamps, AStampStandsUprightOnATurnedPageAndTurnsWithIt) {
  makeLibrary({kOrange});
  startWithPanel(whitePage(90));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kPaper) > 1000; }));
  const POINT target = middle(page());
  placeOrange(onScreen(target.x, target.y));
  EXPECT_TRUE(lying(extentOf(kOrange)));
  EXPECT_NEAR(middle(extentOf(kOrange)).x, target.x, 2);
  EXPECT_NEAR(middle(extentOf(kOrange)).y, target.y, 2);
  picture("Stamps.TurnedPage");
  toFront();
  for (const bool lies : {false, true, false}) {
    press('R');
    ASSERT_TRUE(
        eventually([&] { return lies ? lying(extentOf(kOrange)) : standing(extentOf(kOrange)); }));
  }
  const RECT before = extentOf(kOrange);
  // Up the screen, past the page's own left edge now.
  drag(onScreen(middle(before).x, middle(before).y),
       onScreen(middle(before).x + dip(30), middle(before).y - dip(50)));
  ASSERT_TRUE(eventually([&] {
    const POINT now = middle(extentOf(kOrange));
    return std::abs(now.x - middle(before).x - dip(30)) < 3 &&
           std::abs(now.y - middle(before).y + dip(50)) < 3;
  }));
  // The lower right corner on the screen is the box's lower left one, and sizes it as any.
  const RECT moved = extentOf(kOrange);
  drag(onScreen(moved.right, moved.bottom),
       onScreen(moved.right + dip(20), moved.bottom + dip(30)));
  EXPECT_TRUE(eventually([&] {
    const RECT now = extentOf(kOrange);
    return std::abs(now.right - moved.right - dip(20)) < 4 &&
           std::abs(now.bottom - moved.bottom - dip(30)) < 4 &&
           std::abs(now.left - moved.left) < 4 && std::abs(now.top - moved.top) < 4;
  }));
  picture("Stamps.TurnedPageSized");
}

TEST_F(Stamps, TheButtonOfMarkUpShowsWhetherItsDialogIsOpen) {
  constexpr wchar_t kMarkupDialog[] = L"QuillmereMarkupDlg";
  constexpr std::uint32_t kUp = rgb(225, 225, 225);
  constexpr std::uint32_t kDown = rgb(204, 220, 240);
  startWithStamp();
  // In the button, left of its label.
  const POINT place = inPanel(dip(12), dip(10));
  const auto buttonBecomes = [&](std::uint32_t color) {
    return eventually([&] { return screenPixel(place) == color; });
  };
  const auto dialogShown = [&] {
    const HWND markup = program.find(kMarkupDialog);
    return markup != nullptr && IsWindowVisible(markup) && focusOf(markup) != window;
  };
  ASSERT_TRUE(buttonBecomes(kUp));
  for (const WORD closing : {WORD{'M'}, WORD{VK_ESCAPE}}) {
    press('M', kCtrl);
    ASSERT_TRUE(eventually(dialogShown));
    EXPECT_TRUE(buttonBecomes(kDown));
    press(closing, closing == 'M' ? kCtrl : kNone);
    ASSERT_TRUE(eventually([&] { return program.find(kMarkupDialog) == nullptr; }));
    EXPECT_TRUE(buttonBecomes(kUp));
  }
}

TEST_F(Stamps, TheWheelScrollsTheLibrary) {
  std::vector<std::uint32_t> colors(15, kOrange);
  colors.push_back(kTeal);
  makeLibrary(colors);
  startWithPanel(whitePage());
  const auto tealSeen = [&] { return !(stampInPanel(kTeal).y <= clientOnScreen(panel()).top); };
  EXPECT_FALSE(tealSeen());
  turnWheel(inPanel(dip(60), dip(300)), -120);
  picture("Stamps.ScrolledOnce");
  for (int notch = 0; notch < 20; ++notch) turnWheel(inPanel(dip(60), dip(300)), -120);
  ASSERT_TRUE(eventually(tealSeen));
  picture("Stamps.ScrolledToTheEnd");
  const POINT from = stampInPanel(kTeal);
  drag(from, onScreen(dip(450), from.y - clientOnScreen(window).top));
  EXPECT_TRUE(shown(kTeal, true)) << "the stamp that is seen under the pointer is placed";
  for (int notch = 0; notch < 25; ++notch) turnWheel(inPanel(dip(60), dip(300)), 120);
  EXPECT_TRUE(eventually([&] { return !tealSeen(); }));
}

TEST_F(Stamps, DeleteAfterADropTakesTheStampOffThePageAndNotOutOfTheLibrary) {
  startWithStamp();
  placeOrange(onScreen(dip(450), dip(300)));
  press(VK_DELETE);
  EXPECT_TRUE(shown(kOrange, false));
  EXPECT_EQ(readFile(stampsFolder() + L"stamps.lst"), "s1.png\r\n");
}

TEST_F(Stamps, DeleteAfterALookAtAnotherProgramTakesTheSelectedStampOutOfTheLibrary) {
  startWithStamp();
  placeOrange(onScreen(dip(450), dip(300)));
  click(stampInPanel(kOrange));
  const auto panelHasKeyboard = [&] {
    return eventually([&] { return focusOf(window) == panel(); });
  };
  ASSERT_TRUE(panelHasKeyboard());
  {
    const OtherWindow other;
    ASSERT_TRUE(other.comesToFront());
    ASSERT_TRUE(bringToFront(window));
  }
  ASSERT_TRUE(panelHasKeyboard());
  press(VK_DELETE);
  EXPECT_TRUE(
      eventually([&] { return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBF"; }));
  EXPECT_TRUE(shown(kOrange, true)) << "the one on the page stays";
}

TEST_F(Stamps, StampsOfTheFileAreMovedAndDeleted) {
  makeLibrary({});
  startWithPanel(stampedPdf({{200, 600, kTeal}, {300, 450, kOrange}}));
  ASSERT_TRUE(shown(kTeal, true));
  ASSERT_TRUE(shown(kOrange, true));
  const POINT teal = middle(extentOf(kTeal));
  click(onScreen(teal.x, teal.y));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kRotationHandle) > 20; }));
  picture("Stamps.WrittenSelected");
  press(VK_DELETE);
  ASSERT_TRUE(shown(kTeal, false));
  EXPECT_TRUE(shown(kOrange, true));

  const int area = pixelsOf(kOrange);
  const RECT orange = extentOf(kOrange);
  const POINT centre = middle(orange);
  drag(onScreen(centre.x, centre.y), onScreen(centre.x - dip(60), centre.y - dip(90)));
  ASSERT_TRUE(eventually([&] {
    const POINT now = middle(extentOf(kOrange));
    return std::abs(now.x - centre.x + dip(60)) < 3 && std::abs(now.y - centre.y + dip(90)) < 3;
  })) << "it left its first place";
  EXPECT_LT(std::abs(pixelsOf(kOrange) - area), area / 8) << "and is there once";
  picture("Stamps.WrittenMoved");
  press(VK_DELETE);
  EXPECT_TRUE(shown(kOrange, false));
}

TEST_F(Stamps, AStampIsEditableAgainAfterSavingAndOpening) {
  startWithStamp();
  // What hangs over the page's edge is seen only until it is in the file.
  const POINT place = middle(page());
  placeOrange(onScreen(place.x, place.y));
  // The outline of a selected stamp hides its edge.
  click(onScreen(place.x, place.y + dip(120)));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kRotationHandle) == 0; }));
  const RECT placed = extentOf(kOrange);
  const std::wstring path = scenarioFolder() + L"\\one.pdf";
  const auto stampsInFile = [&] { return readFile(path).find("/QMR") != std::string::npos; };
  // The page may come to lie a pixel further, and the picture's edge is smoothed.
  const auto liesThere = [&] {
    const RECT now = extentOf(kOrange);
    const auto alike = [](LONG left, LONG right) { return std::abs(left - right) <= 2; };
    return alike(now.left, placed.left) && alike(now.top, placed.top) &&
           alike(now.right, placed.right) && alike(now.bottom, placed.bottom);
  };
  EXPECT_FALSE(stampsInFile());
  toFront();
  ASSERT_TRUE(isWrittenBy(path, [] { press('S', kCtrl); }));
  EXPECT_TRUE(stampsInFile());
  EXPECT_TRUE(eventually(liesThere)) << "saving moves nothing";
  picture("Stamps.Saved");

  press('W', kCtrl);
  ASSERT_TRUE(shown(kOrange, false));
  sendPath(window, path);
  press('A');
  EXPECT_TRUE(eventually(liesThere));
  const POINT centre = middle(placed);
  click(onScreen(centre.x, centre.y));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kRotationHandle) > 20; }));
  picture("Stamps.OpenedAgain");
  press(VK_DELETE);
  ASSERT_TRUE(shown(kOrange, false));
  ASSERT_TRUE(isWrittenBy(path, [] { press('S', kCtrl); }));
  EXPECT_FALSE(stampsInFile());
}

TEST_F(Stamps, OddPicturesAreImportedOrRefusedInSilence) {
  makeLibrary({});
  startWithPanel(whitePage());
  // Two frames of one pixel each, red and then blue.
  const std::string animation(
      "GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\xFF"
      "\x21\xF9\4\0\0\0\0\0\x2C\0\0\0\0\1\0\1\0\0\2\2\x44\1\0"
      "\x21\xF9\4\0\0\0\0\0\x2C\0\0\0\0\1\0\1\0\0\2\2\x4C\1\0;",
      66);
  const std::string line = test::plainPng(30000, 3, 0xFF000000 | kTeal);
  import(makeFile(L"line.png", line));
  import(makeFile(L"cut.png", line.substr(0, 1000)));
  import(makeFile(L"moving.gif", animation));
  import(makeFile(L"dot.png", test::plainPng(1, 1, 0xFF000000 | kTeal)));
  ASSERT_TRUE(eventually([&] {
    return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBFmoving.png\r\ndot.png\r\n";
  })) << readFile(stampsFolder() + L"stamps.lst");
  EXPECT_EQ(boxNow(program).window, nullptr);
  // Each is shown as high as any.
  EXPECT_TRUE(eventually([&] { return stampInPanel(kTeal).y > stampInPanel(kRed).y; }));
  picture("Stamps.OddPictures");
}

TEST_F(Stamps, OnACroppedPageAStampLandsUnderThePointerWhateverThePagesTurn) {
  makeLibrary({kOrange});
  startWithPanel(croppedPage(90));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kPaper) > 1000; }));
  const POINT target = middle(page());
  const auto landsOn = [&](POINT place) {
    return eventually([&] {
      const POINT now = middle(extentOf(kOrange));
      return std::abs(now.x - place.x) < 3 && std::abs(now.y - place.y) < 3;
    });
  };
  placeOrange(onScreen(target.x, target.y));
  EXPECT_TRUE(landsOn(target));
  picture("Stamps.CroppedPage");
  toFront();
  bool lies = true;
  // Each place is another one, so that no drag begins where the one before was dropped.
  for (const int aside : {60, -50, 40, -30}) {
    ASSERT_TRUE(
        eventually([&] { return lies ? lying(extentOf(kOrange)) : standing(extentOf(kOrange)); }));
    ASSERT_TRUE(inputIsHandled(window));
    const POINT from = middle(extentOf(kOrange));
    const POINT to{target.x + dip(aside), target.y - dip(aside)};
    drag(onScreen(from.x, from.y), onScreen(to.x, to.y));
    EXPECT_TRUE(landsOn(to)) << aside;
    press('R');
    lies = !lies;
  }
  picture("Stamps.CroppedPageTurned");
}

}  // namespace
}  // namespace quillmere::e2e
