#include "annot/date_stamp.h"

#include <algorithm>
#include <cmath>

#include "base/text_format.h"
#include "platform/pictures.h"
#include "platform/process.h"
#include "session/session.h"

namespace quillmere {

namespace {

const platform::TextFace kFace{u"Segoe Script", 52, true};
constexpr std::uint32_t kBlack = 0;
constexpr int kMargin = 8;  // pixels

int sideOf(double extent) {
  return std::max(1, static_cast<int>(std::ceil(extent)) + 2 * kMargin);
}

}  // namespace

std::u16string dateStampText(std::uint32_t date) {
  std::u16string year = decimal(date / 10000);
  if (year.size() < 4) year.insert(0, 4 - year.size(), u'0');
  return formatText(u"%u/%u/%s", {decimal(date / 100 % 100), decimal(date % 100), year});
}

void RenderDateStamp() {
  if (session.stampsFolder.empty()) return;
  const std::u16string text = dateStampText(platform::localDate());
  const platform::TextExtent extent =
      platform::measureTextBox(kFace, platform::TextSetting::Padded, text);
  const platform::SharedPicture picture =
      platform::drawTextPicture(kFace, platform::TextSetting::Padded, text, kBlack,
                                {sideOf(extent.width), sideOf(extent.height), kMargin, kMargin});
  const std::u16string path = session.stampsFolder + kDateStampFile;
  // A stamp with the date of another day would be worse than none.
  if (!picture || !platform::savePng(*picture, path)) platform::deleteFile(path);
}

}  // namespace quillmere
