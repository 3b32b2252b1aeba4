#include "nav/links.h"

#include <quillmere_engine.h>

#include <cstring>
#include <string>

#include "nav/jump_history.h"
#include "nav/link_address.h"
#include "platform/text.h"
#include "session/session.h"
#include "ui/open_with_system.h"
#include "view/geometry.h"
#include "view/navigation.h"

namespace quillmere {

namespace {

bool followDestination(int pane, FPDF_DEST destination) {
  const int page = QuillmereEngine_PageIndexOfDest(documentOf(pane), destination);
  if (page < 0) return false;
  if (page != session.panes[pane].openPage) PushJump(pane);
  goToPage(pane, page, false);
  return true;
}

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
  const std::u16string address = openableAddress(platform::fromUtf8(uriOf(document, action)));
  if (address.empty()) return false;
  openWithSystem(address);
  return true;
}

}  // namespace

FPDF_DEST destinationHere(FPDF_DOCUMENT document, FPDF_DEST found, FPDF_ACTION action) {
  const bool elsewhere =
      leadsToAnotherFile(action) && found == FPDFAction_GetDest(document, action);
  return elsewhere ? nullptr : found;
}

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
  const FPDF_DEST found = FPDFLink_GetDest(document, link);
  if (const FPDF_DEST destination = destinationHere(document, found, action)) {
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
