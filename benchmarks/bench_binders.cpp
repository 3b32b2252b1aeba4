// Times the binders: loading many, showing them in the tree, and opening a document from one.
//
// Usage: bench_binders DOCUMENT

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "documents/close.h"
#include "documents/open_binder_entry.h"
#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "plain_pdfium.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/text.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "store/data_folder.h"
#include "store/settings_table.h"

namespace quillmere::bench {
namespace {

constexpr int kFewBinders = 5;
constexpr int kManyBinders = 50;
constexpr int kFilesInBinder = 1000;
constexpr int kLoads = 6;
constexpr int kBuilds = 6;
constexpr int kOpens = 20;
const std::string kLibrary = "50 x 1,000";

std::u16string number(int value) {
  return platform::fromUtf8(std::to_string(value));
}

std::u16string binderPath(int index) {
  return session.bindersFolder + u"Bench " + number(index) + u".lst";
}

// Each document has a view, as in binders that are in use.
bool writeBinder(int index) {
  BinderFile binder;
  binder.path = binderPath(index);
  for (int i = 0; i < kFilesInBinder; ++i) {
    binder.files.push_back(u"C:\\Documents\\Folder " + number(index) + u"\\A paper " + number(i) +
                           u".pdf");
    BinderEntry& entry = binder.views[platform::toLower(binder.files.back())];
    entry.page = i % 7;
    entry.hasPage = true;
    entry.zoom = 1.25f;
    entry.mode = 3;
  }
  return WriteBinderFile(binder);
}

void listBinders(int count) {
  const std::u16string iniPath = GetIniPath();
  platform::writeProfileText(kBinderList.section, kCountKey, number(count), iniPath);
  for (int i = 0; i < kManyBinders; ++i) {
    platform::writeProfileText(kBinderList.section, pathKey(i),
                               i < count ? binderPath(i) : std::u16string(), iniPath);
  }
}

// Milliseconds.
double timeLoad(int count) {
  listBinders(count);
  std::erase_if(session.binderLibrary,
                [](const BinderFile& binder) { return !binder.isWorkingDocuments; });
  const Stopwatch watch;
  RestoreBinders();
  return watch.milliseconds();
}

bool measureLoads() {
  for (int i = 0; i < kManyBinders; ++i) {
    if (!writeBinder(i)) return false;
  }
  const auto microsecondsPerFile = [](double milliseconds, int binders) {
    return milliseconds * 1000 / (binders * kFilesInBinder);
  };
  for (int i = 0; i < kLoads; ++i) {
    const double few = timeLoad(kFewBinders);
    const double many = timeLoad(kManyBinders);
    reportValue("binder-load", kLibrary, many);
    reportPair("binder-load-level", kLibrary, microsecondsPerFile(many, kManyBinders),
               microsecondsPerFile(few, kFewBinders));
  }
  return binderAt(static_cast<int>(session.binderLibrary.size()) - 1).files.size() ==
         kFilesInBinder;
}

LRESULT sendToTree(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND tree = platform::windowHandles.binderTree;
  const auto control = reinterpret_cast<WNDPROC>(GetClassLongPtrW(tree, GCLP_WNDPROC));
  return CallWindowProcW(control, tree, message, wParam, lParam);
}

HTREEITEM insertPlainRow(HTREEITEM parent, HTREEITEM previous, const std::u16string& text) {
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent;
  insert.hInsertAfter = previous;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM;
  insert.item.pszText = const_cast<wchar_t*>(platform::wide(text));
  return reinterpret_cast<HTREEITEM>(
      sendToTree(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

// The rows of the library put into the control by themselves.
void insertPlainRows(const std::vector<std::vector<std::u16string>>& texts) {
  const OwnTreeChange own;
  sendToTree(WM_SETREDRAW, FALSE, 0);
  sendToTree(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
  HTREEITEM head = TVI_FIRST;
  for (const std::vector<std::u16string>& binder : texts) {
    head = insertPlainRow(TVI_ROOT, head, binder.front());
    HTREEITEM row = TVI_FIRST;
    for (const std::u16string& text : binder) row = insertPlainRow(head, row, text);
    sendToTree(TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(head));
  }
  sendToTree(WM_SETREDRAW, TRUE, 0);
}

void measureTree() {
  std::vector<std::vector<std::u16string>> texts;
  for (const BinderFile& binder : session.binderLibrary) {
    texts.push_back({binder.name});
    for (const std::u16string& path : binder.files) texts.back().push_back(binderFileText(path));
  }
  for (int i = -1; i < kBuilds; ++i) {
    const bool oursFirst = i % 2 == 0;
    double ours = oursFirst ? timed(BuildBinderTree) : 0;
    const double theirs = timed([&] { insertPlainRows(texts); });
    // What the tree is cleared of belongs to both times, so each finds the rows of the other.
    if (!oursFirst) ours = timed(BuildBinderTree);
    if (i >= 0) reportPair("binder-tree", kLibrary, ours, theirs);
  }
  BuildBinderTree();
  handleMessages();
}

bool measureOpens(const std::string& path) {
  BinderFile binder;
  binder.path = session.bindersFolder + u"Open.lst";
  binder.files = {platform::fromUtf8(path)};
  session.binderLibrary.push_back(binder);
  const auto item = static_cast<std::uint32_t>(binderRowValue(session.binderLibrary.size() - 1, 0));
  PlainView plain;
  BitmapSize size{100, 100};
  for (int i = -1; i < kOpens; ++i) {
    closeAllDocuments();
    closePlain(plain);
    handleMessages();
    const auto theirs = [&] {
      openPlain(plain, path);
      loadPlainPage(plain, 0, false);
      renderView(plain, size);
    };
    const bool oursFirst = i % 2 == 0;
    double theirTime = oursFirst ? 0 : timed(theirs);
    const PaintTimes ours = timePainting([&] { openBinderEntry(item, false, false); });
    if (oursFirst) theirTime = timed(theirs);
    size = {session.panes[0].pageBitmapWidth, session.panes[0].pageBitmapHeight};
    if (documentOf(0) == nullptr) return false;
    // The first time fills the caches and gives the size.
    if (i >= 0) reportPair("binder-open", documentName(path), ours.first, theirTime);
  }
  return true;
}

bool measureBinders(const std::string& path) {
  if (!session.binderPanelVisible || !measureLoads()) return false;
  measureTree();
  std::erase_if(session.binderLibrary,
                [](const BinderFile& binder) { return !binder.isWorkingDocuments; });
  BuildBinderTree();
  const bool opened = measureOpens(path);
  listBinders(0);
  for (int i = 0; i < kManyBinders; ++i) platform::deleteFile(binderPath(i));
  return opened;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return argc == 2 ? runInReader([&] { return measureBinders(argv[1]); }) : 2;
}
