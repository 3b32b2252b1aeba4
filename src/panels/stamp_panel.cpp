#include "panels/stamp_panel.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "annot/markup_dialog.h"
#include "annot/place_stamp.h"
#include "annot/stamp_import.h"
#include "annot/stamp_library.h"
#include "annot/stamp_pictures.h"
#include "annot/text_dialog.h"
#include "panels/stamp_splitter.h"
#include "platform/main_window.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

// Pixels at 96 DPI.
constexpr int kButtonHeight = 26;
constexpr int kFirstThumbnail = 98;
constexpr int kThumbnailGap = 8;
constexpr int kScrollStep = 88;
constexpr int kReorderDistance = 4;
constexpr int kMarkThickness = 2;
constexpr int kWheelNotch = 120;

struct ButtonRow {
  std::int32_t item;
  int top;
  const char16_t* label;
};
constexpr ButtonRow kButtons[] = {{kMarkUpItem, 4, u"Mark Up..."},
                                  {kAddTextItem, 34, u"Add Text..."},
                                  {kAddStampItem, 64, u"Add Stamp..."}};

PixelRect buttonRect(const ButtonRow& button) {
  const int top = scaled(button.top);
  return {0, top, session.stampPanelWidth, top + scaled(kButtonHeight)};
}

PixelRect panelArea() {
  const PixelRect panel = stampPanelRect();
  return {0, 0, panel.width(), panel.height()};
}

// The library may have become shorter and the panel higher since the wheel turned.
int scrollPosition(int contentHeight) {
  const int most = std::max(0, contentHeight - panelArea().height());
  return std::clamp(session.stampScroll, 0, most);
}

std::vector<PixelRect> scrolledGrid() {
  std::vector<PixelRect> grid;
  const int scroll = scrollPosition(LayoutStampGrid(session.stampPanelWidth, grid));
  for (PixelRect& rect : grid) {
    rect.top -= scroll;
    rect.bottom -= scroll;
  }
  return grid;
}

void pressStamp(std::int32_t stamp, int y) {
  session.selectedStamp = stamp;
  session.stampDrag = {};
  session.stampDrag.stamp = stamp;
  session.stampDrag.pressY = y;
  session.stampDrag.dragActive = true;
  platform::invalidateStampPanel();
}

// Where a dragged stamp would go: before the first stamp whose middle is below the pointer, and
// never before the date stamp.
std::int32_t targetSlot(int y) {
  const std::vector<PixelRect> grid = scrolledGrid();
  const auto below = std::find_if(grid.begin(), grid.end(), [y](const PixelRect& rect) {
    return (rect.top + rect.bottom) / 2 > y;
  });
  const auto& library = session.stampLibrary;
  const auto firstUser = std::find_if(library.begin(), library.end(),
                                      [](const StampEntry& entry) { return !entry.isSystem; });
  return static_cast<std::int32_t>(std::max(below - grid.begin(), firstUser - library.begin()));
}

void reorder(std::int32_t source, std::int32_t target) {
  if (target == source || target == source + 1) return;
  const auto begin = session.stampLibrary.begin();
  if (target < source) {
    std::rotate(begin + target, begin + source, begin + source + 1);
    session.selectedStamp = target;
  } else {
    std::rotate(begin + source, begin + source + 1, begin + target);
    session.selectedStamp = target - 1;
  }
  SaveStampList();
}

// The stamp on the page is selected then, so keys must act on it: Delete in the panel would take it
// out of the library.
void placeDragged(const StampDrag& drag) {
  const PaneSlot& slot = session.panes[0];
  if (!slot.page || !slot.pageBitmap) return;
  const PixelRect pane = paneRect(0);
  const PagePoint point = paneToPage(0, drag.x - pane.left, drag.y - pane.top);
  PlaceStamp(drag.stamp, point.x, point.y);
  platform::focusMainWindow();
}

void followDrag(int x, int y) {
  StampDrag& drag = session.stampDrag;
  const PixelRect panel = stampPanelRect();
  drag.x = panel.left + x;
  drag.y = panel.top + y;
  const bool userStamp = isStampIndex(drag.stamp) &&
                         !session.stampLibrary[static_cast<std::size_t>(drag.stamp)].isSystem;
  const bool farEnough = std::abs(y - drag.pressY) > scaled(kReorderDistance);
  if (panelArea().contains(x, y) && userStamp && farEnough) drag.reorderActive = true;
  const bool before = drag.stampOverPage;
  drag.stampOverPage = !drag.reorderActive && paneUnder(drag.x, drag.y) == 0;
  if (before || drag.stampOverPage) pictureChanged();
  platform::invalidateStampPanel();
}

bool itemPressed(std::int32_t item) {
  return (item == kMarkUpItem && markupDialogOpen()) || (item == kAddTextItem && textDialogOpen());
}

PixelRect listArea() {
  const PixelRect area = panelArea();
  return {0, scaled(kFirstThumbnail) - scaled(kThumbnailGap) / 2, area.right, area.bottom};
}

bool seenIn(const PixelRect& list, const PixelRect& thumbnail) {
  return thumbnail.bottom >= list.top && thumbnail.top <= list.bottom;
}

// The entry to decode next, one that is seen before all others; -1 when all have a thumbnail.
std::int32_t nextWithoutThumbnail() {
  const std::vector<PixelRect> grid = scrolledGrid();
  const PixelRect list = listArea();
  std::int32_t next = kNoStampItem;
  for (std::size_t i = 0; i < grid.size(); ++i) {
    if (session.stampLibrary[i].thumbnail) continue;
    if (seenIn(list, grid[i])) return static_cast<std::int32_t>(i);
    if (next == kNoStampItem) next = static_cast<std::int32_t>(i);
  }
  return next;
}

void dropUndecodable(std::int32_t stamp) {
  if (session.stampDrag.stamp == stamp) cancelStampDrag();
  for (std::int32_t* known : {&session.selectedStamp, &session.stampDrag.stamp}) {
    if (*known == stamp) *known = -1;
    if (*known > stamp) --*known;
  }
  dropUndecodableStamp(stamp);
}

// One thumbnail at a time, since a large picture takes a while. True when there are more to make.
bool makeNextThumbnail() {
  const std::int32_t next = session.stampPanelVisible ? nextWithoutThumbnail() : kNoStampItem;
  if (next == kNoStampItem) return false;
  if (makeThumbnail(session.stampLibrary[static_cast<std::size_t>(next)])) {
    platform::invalidateStampPanel();
  } else {
    dropUndecodable(next);
  }
  return true;
}

PixelRect insertionMark(const std::vector<PixelRect>& grid) {
  const StampDrag& drag = session.stampDrag;
  if (!drag.reorderActive || grid.empty()) return {};
  const auto slot = static_cast<std::size_t>(targetSlot(drag.y - stampPanelRect().top));
  const int line = slot < grid.size() ? grid[slot].top : grid.back().bottom + scaled(kThumbnailGap);
  const int top = line - scaled(kThumbnailGap) / 2 - scaled(kMarkThickness) / 2;
  const int margin = scaled(kThumbnailMargin) / 2;
  return {margin, top, session.stampPanelWidth - margin, top + scaled(kMarkThickness)};
}

}  // namespace

int LayoutStampGrid(int panelWidth, std::vector<PixelRect>& rectangles) {
  rectangles.clear();
  const int margin = scaled(kThumbnailMargin);
  const int room = std::max(panelWidth - 2 * margin, 1);
  int top = scaled(kFirstThumbnail);
  for (const StampEntry& entry : session.stampLibrary) {
    const PictureSize size = thumbnailSize(entry, panelWidth);
    const int left = (room - size.width) / 2 + margin;
    rectangles.push_back({left, top, left + size.width, top + size.height});
    top += size.height + scaled(kThumbnailGap);
  }
  return top;
}

std::int32_t StampPanelHit(int x, int y) {
  if (!panelArea().contains(x, y)) return kNoStampItem;
  for (const ButtonRow& button : kButtons) {
    if (buttonRect(button).contains(x, y)) return button.item;
  }
  if (y < scaled(kFirstThumbnail)) return kNoStampItem;
  const std::vector<PixelRect> grid = scrolledGrid();
  const auto found = std::find_if(grid.begin(), grid.end(), [y](const PixelRect& rect) {
    return y >= rect.top && y < rect.bottom;
  });
  return found == grid.end() ? kNoStampItem : static_cast<std::int32_t>(found - grid.begin());
}

void openStampPanel() {
  refreshStampLibrary();
  session.selectedStamp = -1;
  session.hoveredStampItem = kNoStampItem;
  session.stampDrag = {};
}

void openStampPanelAtStart() {
  if (session.viewerRole) session.stampPanelVisible = false;
  if (session.stampPanelVisible) openStampPanel();
}

void pressStampPanel(int x, int y) {
  switch (const std::int32_t item = StampPanelHit(x, y)) {
    case kMarkUpItem:
      toggleMarkupDialog();
      break;
    case kAddTextItem:
      toggleTextDialog();
      break;
    case kAddStampItem:
      ImportStamps();
      break;
    case kNoStampItem:
      return;
    default:
      pressStamp(item, y);
  }
}

void moveOverStampPanel(int x, int y) {
  if (session.stampDrag.dragActive) return followDrag(x, y);
  const std::int32_t item = StampPanelHit(x, y);
  if (item == session.hoveredStampItem) return;
  session.hoveredStampItem = item;
  platform::invalidateStampPanel();
}

void releaseStampPanel(int x, int y) {
  if (!session.stampDrag.dragActive) return;
  followDrag(x, y);
  const StampDrag drag = std::exchange(session.stampDrag, {});
  if (drag.reorderActive) {
    reorder(drag.stamp, targetSlot(y));
  } else if (drag.stampOverPage) {
    placeDragged(drag);
  }
  pictureChanged();
  platform::invalidateStampPanel();
}

void cancelStampDrag() {
  if (!session.stampDrag.dragActive) return;
  session.stampDrag = {};
  pictureChanged();
  platform::invalidateStampPanel();
}

void leaveStampPanel() {
  if (session.hoveredStampItem == kNoStampItem) return;
  session.hoveredStampItem = kNoStampItem;
  platform::invalidateStampPanel();
}

void turnStampPanelWheel(int delta) {
  std::vector<PixelRect> grid;
  const int content = LayoutStampGrid(session.stampPanelWidth, grid);
  session.stampScroll = scrollPosition(content) - scaled(kScrollStep) * delta / kWheelNotch;
  session.stampScroll = scrollPosition(content);
  platform::invalidateStampPanel();
}

void dropMissingStamps() {
  if (!isStampIndex(session.selectedStamp)) session.selectedStamp = -1;
  if (session.hoveredStampItem >= 0 && !isStampIndex(session.hoveredStampItem)) {
    session.hoveredStampItem = kNoStampItem;
  }
}

bool deleteSelectedStamp() {
  if (!isStampIndex(session.selectedStamp)) return false;
  cancelStampDrag();  // the entries behind it get other numbers
  RemoveStamp(std::exchange(session.selectedStamp, -1));
  platform::invalidateStampPanel();
  return true;
}

StampPanelPlan planStampPanel() {
  StampPanelPlan plan;
  for (const ButtonRow& button : kButtons) {
    plan.buttons.push_back({button.label, buttonRect(button),
                            session.hoveredStampItem == button.item, itemPressed(button.item)});
  }
  plan.list = listArea();
  const std::vector<PixelRect> grid = scrolledGrid();
  for (std::size_t i = 0; i < grid.size(); ++i) {
    if (!seenIn(plan.list, grid[i])) continue;
    const auto index = static_cast<std::int32_t>(i);
    plan.thumbnails.push_back({session.stampLibrary[i].thumbnail, grid[i],
                               session.selectedStamp == index, session.hoveredStampItem == index});
  }
  plan.insertionMark = insertionMark(grid);
  if (nextWithoutThumbnail() != kNoStampItem) platform::doWhenIdle(makeNextThumbnail);
  return plan;
}

}  // namespace quillmere
