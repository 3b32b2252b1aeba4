#include "driver/scenario.h"
#include "driver/scheme_handler.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};

using test::linkAnnotation;
using test::pageDestination;
using test::webAction;

// Each link has its own field on the page, from the top: 300 points wide, 40 high.
constexpr double kFieldHeight = 40;

double middleOfField(int field) {
  return kPage.height - kFieldHeight * (field + 0.5);
}

std::string field(int index, const std::string& action) {
  const double top = kPage.height - kFieldHeight * index;
  return linkAnnotation(0, top - kFieldHeight, kPage.width, top, action);
}

// Each page's top field links to the next page, and the last page's to the first; the field below
// it links to its own page.
std::string linkedPdf(int pages) {
  std::vector<test::PdfPage> list;
  for (int i = 0; i < pages; ++i) {
    test::PdfPage page = coloredPage(i, kPage);
    page.annotations = {field(0, pageDestination((i + 1) % pages + 1)),
                        field(1, pageDestination(i + 1, 100))};
    list.push_back(page);
  }
  return test::buildPdf(list);
}

std::string pageWithLinks(const std::vector<std::string>& actions) {
  test::PdfPage first = coloredPage(0, kPage);
  for (std::size_t i = 0; i < actions.size(); ++i) {
    first.annotations.push_back(field(static_cast<int>(i), actions[i]));
  }
  return test::buildPdf({first, coloredPage(1, kPage), coloredPage(2, kPage)});
}

class Links : public Scenario {
 protected:
  // The middle of a field of a page that is fitted into the pane.
  POINT fieldOf(RECT pane, int index) const {
    const POINT place = placeOnPage(fitPage(pane, kPage), fitPageZoom(pane, kPage), kPage,
                                    kPage.width / 2, middleOfField(index));
    return onScreen(place.x, place.y);
  }
  // Shifts each click a little from the previous one, since two on one spot are a double click.
  void clickField(RECT pane, int index) {
    POINT place = fieldOf(pane, index);
    place.x += aside;
    aside = -aside;
    click(place);
  }
  ::testing::AssertionResult follows(int index, const std::wstring& wanted) {
    clickField(pageArea(), index);
    return pageTextBecomes(wanted);
  }
  bool panScrolls() const { return menuItem(window, 209).checked; }

  int aside = 20;  // pixels
};

TEST_F(Links, AClickFollowsALinkWithAndWithoutPanScroll) {
  startWith(linkedPdf(3));
  ASSERT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
  ASSERT_TRUE(panScrolls());
  EXPECT_TRUE(follows(0, L"Page 2 of 3"));
  press('N', kCtrl);
  ASSERT_TRUE(eventually([&] { return !panScrolls(); }));
  EXPECT_TRUE(follows(0, L"Page 3 of 3"));
  EXPECT_TRUE(follows(0, L"Page 1 of 3"));
}

TEST_F(Links, ALinkOnATurnedPageIsWhereThePageShowsIt) {
  startWith(linkedPdf(3));
  press('R');
  const Size across{kPage.height, kPage.width};
  const RECT page = fitPage(pageArea(), across);
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  // The page's top is on the right.
  click(onScreen(page.right - 10, (page.top + page.bottom) / 2));
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
}

TEST_F(Links, ShiftDragsThePageInstead) {
  startWith(linkedPdf(3));
  const RECT page = fitPage(pageArea(), kPage);
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  const POINT start = fieldOf(pageArea(), 0);
  drag(start, {start.x + 40, start.y + 30}, Button::Left, kShift);
  RECT moved = page;
  OffsetRect(&moved, 40, 30);
  EXPECT_TRUE(pageBecomes(pageArea(), clipped(moved, pageArea())));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Links, APaneFollowsTheLinksOfItsOwnPage) {
  startWith(linkedPdf(4));
  press(VK_F7);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 4"));
  clickField(rightPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  EXPECT_TRUE(paneIsActive(rightPane()));
  clickField(rightPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:3  of 4"));
  clickField(leftPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 4"));
  // Each pane has its own history; a side button acts on the pane under the pointer.
  click(fieldOf(rightPane(), 5), Button::Back);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:2  of 4"));
  click(fieldOf(leftPane(), 5), Button::Back);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  click(fieldOf(rightPane(), 5), Button::Forward);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:3  of 4"));
  ASSERT_TRUE(paneIsActive(leftPane()));
  press(VK_BACK, kShift);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 4"));
}

TEST_F(Links, ABookFollowsFromBothPagesAndHasOneHistory) {
  startWith(linkedPdf(6));
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:2  of 6"));
  clickField(leftPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 6"));
  clickField(leftPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:3  R:4  of 6"));
  click(fieldOf(rightPane(), 5), Button::Back);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 6"));
  click(fieldOf(leftPane(), 5), Button::Back);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 6"));
  click(fieldOf(leftPane(), 5), Button::Forward);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 6"));
}

TEST_F(Links, InTwoDocumentsALinkStaysInItsDocument) {
  startWithTwo(linkedPdf(2), linkedPdf(3));
  clickField(rightPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:1/2  R:2/3"));
  clickField(rightPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:1/2  R:3/3"));
  clickField(leftPane(), 0);
  EXPECT_TRUE(pageTextBecomes(L"L:2/2  R:3/3"));
  press(VK_TAB);
  ASSERT_TRUE(paneIsActive(rightPane()));
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"L:2/2  R:2/3"));
}

TEST_F(Links, BackspaceGoesBackAndWithShiftForward) {
  startWith(linkedPdf(4));
  ASSERT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
  for (const wchar_t* page : {L"Page 2 of 4", L"Page 3 of 4"}) EXPECT_TRUE(follows(0, page));
  // A link to the shown page and a page turn do not enter the history.
  clickField(pageArea(), 1);
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"Page 4 of 4"));
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 4"));
  press(VK_BACK, kCtrl);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 4"));
  press(VK_BACK);
  press(VK_BACK, kShift);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 4"));
  press(VK_BACK, kShift | kCtrl);
  EXPECT_TRUE(pageTextBecomes(L"Page 4 of 4"));
  press(VK_BACK);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 4"));
  // A new jump clears the forward history.
  EXPECT_TRUE(follows(0, L"Page 3 of 4"));
  press(VK_BACK, kShift);
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 4"));
}

TEST_F(Links, BackComesToThePlaceAndZoomThatWereLeft) {
  constexpr LONG kMoved = 60;  // pixels moved by an arrow key
  startWith(linkedPdf(3));
  press('A');
  press(VK_ADD);
  ASSERT_TRUE(zoomTextBecomes(L"Zoom: 118%"));
  press(VK_DOWN);
  press(VK_RIGHT);
  const RECT area = pageArea();
  const RECT home = placedPage(area, kPage, 1);
  RECT left{};
  ASSERT_TRUE(eventually([&] {
    left = pageOnScreen(client(), area);
    const bool whole = left.right - left.left == 353 && left.bottom - left.top == 471;
    return whole && left.left < home.left - kMoved && left.top < home.top - kMoved;
  }));
  click(onScreen((left.left + left.right) / 2, left.top + 20));
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  press('W');
  ASSERT_TRUE(zoomTextBecomes(percent(fitWidthZoom(area, kPage))));
  const RECT wide = placedPage(area, kPage, fitWidthZoom(area, kPage));
  press(VK_BACK);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 118%"));
  EXPECT_TRUE(pageBecomes(area, left));
  EXPECT_TRUE(becomesChecked(208));
  press(VK_BACK, kShift);
  EXPECT_TRUE(pageBecomes(area, clipped(wide, area)));
  EXPECT_TRUE(becomesChecked(205));
}

TEST_F(Links, RefusedKindsDoNothing) {
  const SchemeHandler http(L"http");
  const SchemeHandler ftp(L"ftp");
  const SchemeHandler file(L"file");
  const std::wstring other = makeFile(L"other.pdf", coloredPdf(2));
  startWith(pageWithLinks({
      "/A << /S /Launch /F (C:\\\\windows\\\\notepad.exe) >>",
      "/A << /S /GoToR /F (other.pdf) /D [1 /Fit] >>",
      webAction("ftp://quillmere.test/"),
      webAction("file:///C:/scenario/other.pdf"),
      "/A << /S /JavaScript /JS (app.alert\\(1\\)) >>",
      "/A << /S /Named /N /NextPage >>",
      "",
      webAction("http://quillmere.test/last"),
  }));
  ASSERT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
  for (int index = 0; index < 8; ++index) clickField(pageArea(), index);
  // The others would have been opened before the last one.
  EXPECT_TRUE(eventually([] { return !openedAddresses().empty(); }));
  EXPECT_EQ(openedAddresses(), "http://quillmere.test/last\n");
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  EXPECT_EQ(boxNow(program).window, nullptr);
  EXPECT_TRUE(windowsOfClass(L"Notepad").empty());
  press(VK_NEXT);
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
}

TEST_F(Links, ThreeSchemesOpenWithTheSystemWhateverTheirCase) {
  const SchemeHandler http(L"http");
  const SchemeHandler https(L"https");
  const SchemeHandler mailto(L"mailto");
  startWith(pageWithLinks({
      webAction("http://quillmere.test/one"),
      webAction("HTTPS://quillmere.test/two"),
      webAction("mailto:reader@quillmere.test"),
  }));
  ASSERT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
  std::string wanted;
  const char* const addresses[] = {"http://quillmere.test/one\n", "HTTPS://quillmere.test/two\n",
                                   "mailto:reader@quillmere.test\n"};
  for (int index = 0; index < 3; ++index) {
    clickField(pageArea(), index);
    wanted += addresses[index];
    EXPECT_EQ(settled(openedAddresses, wanted), wanted);
  }
  EXPECT_EQ(boxNow(program).window, nullptr);
}

// Quotes could end the address inside the command of whoever opens it.
TEST_F(Links, AnAddressIsEncodedAndOneTooLongForTheSystemIsRefused) {
  const SchemeHandler http(L"http");
  const std::string start = "http://quillmere.test/";
  startWith(pageWithLinks({
      webAction(start + std::string(3000, 'x')),
      webAction(start + "\"a\" --b"),
  }));
  ASSERT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
  clickField(pageArea(), 0);
  clickField(pageArea(), 1);
  const std::string wanted = start + "%22a%22%20--b\n";
  EXPECT_EQ(settled(openedAddresses, wanted), wanted);
  EXPECT_EQ(boxNow(program).window, nullptr);
}

}  // namespace
}  // namespace quillmere::e2e
