#include "annot/stamp_import.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "annot/picture_work.h"
#include "annot/stamp_library.h"
#include "annot/stamp_pictures.h"
#include "base/limits.h"
#include "base/text_format.h"
#include "platform/files.h"
#include "platform/pictures.h"
#include "session/changes.h"
#include "session/session.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr char16_t kUsualPatterns[] = u"*.png;*.jpg;*.jpeg;*.bmp;*.gif;*.tif;*.tiff";
constexpr char16_t kFullTitle[] = u"Stamp Library Full";
constexpr int kFirstNumberRefused = 999;  // of the names "base (1).png" and so on
constexpr double kMostRatio = 10.0;       // width by height
constexpr double kLeastRatio = 0.2;

std::u16string imagePatterns() {
  std::u16string patterns = platform::picturePatterns();
  return patterns.empty() ? kUsualPatterns : patterns;
}

void tellThatTheLibraryIsFull(std::size_t chosen, int fresh, int slots) {
  const std::u16string text =
      chosen == 1
          ? formatText(u"The stamp library is full (%d stamps). Remove a stamp before adding more.",
                       {decimal(kMostUserStamps)})
          : formatText(
                u"You selected %d new stamp(s), but only %d slot(s) remain in the library "
                u"(limit: %d).\nNo stamps were added.",
                {decimal(fresh), decimal(slots), decimal(kMostUserStamps)});
  showBox(text, kFullTitle, BoxButtons::Ok, BoxIcon::Information);
}

std::u16string baseNameOf(const std::u16string& path) {
  const std::u16string name = fileNameOf(path);
  return name.substr(0, name.rfind(u'.'));
}

// A name that no file has; nullopt when all are taken or too long. A line of the list that begins
// with a number sign would be a comment.
std::optional<std::u16string> freeTarget(std::u16string base) {
  if (base.starts_with(u'#')) base.insert(0, u"_");
  std::u16string target = session.stampsFolder + base + u".png";
  for (int n = 1; platform::fileExists(target); ++n) {
    if (n == kFirstNumberRefused) return std::nullopt;
    target = session.stampsFolder + base + formatText(u" (%d).png", {decimal(n)});
  }
  if (target.size() >= kPathBufferUnits) return std::nullopt;
  return target;
}

bool hasUsableShape(const platform::Picture& picture) {
  const double ratio = static_cast<double>(picture.width) / picture.height;
  return ratio <= kMostRatio && ratio >= kLeastRatio;
}

bool writeStamp(const platform::SharedPicture& source, const std::u16string& target) {
  const AppSettings& settings = session.settings;
  if (!settings.stampAlphaEnabled) return platform::savePng(*source, target);
  platform::Picture picture = *source;
  MakeWhiteTransparent(picture, settings.stampAlphaThreshold);
  return platform::savePng(picture, target);
}

// Reads the file back, so that what the library lists can be shown.
bool appendWritten(const std::u16string& target) {
  if (appendStamp(target, baseNameOf(target), false)) {
    if (makeThumbnail(session.stampLibrary.back())) return true;
    session.stampLibrary.pop_back();
  }
  platform::deleteFile(target);
  return false;
}

}  // namespace

void ImportStamps() {
  OpenDialogRequest request;
  request.filters = {{u"Images", imagePatterns()}, {u"All Files", u"*.*"}};
  request.allowSeveral = true;
  const std::vector<std::u16string> chosen = askForFiles(request);
  if (chosen.empty()) return;
  readMissedList();
  const int slots = kMostUserStamps - countUserStamps();
  const auto fresh =
      static_cast<int>(std::count_if(chosen.begin(), chosen.end(), [](const std::u16string& path) {
        return !hasUserStamp(fileNameOf(path));
      }));
  if (fresh > slots) return tellThatTheLibraryIsFull(chosen.size(), fresh, slots);
  bool imported = false;
  for (const std::u16string& path : chosen) imported = ImportStampFile(path) || imported;
  if (!imported) return;
  SaveStampList();
  stampLibraryChanged();
}

bool ImportStampFile(const std::u16string& path) {
  if (session.stampsFolder.empty() || countUserStamps() >= kMostUserStamps) return false;
  if (hasUserStamp(fileNameOf(path))) return false;
  const std::optional<std::u16string> target = freeTarget(baseNameOf(path));
  if (!target) return false;
  const platform::SharedPicture source = platform::loadPicture(path);
  if (!source || !hasUsableShape(*source)) return false;
  return writeStamp(source, *target) && appendWritten(*target);
}

}  // namespace quillmere
