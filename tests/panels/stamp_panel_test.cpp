#include "panels/stamp_panel.h"

#include <gmock/gmock.h>

#include "annot/placement_box.h"
#include "annot/placement_test.h"
#include "annot/placement_view.h"
#include "annot/stamp_library.h"
#include "annot/text_dialog.h"
#include "app/commands.h"
#include "app/mouse.h"
#include "dialogs/dialog_script.h"
#include "documents/modes.h"
#include "panels/panel_toggles.h"
#include "panels/stamp_splitter.h"
#include "session/changes.h"
#include "session/density.h"
#include "store/data_folder.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;

// The window has 1000 by 800 pixels with a status bar of 22; the panel is the rightmost 216.
class StampPanelTest : public PlacementTest {
 protected:
  void SetUp() override {
    resetDialogScript();
    makeDataFolders();
    openPlain();
    session.stampPanelWidth = 216;
  }

  static StampEntry entry(const std::u16string& name, int width, int height, bool system = false) {
    StampEntry made;
    made.name = name;
    made.path = session.stampsFolder + name + u".png";
    made.width = width;
    made.height = height;
    made.isSystem = system;
    platform::putFile(made.path, plainPng(4, 4, 0xFF336699));
    return made;
  }
  // The date stamp and three others, each with a thumbnail of 160 by 80.
  static void fill() {
    session.stampLibrary = {entry(u"Date", 800, 400, true), entry(u"a", 800, 400),
                            entry(u"b", 800, 400), entry(u"c", 800, 400)};
  }
  static std::u16string order() {
    std::u16string names;
    for (const StampEntry& stamp : session.stampLibrary) names += stamp.name + u" ";
    return names;
  }
  // Opens the panel on a library of the date stamp and `count` others named "1" and so on, in a
  // program that is busy. The file of one of them can be cut off.
  static void openWithStamps(int count, int damaged = 0) {
    std::string list;
    for (int n = 1; n <= count; ++n) {
      const std::string name = std::to_string(n) + ".png";
      const std::string whole = plainPng(80, 40, 0xFF336699);
      platform::putFile(session.stampsFolder + std::u16string(name.begin(), name.end()),
                        whole.substr(0, n == damaged ? whole.size() - 40 : whole.size()));
      list += name + "\r\n";
    }
    platform::putFile(session.stampsFolder + u"stamps.lst", list);
    standIn().window.paintsLater = true;
    session.stampPanelVisible = false;
    toggleStampPanel();
  }
  static int topOf(std::size_t index) {
    std::vector<PixelRect> grid;
    LayoutStampGrid(session.stampPanelWidth, grid);
    return grid.at(index).top;
  }
  // The middle of a stamp's row.
  static int rowOf(int index) { return 98 + 88 * index + 40; }
  static void dragRow(int from, int toY) {
    pressStampPanel(100, rowOf(from));
    moveOverStampPanel(100, (rowOf(from) + toY) / 2);
    releaseStampPanel(100, toY);
  }
};

TEST_F(StampPanelTest, ThumbnailsStandInOneColumn) {
  session.stampLibrary = {entry(u"a", 800, 400), entry(u"b", 100, 500), entry(u"c", 2000, 200)};
  std::vector<PixelRect> grid;
  EXPECT_EQ(LayoutStampGrid(216, grid), 98 + 88 + 88 + 28);
  EXPECT_THAT(grid, ElementsAre(PixelRect{28, 98, 188, 178}, PixelRect{100, 186, 116, 266},
                                PixelRect{8, 274, 208, 294}));
}

TEST_F(StampPanelTest, ButtonsAndRowsAreHitAcrossTheWholeWidth) {
  fill();
  EXPECT_EQ(StampPanelHit(0, 3), kNoStampItem);
  EXPECT_EQ(StampPanelHit(0, 4), kMarkUpItem);
  EXPECT_EQ(StampPanelHit(215, 29), kMarkUpItem);
  EXPECT_EQ(StampPanelHit(5, 30), kNoStampItem);
  EXPECT_EQ(StampPanelHit(5, 34), kAddTextItem);
  EXPECT_EQ(StampPanelHit(5, 59), kAddTextItem);
  EXPECT_EQ(StampPanelHit(5, 64), kAddStampItem);
  EXPECT_EQ(StampPanelHit(5, 89), kAddStampItem);
  EXPECT_EQ(StampPanelHit(5, 90), kNoStampItem);
  EXPECT_EQ(StampPanelHit(1, 98), 0);
  EXPECT_EQ(StampPanelHit(214, 177), 0);
  EXPECT_EQ(StampPanelHit(5, 178), kNoStampItem) << "the gap";
  EXPECT_EQ(StampPanelHit(5, 186), 1);
  EXPECT_EQ(StampPanelHit(5, 700), kNoStampItem);
  EXPECT_EQ(StampPanelHit(-1, 100), kNoStampItem);
  EXPECT_EQ(StampPanelHit(216, 100), kNoStampItem);
}

TEST_F(StampPanelTest, TheWheelScrollsARowForEachNotch) {
  session.stampLibrary.assign(20, entry(u"a", 800, 400));
  turnStampPanelWheel(-120);
  EXPECT_EQ(session.stampScroll, 88);
  EXPECT_EQ(StampPanelHit(5, 98), 1);
  EXPECT_EQ(StampPanelHit(5, 40), kAddTextItem) << "buttons stay";
  turnStampPanelWheel(240);
  EXPECT_EQ(session.stampScroll, 0);
  turnStampPanelWheel(-120 * 100);
  EXPECT_EQ(session.stampScroll, 98 + 20 * 88 - 778);
  session.stampLibrary.resize(1);
  turnStampPanelWheel(-120);
  EXPECT_EQ(session.stampScroll, 0);
}

TEST_F(StampPanelTest, EverythingGrowsWithTheScreensDensity) {
  fill();
  session.dpi = 144;
  session.stampPanelWidth = 324;
  std::vector<PixelRect> grid;
  EXPECT_EQ(LayoutStampGrid(324, grid), 147 + 4 * 132);
  EXPECT_EQ(grid[1], (PixelRect{42, 279, 282, 399}));
  EXPECT_EQ(StampPanelHit(5, 5), kNoStampItem);
  EXPECT_EQ(StampPanelHit(5, 6), kMarkUpItem);
  EXPECT_EQ(StampPanelHit(5, 44), kMarkUpItem);
  EXPECT_EQ(StampPanelHit(5, 51), kAddTextItem);
  EXPECT_EQ(StampPanelHit(5, 96), kAddStampItem);
  EXPECT_EQ(StampPanelHit(5, 146), kNoStampItem);
  EXPECT_EQ(StampPanelHit(5, 147), 0);
  pressStampPanel(100, 300);
  moveOverStampPanel(100, 306);
  EXPECT_FALSE(session.stampDrag.reorderActive);
  moveOverStampPanel(100, 307);
  EXPECT_TRUE(session.stampDrag.reorderActive);
  cancelStampDrag();
  session.stampLibrary.assign(20, entry(u"a", 800, 400));
  turnStampPanelWheel(-120);
  EXPECT_EQ(session.stampScroll, 132);
}

TEST_F(StampPanelTest, StampsThatLeaveTheLibraryTakeTheScrollWithThem) {
  session.stampLibrary.assign(20, entry(u"a", 800, 400));
  turnStampPanelWheel(-120 * 100);
  session.stampLibrary.resize(2);
  EXPECT_EQ(StampPanelHit(5, 98), 0);
  EXPECT_EQ(planStampPanel().thumbnails.size(), 2u);
  EXPECT_EQ(planStampPanel().thumbnails[0].rect.top, 98);
}

TEST_F(StampPanelTest, TheWheelOverThePanelLeavesThePageAlone) {
  session.stampLibrary.assign(20, entry(u"a", 800, 400));
  const float before = pane(0).panY;
  turnWheel(900, 300, -120, false, false);
  EXPECT_EQ(session.stampScroll, 88);
  EXPECT_EQ(pane(0).panY, before);
}

TEST_F(StampPanelTest, ButtonsOpenAndCloseTheirDialogs) {
  pressStampPanel(10, 10);
  EXPECT_TRUE(markupDialogOpen());
  EXPECT_TRUE(planStampPanel().buttons[0].pressed);
  pressStampPanel(10, 10);
  EXPECT_FALSE(markupDialogOpen());
  pressStampPanel(10, 40);
  EXPECT_TRUE(textDialogOpen());
  EXPECT_TRUE(session.textTool.armed);
  pressStampPanel(10, 40);
  EXPECT_FALSE(textDialogOpen());
  EXPECT_FALSE(session.textTool.armed);
  standIn().openDialogAnswers = {{}};
  pressStampPanel(10, 70);
  EXPECT_EQ(standIn().openDialogs.size(), 1u);
}

TEST_F(StampPanelTest, AClickSelectsAStamp) {
  fill();
  pressStampPanel(100, rowOf(1));
  releaseStampPanel(100, rowOf(1));
  EXPECT_EQ(session.selectedStamp, 1);
  EXPECT_TRUE(planStampPanel().thumbnails[1].selected);
  EXPECT_TRUE(session.placements.empty());
  EXPECT_FALSE(session.stampDrag.dragActive);
}

TEST_F(StampPanelTest, TheHoveredItemIsMarked) {
  fill();
  moveOverStampPanel(10, 40);
  EXPECT_TRUE(planStampPanel().buttons[1].hovered);
  moveOverStampPanel(10, rowOf(2));
  EXPECT_TRUE(planStampPanel().thumbnails[2].hovered);
  leaveStampPanel();
  EXPECT_FALSE(planStampPanel().thumbnails[2].hovered);
}

TEST_F(StampPanelTest, ADragOverThePageShowsAGhostAndPlacesTheStamp) {
  fill();
  pressStampPanel(100, rowOf(1));
  moveOverStampPanel(-300, rowOf(1));
  EXPECT_TRUE(session.stampDrag.stampOverPage);
  EXPECT_TRUE(stampGhost(0));
  releaseStampPanel(-300, rowOf(1));
  ASSERT_EQ(session.placements[0].size(), 1u);
  const PagePoint centre = placementCentre(placement(0, 0));
  const ClientPoint place = placeOf(centre.x, centre.y);
  EXPECT_EQ(place.x, 1000 - 216 - 300);
  EXPECT_EQ(place.y, rowOf(1));
  EXPECT_EQ(placement(0, 0).stampIndex, 1);
  EXPECT_EQ(placement(0, 0).width, 160);
  EXPECT_FALSE(stampGhost(0));
}

TEST_F(StampPanelTest, TheDateStampCanBePlacedButNotMoved) {
  fill();
  dragRow(0, rowOf(3));
  EXPECT_EQ(order(), u"Date a b c ");
  pressStampPanel(100, rowOf(0));
  releaseStampPanel(-300, rowOf(0));
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(StampPanelTest, ADragInsideThePanelReorders) {
  fill();
  dragRow(1, rowOf(3) + 30);
  EXPECT_EQ(order(), u"Date b c a ");
  EXPECT_EQ(session.selectedStamp, 3);
  EXPECT_EQ(*platform::fileBytes(session.stampsFolder + u"stamps.lst"),
            "\xEF\xBB\xBF"
            "b.png\r\nc.png\r\na.png\r\n");
  dragRow(3, rowOf(1) - 30);
  EXPECT_EQ(order(), u"Date a b c ");
  EXPECT_EQ(session.selectedStamp, 1);
}

TEST_F(StampPanelTest, NothingGoesAboveTheDateStamp) {
  fill();
  dragRow(3, 99);
  EXPECT_EQ(order(), u"Date c a b ");
}

TEST_F(StampPanelTest, ADropBesideItsOwnPlaceChangesNothing) {
  fill();
  dragRow(2, rowOf(2) + 20);
  dragRow(2, rowOf(2) - 20);
  EXPECT_EQ(order(), u"Date a b c ");
  EXPECT_FALSE(platform::fileExists(session.stampsFolder + u"stamps.lst"));
}

TEST_F(StampPanelTest, AShortMovementIsNoReorder) {
  fill();
  pressStampPanel(100, rowOf(1));
  moveOverStampPanel(100, rowOf(1) + 4);
  EXPECT_FALSE(session.stampDrag.reorderActive);
  EXPECT_TRUE(planStampPanel().insertionMark.empty());
  moveOverStampPanel(100, rowOf(1) + 5);
  EXPECT_TRUE(session.stampDrag.reorderActive);
  EXPECT_FALSE(planStampPanel().insertionMark.empty());
}

TEST_F(StampPanelTest, AReorderDoesNotFollowPlacements) {
  fill();
  Placement pending;
  pending.stampIndex = 1;
  add(0, pending);
  dragRow(1, rowOf(3) + 30);
  EXPECT_EQ(placement(0, 0).stampIndex, 1);
}

TEST_F(StampPanelTest, ALostMouseEndsTheDrag) {
  fill();
  pressStampPanel(100, rowOf(1));
  moveOverStampPanel(-300, rowOf(1));
  cancelStampDrag();
  EXPECT_FALSE(stampGhost(0));
  releaseStampPanel(-300, rowOf(1));
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(StampPanelTest, DeleteRemovesTheSelectedStamp) {
  fill();
  EXPECT_FALSE(deleteSelectedStamp());
  session.selectedStamp = 2;
  EXPECT_TRUE(deleteSelectedStamp());
  EXPECT_EQ(order(), u"Date a c ");
  EXPECT_EQ(session.selectedStamp, -1);
}

TEST_F(StampPanelTest, DeleteDuringADragEndsTheDrag) {
  fill();
  pressStampPanel(100, rowOf(3));
  moveOverStampPanel(100, rowOf(1));
  ASSERT_TRUE(session.stampDrag.reorderActive);
  EXPECT_TRUE(deleteSelectedStamp());
  EXPECT_FALSE(session.stampDrag.dragActive);
  releaseStampPanel(100, rowOf(1));
  EXPECT_EQ(order(), u"Date a b ");
}

TEST_F(StampPanelTest, AfterADropKeysGoToThePage) {
  fill();
  const int before = standIn().window.focusRequests;
  pressStampPanel(100, rowOf(1));
  releaseStampPanel(100, rowOf(1));
  EXPECT_EQ(standIn().window.focusRequests, before);
  pressStampPanel(100, rowOf(1));
  releaseStampPanel(-300, rowOf(1));
  EXPECT_EQ(standIn().window.focusRequests, before + 1);
}

TEST_F(StampPanelTest, WithoutAPageThereIsNoGhost) {
  fill();
  closePanePage(0);
  pressStampPanel(100, rowOf(1));
  moveOverStampPanel(-300, rowOf(1));
  EXPECT_TRUE(session.stampDrag.stampOverPage);
  EXPECT_FALSE(stampGhost(0));
  releaseStampPanel(-300, rowOf(1));
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(StampPanelTest, NothingThatLeftTheLibraryStaysSelected) {
  fill();
  session.selectedStamp = 3;
  session.hoveredStampItem = 2;
  DeleteAllStamps();
  EXPECT_EQ(session.selectedStamp, -1);
  EXPECT_EQ(session.hoveredStampItem, kNoStampItem);
  session.hoveredStampItem = kAddStampItem;
  stampLibraryChanged();
  EXPECT_EQ(session.hoveredStampItem, kAddStampItem);
}

TEST_F(StampPanelTest, AnotherDensityMakesThumbnailsAnew) {
  session.stampPanelVisible = false;
  platform::putFile(session.stampsFolder + u"a.png", plainPng(800, 400, 0xFF336699));
  toggleStampPanel();
  planStampPanel();
  changeDensity(144);
  planStampPanel();
  const StampPanelPlan plan = planStampPanel();
  ASSERT_EQ(plan.thumbnails.size(), 2u);
  EXPECT_EQ(plan.thumbnails[1].picture->height, 120);
}

TEST_F(StampPanelTest, ThumbnailsAreMadeOnce) {
  session.stampPanelVisible = false;
  platform::putFile(session.stampsFolder + u"a.png", plainPng(800, 400, 0xFF336699));
  standIn().date = 20260309;
  toggleStampPanel();
  ASSERT_EQ(session.stampLibrary.size(), 2u);
  planStampPanel();
  const StampPanelPlan plan = planStampPanel();
  ASSERT_EQ(plan.thumbnails.size(), 2u);
  ASSERT_TRUE(plan.thumbnails[1].picture);
  EXPECT_EQ(plan.thumbnails[1].picture->height, 80);
  EXPECT_EQ(plan.thumbnails[1].picture->width, 160);
  const int decoded = standIn().picturesDecoded;
  planStampPanel();
  EXPECT_EQ(standIn().picturesDecoded, decoded);
}

TEST_F(StampPanelTest, OpeningAndPaintingDecodeNothingUntilTheProgramIsIdle) {
  openWithStamps(20);
  ASSERT_EQ(session.stampLibrary.size(), 21u);
  const StampPanelPlan plan = planStampPanel();
  EXPECT_FALSE(plan.thumbnails[1].picture);
  EXPECT_EQ(standIn().picturesDecoded, 0);
  standIn().shown.clear();
  standIn().window.idleSlice();
  EXPECT_EQ(standIn().picturesDecoded, 1) << "the user may do something in between";
  EXPECT_THAT(standIn().shown, ElementsAre("stamp panel"));
  standIn().window.paintNow();
  EXPECT_EQ(standIn().picturesDecoded, 21);
  EXPECT_TRUE(planStampPanel().thumbnails[1].picture);
  EXPECT_TRUE(standIn().window.whenIdle.empty());
}

TEST_F(StampPanelTest, ThumbnailsThatAreSeenComeFirst) {
  openWithStamps(20);
  turnStampPanelWheel(-120 * 100);
  const StampPanelPlan plan = planStampPanel();
  for (std::size_t n = 0; n < plan.thumbnails.size(); ++n) standIn().window.idleSlice();
  const auto& library = session.stampLibrary;
  EXPECT_FALSE(library.front().thumbnail);
  EXPECT_TRUE(library.back().thumbnail);
  for (const StampPanelThumbnail& thumbnail : planStampPanel().thumbnails) {
    EXPECT_TRUE(thumbnail.picture);
  }
}

TEST_F(StampPanelTest, AHiddenPanelDecodesNothing) {
  openWithStamps(5);
  planStampPanel();
  toggleStampPanel();
  standIn().window.paintNow();
  EXPECT_EQ(standIn().picturesDecoded, 0);
}

TEST_F(StampPanelTest, WhatCannotBeDecodedLeavesTheLibraryWhileTheProgramIsIdle) {
  openWithStamps(3, 1);
  session.selectedStamp = 3;
  planStampPanel();
  standIn().window.paintNow();
  EXPECT_EQ(order(), u"Date 2 3 ");
  EXPECT_EQ(session.selectedStamp, 2) << "the same stamp";
}

TEST_F(StampPanelTest, NothingThatCannotBeDecodedStaysSelected) {
  openWithStamps(3, 3);
  session.selectedStamp = 3;
  planStampPanel();
  standIn().window.paintNow();
  EXPECT_EQ(order(), u"Date 1 2 ");
  EXPECT_EQ(session.selectedStamp, -1);
}

TEST_F(StampPanelTest, ADragGoesOnWhenAnotherStampLeaves) {
  openWithStamps(3, 1);
  pressStampPanel(100, topOf(3) + 1);
  planStampPanel();
  standIn().window.paintNow();
  releaseStampPanel(-300, 300);
  ASSERT_EQ(session.placements[0].size(), 1u);
  EXPECT_EQ(placement(0, 0).stampIndex, 2);
}

TEST_F(StampPanelTest, ADragEndsWhenItsStampLeaves) {
  openWithStamps(3, 3);
  pressStampPanel(100, topOf(3) + 1);
  planStampPanel();
  standIn().window.paintNow();
  releaseStampPanel(-300, 300);
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(StampPanelTest, APanelShownFromTheStartIsOpenedAsByTheCommand) {
  openWithStamps(3);
  const std::u16string byCommand = order();
  session.stampLibrary.clear();
  platform::deleteFile(session.stampsFolder + u"__date__.png");
  session.selectedStamp = 2;
  openStampPanelAtStart();
  EXPECT_EQ(order(), byCommand);
  EXPECT_EQ(session.selectedStamp, -1);
  EXPECT_TRUE(platform::fileExists(session.stampsFolder + u"__date__.png")) << "drawn for today";
  EXPECT_EQ(standIn().picturesDecoded, 0);
}

TEST_F(StampPanelTest, APanelThatIsNotShownFromTheStartIsNotOpened) {
  platform::putFile(session.stampsFolder + u"a.png", plainPng(4, 4, 0xFF336699));
  session.stampPanelVisible = false;
  openStampPanelAtStart();
  EXPECT_TRUE(session.stampLibrary.empty());
  session.viewerRole = true;
  session.stampPanelVisible = true;
  openStampPanelAtStart();
  EXPECT_TRUE(session.stampLibrary.empty());
  EXPECT_FALSE(session.stampPanelVisible);
}

TEST_F(StampPanelTest, TheButtonsFollowTheirDialogsWhoeverOpensAndClosesThem) {
  const auto panelIsRepainted = [] {
    const bool told = testing::Value(standIn().shown, testing::Contains("stamp panel"));
    standIn().shown.clear();
    return told;
  };
  standIn().shown.clear();
  runCommand(kCmdMarkUp);
  EXPECT_TRUE(panelIsRepainted());
  EXPECT_TRUE(planStampPanel().buttons[0].pressed);
  closeMarkupDialog();
  EXPECT_TRUE(panelIsRepainted());
  EXPECT_FALSE(planStampPanel().buttons[0].pressed);
  toggleTextDialog();
  EXPECT_TRUE(panelIsRepainted());
  closeTextDialog();
  EXPECT_TRUE(panelIsRepainted());
}

TEST_F(StampPanelTest, HidingThePanelEndsTextAndSelection) {
  add(0, textOf(u"Hi", 1, 1));
  selectPlacement(0, 0);
  toggleTextDialog();
  toggleStampPanel();
  EXPECT_FALSE(textDialogOpen());
  EXPECT_EQ(selectedPlacement(), nullptr);
}

TEST_F(StampPanelTest, AnotherModeEndsTextAndSelection) {
  add(0, textOf(u"Hi", 1, 1));
  selectPlacement(0, 0);
  toggleTextDialog();
  setViewMode(ViewMode::Book);
  EXPECT_FALSE(textDialogOpen());
  EXPECT_EQ(selectedPlacement(), nullptr);
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(StampPanelTest, APointerOnThePageMarksNothingInThePanel) {
  moveOverStampPanel(60, 46);
  ASSERT_EQ(session.hoveredStampItem, kAddTextItem);
  hoverPointer(400, 300);
  EXPECT_EQ(session.hoveredStampItem, kNoStampItem);
}

}  // namespace
}  // namespace quillmere::test
