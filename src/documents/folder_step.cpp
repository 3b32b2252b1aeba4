#include "documents/folder_step.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/limits.h"
#include "documents/open_requests.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/session.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

// In ascending order, ignoring case.
void sortNames(std::vector<std::u16string>& names) {
  std::vector<std::pair<std::u16string, std::u16string>> keyed;
  keyed.reserve(names.size());
  for (std::u16string& name : names) {
    std::u16string key = platform::toLower(name);
    keyed.emplace_back(std::move(key), std::move(name));
  }
  std::sort(keyed.begin(), keyed.end());
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = std::move(keyed[i].second);
}

bool shownInOtherPane(const std::u16string& path) {
  if (session.viewMode != ViewMode::TwoDocuments) return false;
  const PaneSlot& other = session.panes[1 - session.activePane];
  return other.document && platform::equalIgnoringCase(other.path, path);
}

// Index of the next file that can be stepped to; nullopt past either end.
std::optional<std::size_t> neighbour(const std::vector<std::u16string>& names, std::size_t from,
                                     int direction, const std::u16string& folder) {
  auto index = static_cast<std::ptrdiff_t>(from);
  const auto count = static_cast<std::ptrdiff_t>(names.size());
  for (index += direction; index >= 0 && index < count; index += direction) {
    const auto candidate = static_cast<std::size_t>(index);
    if (!shownInOtherPane(folder + names[candidate])) return candidate;
  }
  return std::nullopt;
}

}  // namespace

void StepInFolder(int direction) {
  platform::focusMainWindow();
  const std::u16string path = pathOf(session.activePane);
  const std::size_t slash = path.rfind(u'\\');
  if (slash == std::u16string::npos) return;
  const std::u16string folder = path.substr(0, slash + 1);

  auto listing = platform::listFiles(folder, u".pdf");
  if (!listing) {
    showNotice(u"Could not read the folder.\nIt may have been moved or renamed.", BoxIcon::Warning);
    return;
  }
  std::vector<std::u16string>& names = *listing;
  if (names.empty()) return;
  sortNames(names);
  const std::u16string name = fileNameOf(path);
  const auto found = std::find_if(names.begin(), names.end(), [&](const std::u16string& entry) {
    return platform::equalIgnoringCase(entry, name);
  });
  if (found == names.end()) {
    showNotice(
        u"Could not locate the current file in its folder.\nIt may have been renamed or moved.",
        BoxIcon::Warning);
    return;
  }
  const auto start = static_cast<std::size_t>(found - names.begin());
  const auto next = neighbour(names, start, direction, folder);
  if (!next) return;
  const int pane = session.viewMode == ViewMode::TwoDocuments ? session.activePane : 0;
  openRequested(folder + names[*next], pane, kWorkingDocsLeaveAlone, true);
}

}  // namespace quillmere
