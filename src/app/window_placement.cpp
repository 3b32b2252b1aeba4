#include "app/window_placement.h"

#include <algorithm>

#include "base/product.h"
#include "session/density.h"

namespace quillmere {

namespace {

constexpr std::int32_t kMainWidth = 1100;
constexpr std::int32_t kMainHeight = 800;
constexpr std::int32_t kViewerWidth = 740;
constexpr std::int32_t kViewerHeight = 720;
constexpr std::int32_t kViewerMinimumWidth = 600;
constexpr std::int32_t kViewerMinimumHeight = 480;
constexpr std::int32_t kWorkAreaAllowance = 40;
constexpr double kViewerWidthShare = 0.65;
constexpr double kViewerHeightShare = 0.90;

std::int32_t share(std::int32_t length, double part) {
  return static_cast<std::int32_t>(length * part + 0.5);
}

// A length of the work area that a window may take.
std::int32_t availableLength(std::int32_t workLength) {
  return workLength - scaled(kWorkAreaAllowance);
}

// On a dense screen the length that is usual at 96 DPI counts as enough: scaled up, a window can be
// larger than the work area of a small laptop.
std::int32_t mainLength(std::int32_t length, std::int32_t workLength) {
  return std::max(length, std::min(scaled(length), availableLength(workLength)));
}

// The minimum is applied last, so it may exceed a small work area.
std::int32_t fitLength(std::int32_t wanted, std::int32_t workLength, std::int32_t minimum) {
  const std::int32_t available = availableLength(workLength);
  if (available > 0 && available < wanted) wanted = available;
  return std::max(wanted, scaled(minimum));
}

}  // namespace

InitialPlacement mainWindowInitialPlacement(const platform::ScreenRect& work) {
  InitialPlacement placement;
  placement.width = mainLength(kMainWidth, work.right - work.left);
  placement.height = mainLength(kMainHeight, work.bottom - work.top);
  return placement;
}

InitialPlacement viewerInitialPlacement(const ViewerSurroundings& around) {
  const platform::ScreenRect& work = around.workArea;
  const std::int32_t workWidth = work.right - work.left;
  const std::int32_t workHeight = work.bottom - work.top;
  InitialPlacement placement;
  if (!around.mainWindow) {
    placement.width = fitLength(scaled(kViewerWidth), workWidth, kViewerMinimumWidth);
    placement.height = fitLength(scaled(kViewerHeight), workHeight, kViewerMinimumHeight);
    return placement;
  }

  const platform::ScreenRect& main = *around.mainWindow;
  placement.positioned = true;
  placement.width =
      fitLength(share(main.right - main.left, kViewerWidthShare), workWidth, kViewerMinimumWidth);
  placement.height = fitLength(share(main.bottom - main.top, kViewerHeightShare), workHeight,
                               kViewerMinimumHeight);

  const std::int32_t offset = around.captionHeight * (around.viewerCount + 1);
  const std::int32_t besideX = main.right + 2 * offset;
  placement.x = besideX > work.right ? work.right - placement.width : besideX - placement.width;
  placement.x = std::max(placement.x, work.left);
  const std::int32_t aboveY = main.top - offset;
  placement.y = aboveY + placement.height > work.bottom ? work.bottom - placement.height : aboveY;
  placement.y = std::max(placement.y, work.top);
  return placement;
}

ViewerSurroundings viewerSurroundings() {
  ViewerSurroundings around;
  around.viewerCount = platform::countTopWindows(kViewerWindowClass);
  around.captionHeight = platform::captionHeight();
  const platform::WindowId mainWindow = platform::findTopWindow(kMainWindowClass);
  if (mainWindow != 0) around.mainWindow = platform::visibleWindowRect(mainWindow);
  around.workArea =
      around.mainWindow ? platform::workAreaOfWindow(mainWindow) : platform::primaryWorkArea();
  return around;
}

}  // namespace quillmere
