#include "driver/stamp_scenario.h"

#include "support/png_file.h"

namespace quillmere::e2e {
namespace {

constexpr int kStampPanelId = 402;

}  // namespace

std::wstring stampsFolder() {
  return userDataFolder() + L"\\Stamps\\";
}

std::string whitePage(int rotate) {
  test::PdfPage page;
  page.rotate = rotate;
  return test::buildPdf({page});
}

std::string croppedPage(int rotate) {
  test::PdfPage page;
  page.rotate = rotate;
  page.entries = "/CropBox [100 150 512 692]";
  return test::buildPdf({page});
}

POINT middle(const RECT& rect) {
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

void StampScenario::makeLibraryOf(const std::vector<std::string>& files) {
  CreateDirectoryW(userDataFolder().c_str(), nullptr);
  CreateDirectoryW(stampsFolder().c_str(), nullptr);
  std::string list;
  for (const std::string& file : files) {
    const std::string name = "s" + std::to_string(++stamps_) + ".png";
    ASSERT_TRUE(writeFile(stampsFolder() + std::wstring(name.begin(), name.end()), file));
    list += name + "\r\n";
  }
  ASSERT_TRUE(writeFile(stampsFolder() + L"stamps.lst", list));
}

void StampScenario::makeLibrary(const std::vector<std::uint32_t>& colors) {
  std::vector<std::string> files;
  for (const std::uint32_t color : colors) {
    files.push_back(test::plainPng(200, 100, 0xFF000000 | color));
  }
  makeLibraryOf(files);
}

void StampScenario::startWithPanel(const std::string& document) {
  startWith(document);
  press('A');
  press(VK_F4);
  ASSERT_TRUE(eventually([&] { return panel() != nullptr && IsWindowVisible(panel()); }));
}

HWND StampScenario::panel() const {
  return GetDlgItem(window, kStampPanelId);
}

POINT StampScenario::inPanel(int x, int y) const {
  POINT place{x, y};
  ClientToScreen(panel(), &place);
  return place;
}

RECT StampScenario::page() const {
  RECT area = pageArea();
  area.right = windowRect(panel()).left - clientOnScreen(window).left - dip(3);
  return area;
}

POINT StampScenario::stampInPanel(std::uint32_t color) const {
  const RECT client = clientOnScreen(panel());
  const Picture seen = capture(client);
  const POINT found = middle(seen.extentAlike({0, 0, seen.width(), seen.height()}, color));
  return {client.left + found.x, client.top + found.y};
}

::testing::AssertionResult StampScenario::shown(std::uint32_t color, bool some) const {
  if (eventually([&] { return (pixelsOf(color) > 200) == some; })) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << pixelsOf(color) << " pixels of that colour";
}

void StampScenario::dragOver(POINT from, POINT between, POINT to) const {
  movePointer(from);
  ASSERT_TRUE(inputIsHandled(window));
  pressButton(from);
  for (const POINT place : {between, to}) {
    ASSERT_TRUE(inputIsHandled(window));
    movePointer(place);
  }
  ASSERT_TRUE(inputIsHandled(window));
  ASSERT_TRUE(eventually([&] { return pixelsOf(kOrange) == 0 && pixelsOf(kOrangeGhost) > 200; }));
  picture("Stamps.Ghost");
  releaseButton(to);
}

void StampScenario::placeOrange(POINT at) {
  POINT from{};
  // The date stamp comes first; its height decides where the next one is.
  ASSERT_TRUE(eventually([&] {
    from = stampInPanel(kOrange);
    return from.y > clientOnScreen(panel()).top + dip(98);
  }));
  // A stamp that is moved up or down in the panel would be reordered.
  dragOver(from, {at.x, from.y}, at);
  ASSERT_TRUE(shown(kOrange, true));
}

void StampScenario::openTextDialog(const std::wstring& text) {
  click(inPanel(dip(60), dip(46)));
  ASSERT_TRUE(
      eventually([&] { return (dialog = program.find(kTextDialog)) && IsWindowVisible(dialog); }));
  ASSERT_TRUE(eventually([&] { return focusOf(dialog) == GetDlgItem(dialog, kTextField); }));
  type(text);
  press(VK_TAB);
  press(VK_TAB);
  type(L"48");
  ASSERT_TRUE(inputIsHandled(window));
  ASSERT_EQ(controlText(GetDlgItem(dialog, kTextField)), text);
  ASSERT_EQ(controlText(GetDlgItem(dialog, kSizeField)), L"48");
  SetWindowPos(dialog, nullptr, dip(20), windowRect(window).bottom + dip(10), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace quillmere::e2e
