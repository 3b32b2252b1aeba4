#include "driver/scenario.h"
#include "support/png_file.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{612, 792};
constexpr int kStampPanelId = 402;
constexpr std::uint32_t kOrange = rgb(0xE0, 0x70, 0x10);
constexpr std::uint32_t kGhost = rgb(235, 165, 104);  // orange over paper, at an alpha of 0.63
constexpr std::uint32_t kTeal = rgb(0x10, 0x90, 0x90);
constexpr std::uint32_t kRotationHandle = rgb(60, 200, 100);
constexpr wchar_t kTextDialog[] = L"QuillmereAddTextDlg";
constexpr int kTextField = 1001;
constexpr int kSizeField = 1003;

std::wstring stampsFolder() {
  return userDataFolder() + L"\\Stamps\\";
}

// A library with one stamp, and a document of white pages at its actual size.
class Stamps : public Scenario {
 protected:
  void startWithStamp() {
    CreateDirectoryW(userDataFolder().c_str(), nullptr);
    CreateDirectoryW(stampsFolder().c_str(), nullptr);
    ASSERT_TRUE(
        writeFile(stampsFolder() + L"orange.png", test::plainPng(200, 100, 0xFF000000 | kOrange)));
    ASSERT_TRUE(writeFile(stampsFolder() + L"stamps.lst", "orange.png\r\n"));
    test::PdfPage page;
    page.width = kPage.width;
    page.height = kPage.height;
    startWith(test::buildPdf({page}));
    press('A');
    press(VK_F4);
    ASSERT_TRUE(eventually([&] { return panel() != nullptr && IsWindowVisible(panel()); }));
  }
  HWND panel() const { return GetDlgItem(window, kStampPanelId); }
  // A client pixel of the panel on the screen.
  POINT inPanel(int x, int y) const {
    POINT place{x, y};
    ClientToScreen(panel(), &place);
    return place;
  }
  RECT page() const {
    RECT area = pageArea();
    area.right = windowRect(panel()).left - clientOnScreen(window).left - dip(3);
    return area;
  }
  // The date stamp comes first; its height decides where the next one is.
  POINT stampInPanel(std::uint32_t color) const {
    const RECT client = clientOnScreen(panel());
    const Picture seen = capture(client);
    const RECT found = seen.extentAlike({0, 0, seen.width(), seen.height()}, color);
    return {client.left + (found.left + found.right) / 2,
            client.top + (found.top + found.bottom) / 2};
  }
  int pixelsOf(std::uint32_t color) const { return client().countAlike(page(), color); }
  RECT extentOf(std::uint32_t color) const { return client().extentAlike(page(), color); }
  ::testing::AssertionResult shown(std::uint32_t color, bool some) const {
    if (eventually([&] { return (pixelsOf(color) > 200) == some; })) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << pixelsOf(color) << " pixels of that colour";
  }
  void dragOver(POINT from, POINT between, POINT to) const {
    movePointer(from);
    ASSERT_TRUE(inputIsHandled(window));
    pressButton(from);
    for (const POINT place : {between, to}) {
      ASSERT_TRUE(inputIsHandled(window));
      movePointer(place);
    }
    ASSERT_TRUE(inputIsHandled(window));
    ASSERT_TRUE(eventually([&] { return pixelsOf(kOrange) == 0 && pixelsOf(kGhost) > 200; }));
    picture("Stamps.Ghost");
    releaseButton(to);
  }
  void placeOrange(POINT at) {
    POINT from{};
    ASSERT_TRUE(eventually([&] {
      from = stampInPanel(kOrange);
      return from.y > clientOnScreen(panel()).top + dip(98);
    }));
    // A stamp that is moved up or down in the panel would be reordered.
    dragOver(from, {at.x, from.y}, at);
    ASSERT_TRUE(shown(kOrange, true));
  }
  static POINT middle(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
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
    return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBForange.png\r\nteal.png\r\n";
  }));
  ASSERT_TRUE(eventually([&] { return stampInPanel(kTeal).y > stampInPanel(kOrange).y; }));
  picture("Stamps.Library");

  const POINT orange = stampInPanel(kOrange);
  const POINT dragged = stampInPanel(kTeal);
  drag(dragged, {orange.x, orange.y - dip(30)});
  ASSERT_TRUE(eventually([&] {
    return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBFteal.png\r\norange.png\r\n";
  }));
  press(VK_DELETE);
  ASSERT_TRUE(eventually(
      [&] { return readFile(stampsFolder() + L"stamps.lst") == "\xEF\xBB\xBForange.png\r\n"; }));
  EXPECT_TRUE(exists(stampsFolder() + L"teal.png"));
}

TEST_F(Stamps, TextIsPlacedByClicksWhileItsDialogIsOpen) {
  startWithStamp();
  click(inPanel(dip(60), dip(46)));
  HWND dialog = nullptr;
  ASSERT_TRUE(
      eventually([&] { return (dialog = program.find(kTextDialog)) && IsWindowVisible(dialog); }));
  EXPECT_EQ(titleOf(dialog), L"Add Text");
  ASSERT_TRUE(eventually([&] { return focusOf(dialog) == GetDlgItem(dialog, kTextField); }));
  type(L"Paid in full");
  press(VK_TAB);
  press(VK_TAB);
  type(L"48");
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_EQ(controlText(GetDlgItem(dialog, kSizeField)), L"48");
  SetWindowPos(dialog, nullptr, dip(20), dip(500), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
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

}  // namespace
}  // namespace quillmere::e2e
