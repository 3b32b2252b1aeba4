#include "documents/network_notice.h"

#include "base/text_format.h"
#include "session/session.h"
#include "store/probe_path.h"
#include "ui/boxes.h"

namespace quillmere {

void showNetworkUnavailable() {
  const std::int32_t seconds = session.settings.openTimeoutSeconds;
  showBox(formatText(
              u"This document is on a network location that didn't respond within %d "
              u"second%s.\n\nIf it's a slow or sleeping connection (for example a NAS waking up), "
              u"increase \"Network open timeout\" in Settings (App) and try again.\n\nOtherwise, "
              u"check that you're connected to the network (VPN / Wi-Fi).",
              {decimal(seconds), seconds == 1 ? u"" : u"s"}),
          u"Network Location Unavailable", BoxButtons::Ok, BoxIcon::Warning);
}

bool networkAnswers(const std::u16string& path) {
  if (!onNetwork(path)) return true;
  if (probeWithinOpenTimeout(path) != ProbeResult::Unavailable) return true;
  showNetworkUnavailable();
  return false;
}

}  // namespace quillmere
