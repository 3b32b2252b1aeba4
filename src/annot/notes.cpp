#include "annot/notes.h"

#include <fpdf_annot.h>
#include <quillmere_engine.h>

#include <optional>
#include <vector>

#include "annot/annotations.h"
#include "annot/note_dialog.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr const char* kContents = "Contents";
constexpr const char* kRichContents = "RC";

// The text with every line end, be it CR LF, CR or LF, replaced by `lineEnd`.
std::u16string withLineEnds(std::u16string_view text, std::u16string_view lineEnd) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
    if (text[i] == u'\r' || text[i] == u'\n') {
      result += lineEnd;
    } else if (text[i] != u'\0') {
      result += text[i];
    }
  }
  return result;
}

// Also removes the rich text: readers that prefer it would go on showing the old note.
bool writeNote(FPDF_DOCUMENT document, std::int32_t pageIndex, std::int32_t annot,
               const std::u16string& note) {
  const ReachedPage page(document, pageIndex);
  const AnnotationHandle annotation = annotationAt(page.get(), annot);
  if (!isMarkup(annotation.get())) return false;
  std::vector<FPDF_WCHAR> units(note.begin(), note.end());
  units.push_back(0);
  if (!FPDFAnnot_SetStringValue(annotation.get(), kContents, units.data())) return false;
  QuillmereEngine_RemoveAnnotEntry(annotation.get(), kRichContents);
  return true;
}

}  // namespace

std::u16string ReadMarkupNote(std::int32_t page, std::int32_t annotIndex) {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document == nullptr || page < 0) return {};
  const ReachedPage reached(document, page);
  return ReadAnnotString(annotationAt(reached.get(), annotIndex).get(), kContents);
}

std::u16string shownNote(std::u16string_view stored) {
  return withLineEnds(stored, u"\r\n");
}

std::u16string storedNote(std::u16string_view shown) {
  return withLineEnds(shown, u"\r");
}

// The dialog holds back other openings. If the document goes all the same, nothing is picked
// afterwards.
void EditMarkupNote() {
  const std::u16string before =
      shownNote(ReadMarkupNote(session.markupMenuPage, session.markupMenuAnnot));
  const std::optional<std::u16string> note =
      askForNote({u"Annotation Note", u"Note (shows on hover):", before});
  const std::int32_t page = session.markupMenuPage;
  const std::int32_t annot = session.markupMenuAnnot;
  if (!note || session.viewerRole || annot < 0 || *note == before) return;
  DocumentSlot& slot = documentSlotOf(session.activePane);
  const FPDF_DOCUMENT document = slot.document.get();
  if (document == nullptr) return;
  separatePagesToAnnotate(document);
  if (!writeNote(document, page, annot, storedNote(*note))) return;
  markEdited(slot);
  markupsChanged(document, page);
}

}  // namespace quillmere
