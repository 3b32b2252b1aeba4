#include "support/session_test.h"

#include <utility>

#include "dialogs/dialog_script.h"
#include "documents/open_requests.h"
#include "panels/binder_panel.h"
#include "support/engine.h"

namespace quillmere::test {

SessionTest::SessionTest() {
  startEngine();
  resetSession();
  platform::resetStandIn();
  resetDialogScript();
  platform::standIn().window.client = {1000, 800};
  platform::standIn().window.statusBarHeight = 22;
}

SessionTest::~SessionTest() {
  resetSession();
}

std::u16string SessionTest::putPdf(const std::u16string& name, const std::string& bytes) {
  const bool hasVolume = name.find(u':') != std::u16string::npos || name.starts_with(u"\\\\");
  const std::u16string path = hasVolume ? name : u"C:\\" + name;
  platform::putFile(path, bytes);
  return path;
}

FPDF_DOCUMENT SessionTest::openInActive(const std::string& bytes, const std::u16string& path) {
  DocumentHandle document = loadDocument(bytes);
  if (document == nullptr) return nullptr;
  session.active.document = std::move(document);
  session.active.pageCount = FPDF_GetPageCount(session.active.document.get());
  session.active.path = path;
  session.active.dirty = false;
  session.active.altered = false;
  return session.active.document.get();
}

FPDF_DOCUMENT SessionTest::openInPane(int pane, const std::string& bytes) {
  return openInPane(pane, bytes, pane == 0 ? u"C:\\left.pdf" : u"C:\\right.pdf");
}

FPDF_DOCUMENT SessionTest::openInPane(int pane, const std::string& bytes,
                                      const std::u16string& path) {
  DocumentHandle document = loadDocument(bytes);
  if (document == nullptr) return nullptr;
  session.viewMode = ViewMode::TwoDocuments;
  PaneSlot& slot = session.panes[pane];
  slot.document = std::move(document);
  slot.pageCount = FPDF_GetPageCount(slot.document.get());
  slot.path = path;
  slot.dirty = false;
  slot.altered = false;
  return slot.document.get();
}

void SessionTest::deliverPosted() {
  int& posted = platform::standIn().window.waitingWorkPosted;
  int& rebuilds = platform::standIn().window.binderTreeRebuildsPosted;
  while (posted > 0 || rebuilds > 0) {
    if (std::exchange(posted, 0) > 0) openWaiting();
    if (std::exchange(rebuilds, 0) > 0) BuildBinderTree();
  }
}

DocumentHandle SessionTest::loadDocument(const std::string& bytes) {
  const std::string& kept = keptBytes_.emplace_back(bytes);
  return DocumentHandle(FPDF_LoadMemDocument64(kept.data(), kept.size(), nullptr));
}

}  // namespace quillmere::test
