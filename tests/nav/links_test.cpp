#include "nav/links.h"

#include <string>
#include <vector>

#include "app/mouse.h"
#include "documents/open_requests.h"
#include "nav/nav_test.h"
#include "view/geometry.h"

namespace quillmere::test {
namespace {

class LinksTest : public NavTest {
 protected:
  // Five pages; the first has a link over its middle.
  static bool openWithLink(const std::string& action, int rotate = 0) {
    std::vector<PdfPage> pages(5);
    pages[0].rotate = rotate;
    pages[0].annotations.push_back(linkAnnotation(206, 296, 406, 496, action));
    return open(buildPdf(pages));
  }

  struct Place {
    int x;
    int y;
  };
  // The page's centre in client pixels.
  static Place middle(int index = 0) {
    const PixelRect rect = paneRect(index);
    const PanePoint point = pageToPane(index, 306, 396);
    return {rect.left + static_cast<int>(point.x), rect.top + static_cast<int>(point.y)};
  }

  static bool follow() {
    const Place place = middle();
    return FollowLink(0, LinkAtPoint(0, place.x, place.y));
  }
};

TEST_F(LinksTest, ALinkIsFoundUnderThePointerAtEveryRotation) {
  for (const int rotate : {0, 90, 180, 270}) {
    ASSERT_TRUE(openWithLink(pageDestination(3), rotate));
    const Place place = middle();
    EXPECT_NE(LinkAtPoint(0, place.x, place.y), nullptr) << rotate;
    EXPECT_EQ(LinkAtPoint(0, place.x - 200, place.y), nullptr) << rotate;
  }
}

TEST_F(LinksTest, TheRightAndBottomEdgesDoNotCount) {
  PdfPage page;
  page.annotations.push_back(linkAnnotation(0, 0, 612, 792, pageDestination(1)));
  ASSERT_TRUE(open(buildPdf({page})));
  pane(0).panX = -10;
  pane(0).panY = -10;
  pane(0).zoom = 5;
  const PixelRect rect = paneRect(0);
  EXPECT_NE(LinkAtPoint(0, rect.right - 1, rect.bottom - 1), nullptr);
  EXPECT_EQ(LinkAtPoint(0, rect.right, rect.bottom - 1), nullptr);
  EXPECT_EQ(LinkAtPoint(0, rect.right - 1, rect.bottom), nullptr);
}

TEST_F(LinksTest, PanesWithoutAPageHaveNoLinks) {
  EXPECT_EQ(LinkAtPoint(0, 100, 100), nullptr);
  EXPECT_EQ(LinkAtPoint(-1, 100, 100), nullptr);
  EXPECT_EQ(LinkAtPoint(2, 100, 100), nullptr);
}

TEST_F(LinksTest, ADestinationTurnsToThePageAndCanBeUndone) {
  ASSERT_TRUE(openWithLink(pageDestination(4, 100)));
  const float panY = pane(0).panY;
  EXPECT_TRUE(follow());
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_EQ(pane(0).panY, panY);
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
}

TEST_F(LinksTest, AnActionThatGoesToAPageDoesTheSame) {
  ASSERT_TRUE(openWithLink("/A << /S /GoTo /D [{page 2} /Fit] >>"));
  EXPECT_TRUE(follow());
  EXPECT_EQ(pane(0).currentPage, 1);
}

TEST_F(LinksTest, ALinkToTheShownPageAddsNoHistory) {
  ASSERT_TRUE(openWithLink(pageDestination(1)));
  EXPECT_TRUE(follow());
  EXPECT_TRUE(pane(0).backHistory.empty());
}

TEST_F(LinksTest, ALinkToThePageBesideItInABookTurnsToIt) {
  ASSERT_TRUE(openWithLink(pageDestination(2)));
  setViewMode(ViewMode::Book);
  EXPECT_TRUE(follow());
  EXPECT_EQ(pane(0).currentPage, 1);
  EXPECT_EQ(pane(0).backHistory.size(), 1u);
}

TEST_F(LinksTest, WebAndMailAddressesAreOpened) {
  for (const std::string& address :
       {std::string("http://a.example/x"), std::string("HTTPS://b.example"),
        std::string("MailTo:someone@c.example")}) {
    ASSERT_TRUE(openWithLink(webAction(address)));
    platform::standIn().openedWithSystem.clear();
    EXPECT_TRUE(follow());
    ASSERT_EQ(platform::standIn().openedWithSystem.size(), 1u) << address;
    EXPECT_EQ(platform::standIn().openedWithSystem[0],
              std::u16string(address.begin(), address.end()));
  }
}

// The system handles messages of the program while it starts another one.
TEST_F(LinksTest, APathThatComesWhileTheSystemOpensAnAddressWaits) {
  ASSERT_TRUE(openWithLink(webAction("http://a.example/x")));
  const std::u16string shown = session.active.path;
  const std::u16string other = putPdf(u"other.pdf", simplePdf(2));
  platform::standIn().onOpenWithSystem = [&] {
    openHandedOver(other);
    EXPECT_EQ(session.active.path, shown);
  };
  EXPECT_TRUE(follow());
  EXPECT_EQ(session.active.path, shown);
  deliverPosted();
  EXPECT_EQ(session.active.path, other);
}

TEST_F(LinksTest, AnAddressKeepsEveryScript) {
  ASSERT_TRUE(openWithLink(webAction("http://a.example/\xC3\xA4\xE4\xB8\xAD")));
  EXPECT_TRUE(follow());
  ASSERT_EQ(platform::standIn().openedWithSystem.size(), 1u);
  EXPECT_EQ(platform::standIn().openedWithSystem[0], u"http://a.example/\u00E4\u4E2D");
}

TEST_F(LinksTest, QuotesBlanksAndControlCharactersOfAnAddressArePercentEncoded) {
  const struct {
    std::string address;
    std::u16string opened;
  } cases[] = {
      {"http://a.example/\"x\" --y", u"http://a.example/%22x%22%20--y"},
      {"http://a.example/it's", u"http://a.example/it%27s"},
      {"http://a.example/\x01\t\r\n\x1F\x7F", u"http://a.example/%01%09%0D%0A%1F%7F"},
      {"mailto:a@b.example?subject=A b", u"mailto:a@b.example?subject=A%20b"},
      {"http://a.example/%20%22?a=1&b=(2)+[3]#%", u"http://a.example/%20%22?a=1&b=(2)+[3]#%"},
      {"http://a.example/\xC2\x85\xC2\xA0\xE2\x80\xA8\xE3\x80\x80",
       u"http://a.example/%C2%85%C2%A0%E2%80%A8%E3%80%80"},
      {"http://a.example/\xF0\x9F\x98\x80 \xC3\xA4", u"http://a.example/\U0001F600%20\u00E4"},
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(openWithLink(webAction(c.address)));
    platform::standIn().openedWithSystem.clear();
    EXPECT_TRUE(follow());
    EXPECT_EQ(platform::standIn().openedWithSystem, std::vector{c.opened}) << c.address;
  }
}

TEST_F(LinksTest, AnAddressTooLongForTheSystemIsRefused) {
  const std::string start = "http://a.example/";
  const struct {
    std::string address;
    bool opened;
  } cases[] = {
      {start + std::string(2048 - start.size(), 'x'), true},
      {start + std::string(2049 - start.size(), 'x'), false},
      {start + std::string(2046 - start.size(), 'x') + " ", false},
      {start + std::string(100000, 'x'), false},
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(openWithLink(webAction(c.address)));
    platform::standIn().openedWithSystem.clear();
    EXPECT_EQ(follow(), c.opened) << c.address.size();
    EXPECT_EQ(platform::standIn().openedWithSystem.size(), c.opened ? 1u : 0u);
  }
}

TEST_F(LinksTest, EverythingElseIsRefusedWithoutAWord) {
  for (const std::string& action :
       {webAction("file:///C:/Windows/notepad.exe"), webAction("ftp://a.example"),
        webAction("javascript:alert(1)"), webAction(""), webAction("http:/a.example"),
        std::string("/A << /S /Launch /F (notepad.exe) >>"),
        std::string("/A << /S /GoToR /F (other.pdf) /D [0 /Fit] >>"),
        std::string("/Dest (missing) /A << /S /GoToR /F (other.pdf) /D [2 /Fit] >>"),
        std::string("/A << /S /GoToE /F (other.pdf) /D [2 /Fit] >>"),
        std::string("/A << /S /GoTo >>"), std::string(), std::string("/A 5"),
        std::string("/Dest [99 /Fit]"), std::string("/Dest (missing)")}) {
    ASSERT_TRUE(openWithLink(action));
    EXPECT_FALSE(follow()) << action;
    EXPECT_EQ(pane(0).currentPage, 0);
    EXPECT_TRUE(platform::standIn().openedWithSystem.empty()) << action;
    EXPECT_TRUE(platform::standIn().processes.empty()) << action;
    EXPECT_TRUE(platform::standIn().boxes.empty()) << action;
  }
}

TEST_F(LinksTest, ADestinationOfTheLinksOwnComesBeforeItsAction) {
  ASSERT_TRUE(openWithLink(pageDestination(4) + " /A << /S /GoToR /F (other.pdf) /D [1 /Fit] >>"));
  EXPECT_TRUE(follow());
  EXPECT_EQ(pane(0).currentPage, 3);
}

TEST_F(LinksTest, APressFollowsALinkInEveryMode) {
  for (const ViewMode mode :
       {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    resetSession();
    ASSERT_TRUE(openWithLink(pageDestination(4)));
    session.panScrollEnabled = true;
    setViewMode(mode);
    const Place place = middle();
    pressLeft(place.x, place.y);
    EXPECT_EQ(pane(0).currentPage, 3) << static_cast<int>(mode);
    EXPECT_FALSE(session.selection.dragging);
    EXPECT_TRUE(pane(0).page);
  }
}

TEST_F(LinksTest, APressWithShiftPansInstead) {
  ASSERT_TRUE(openWithLink(pageDestination(4)));
  platform::standIn().shiftDown = true;
  const Place place = middle();
  pressLeft(place.x, place.y);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_TRUE(pane(0).shiftPan);
}

TEST_F(LinksTest, ARefusedLinkStartsASelection) {
  ASSERT_TRUE(openWithLink(webAction("ftp://a.example")));
  const Place place = middle();
  pressLeft(place.x, place.y);
  EXPECT_TRUE(session.selection.dragging);
}

TEST_F(LinksTest, ThePointerShowsALink) {
  ASSERT_TRUE(openWithLink(pageDestination(4)));
  const Place place = middle();
  EXPECT_EQ(cursorAt(place.x, place.y), CursorKind::Hand);
  EXPECT_EQ(cursorAt(place.x - 200, place.y), CursorKind::Arrow);
}

}  // namespace
}  // namespace quillmere::test
