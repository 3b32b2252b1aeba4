#include "nav/links.h"

#include <fpdf_annot.h>

#include <cstring>
#include <string>

#include "nav/jump_history.h"
#include "platform/process.h"
#include "platform/text.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/navigation.h"

namespace quillmere {

namespace {

constexpr const char16_t* kOpenedSchemes[] = {u"http://", u"https://", u"mailto:"};

bool beginsWith(std::u16string_view text, std::u16string_view start) {
  return text.size() >= start.size() &&
         platform::equalIgnoringCase(text.substr(0, start.size()), start);
}

bool followDestination(int pane, FPDF_DEST destination) {
  const int page = FPDFDest_GetDestPageIndex(documentOf(pane), destination);
  if (page < 0 || page >= pageCountOf(pane)) return false;
  if (page != session.panes[pane].currentPage) PushJump(pane);
  goToPage(pane, page, false);
  return true;
}

bool hasDestinationItself(int pane, FPDF_LINK link) {
  const FPDF_ANNOTATION annotation = FPDFLink_GetAnnot(session.panes[pane].page.get(), link);
  if (annotation == nullptr) return false;
  const bool has = FPDFAnnot_HasKey(annotation, "Dest") != 0;
  FPDFPage_CloseAnnot(annotation);
  return has;
}

// PDFium gives the destination of such an action, inside the other file, as if it were the link's
// own and one of this document.
bool leadsToAnotherFile(FPDF_ACTION action) {
  if (action == nullptr) return false;
  const unsigned long type = FPDFAction_GetType(action);
  return type == PDFACTION_REMOTEGOTO || type == PDFACTION_EMBEDDEDGOTO;
}

std::string uriOf(FPDF_DOCUMENT document, FPDF_ACTION action) {
  const unsigned long size = FPDFAction_GetURIPath(document, action, nullptr, 0);
  if (size <= 1) return {};
  std::string uri(size, '\0');
  FPDFAction_GetURIPath(document, action, uri.data(), size);
  uri.resize(std::strlen(uri.c_str()));
  return uri;
}

bool openAddress(FPDF_DOCUMENT document, FPDF_ACTION action) {
  const std::u16string uri = platform::fromUtf8(uriOf(document, action));
  for (const char16_t* scheme : kOpenedSchemes) {
    if (!beginsWith(uri, scheme)) continue;
    platform::openWithSystem(uri);
    return true;
  }
  return false;
}

}  // namespace

FPDF_LINK LinkAtPoint(int pane, int x, int y) {
  if (pane < 0 || pane > 1 || !session.panes[pane].page) return nullptr;
  const PixelRect rect = paneRect(pane);
  if (!rect.contains(x, y)) return nullptr;
  const PagePoint point = paneToPage(pane, x - rect.left, y - rect.top);
  return FPDFLink_GetLinkAtPoint(session.panes[pane].page.get(), point.x, point.y);
}

bool FollowLink(int pane, FPDF_LINK link) {
  const FPDF_DOCUMENT document = documentOf(pane);
  if (document == nullptr || link == nullptr) return false;
  const FPDF_ACTION action = FPDFLink_GetAction(link);
  if (leadsToAnotherFile(action) && !hasDestinationItself(pane, link)) return false;
  if (const FPDF_DEST destination = FPDFLink_GetDest(document, link)) {
    return followDestination(pane, destination);
  }
  if (action == nullptr) return false;
  switch (FPDFAction_GetType(action)) {
    case PDFACTION_GOTO: {
      const FPDF_DEST destination = FPDFAction_GetDest(document, action);
      return destination != nullptr && followDestination(pane, destination);
    }
    case PDFACTION_URI:
      return openAddress(document, action);
    default:
      return false;
  }
}

}  // namespace quillmere
