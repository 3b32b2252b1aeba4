#include "documents/summary.h"

#include <string>
#include <utility>

#include "annot/markup_summary.h"
#include "base/limits.h"
#include "documents/save_target.h"
#include "integration/viewers.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/write_document_copy.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

// The folder of a path; empty when it names none. A drive keeps its backslash, since "C:" alone is
// whatever folder was last used there.
std::u16string folderAround(const std::u16string& path) {
  const std::size_t slash = path.find_last_of(u"\\/");
  if (slash == std::u16string::npos) return {};
  const bool root = slash > 0 && path[slash - 1] == u':';
  return path.substr(0, root ? slash + 1 : slash);
}

SaveDialogRequest requestFor(const std::u16string& source) {
  const std::u16string name = fileNameOf(source);
  SaveDialogRequest request;
  request.title = u"Save Markup Summary";
  request.filters = {{u"PDF Files", u"*.pdf"}};
  request.defaultExtension = u"pdf";
  request.name = name.substr(0, name.rfind(u'.')) + u" - Markup Summary.pdf";
  request.folder = folderAround(source);
  return request;
}

// Where to write the report; empty when the user cancelled. Documents that the program has open or
// manages are refused.
std::u16string askForTarget(const std::u16string& source) {
  for (;;) {
    std::u16string path = askWhereToSave(requestFor(source));
    if (path.empty() || !targetInUse(path, kNoPane)) return path;
    showNotice(u"The summary cannot replace a document that is in use.\n\nChoose another name.",
               BoxIcon::Warning);
  }
}

}  // namespace

void CreateMarkupSummary() {
  const DocumentWork work;
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document == nullptr) {
    showNotice(u"No document is open.", BoxIcon::Information);
    return;
  }
  const std::vector<MarkupSummaryItem> items = collectSummaryItems(document);
  if (items.empty()) {
    showNotice(u"This document has no highlights or strikethroughs to summarize.",
               BoxIcon::Information);
    return;
  }
  const std::u16string source = pathOf(session.activePane);
  saveMarkupSummary(buildMarkupSummary(items, fileNameOf(source)), source);
}

void saveMarkupSummary(DocumentHandle summary, const std::u16string& source) {
  if (!summary) {
    showNotice(u"Could not create the summary document.", BoxIcon::Error);
    return;
  }
  const std::u16string target = askForTarget(source);
  if (target.empty()) return;
  const bool written = WriteDocumentCopy(summary.get(), target);
  summary.reset();
  if (!written) {
    showNotice(u"Could not write the summary file.", BoxIcon::Error);
    return;
  }
  showInViewer(target);
}

}  // namespace quillmere
