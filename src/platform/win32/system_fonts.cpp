#include "platform/win32/system_fonts.h"

#include "platform/win32/sized.h"

namespace quillmere::platform {

namespace {

NONCLIENTMETRICSW systemMetrics(int dpi) {
  auto metrics = sized<NONCLIENTMETRICSW>();
  if (!SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0,
                                  static_cast<UINT>(dpi))) {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  }
  return metrics;
}

}  // namespace

HFONT createMessageFont(int dpi) {
  const NONCLIENTMETRICSW metrics = systemMetrics(dpi);
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

HFONT createPlaceholderFont(int dpi) {
  LOGFONTW font = systemMetrics(dpi).lfMenuFont;
  font.lfHeight = font.lfHeight * 4 / 3;
  font.lfUnderline = TRUE;
  return CreateFontIndirectW(&font);
}

}  // namespace quillmere::platform
