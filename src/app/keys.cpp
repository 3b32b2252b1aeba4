#include "app/keys.h"

#include "annot/markup_dialog.h"
#include "annot/markup_tip.h"
#include "annot/placement_editing.h"
#include "annot/text_dialog.h"
#include "app/commands.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "nav/jump_history.h"
#include "panels/panel_toggles.h"
#include "platform/keyboard.h"
#include "session/session.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/selection.h"

namespace quillmere {

namespace {

// What a key does without and with Ctrl; null where it means nothing.
struct KeyRow {
  std::uint32_t key;
  void (*plain)();
  void (*withControl)();
};

template <std::uint32_t kCommand>
void command() {
  runCommand(kCommand);
}

template <PageKey kKey>
void turn() {
  turnPageByKey(session.activePane, kKey);
}

template <ArrowKey kKey>
void pan() {
  panByKey(session.activePane, kKey);
}

template <std::uint32_t kCommand>
void commandOnSelection() {
  if (hasTextSelection(session.activePane)) runCommand(kCommand);
}

void jumpInHistory() {
  if (platform::shiftDown()) {
    JumpForward(session.activePane);
  } else {
    JumpBack(session.activePane);
  }
}

void stepThroughHits() {
  if (session.findBarVisible) FindStep(platform::shiftDown() ? -1 : 1);
}

void closeWhatIsInFront() {
  if (textDialogOpen()) {
    closeTextDialog();
  } else if (markupDialogOpen()) {
    closeMarkupDialog();
  } else {
    CloseFindBar();
  }
}

constexpr KeyRow kKeys[] = {
    {kKeyBackspace, jumpInHistory, jumpInHistory},
    {kKeyEnter, stepThroughHits, stepThroughHits},
    {kKeyEscape, closeWhatIsInFront, closeWhatIsInFront},
    {kKeyTab, flipActivePane, flipActivePane},
    {kKeySpace, commandOnSelection<kCmdHighlight>, commandOnSelection<kCmdStrikethrough>},
    {kKeyDelete, deleteSelectedPlacement, deleteSelectedPlacement},
    {kKeyPageUp, turn<PageKey::PageUp>, turn<PageKey::PageUp>},
    {kKeyPageDown, turn<PageKey::PageDown>, turn<PageKey::PageDown>},
    {kKeyHome, turn<PageKey::Home>, turn<PageKey::Home>},
    {kKeyEnd, turn<PageKey::End>, turn<PageKey::End>},
    {kKeyLeft, pan<ArrowKey::Left>, pan<ArrowKey::Left>},
    {kKeyRight, pan<ArrowKey::Right>, pan<ArrowKey::Right>},
    {kKeyUp, pan<ArrowKey::Up>, pan<ArrowKey::Up>},
    {kKeyDown, pan<ArrowKey::Down>, pan<ArrowKey::Down>},
    {kKeyA, command<kCmdActualSize>, command<kCmdSelectAll>},
    {kKeyC, command<kCmdCustomFit>, command<kCmdCopy>},
    {kKeyF, command<kCmdFitPage>, nullptr},
    {kKeyW, command<kCmdFitWidth>, nullptr},
    {kKeyL, focusBinderPanel, nullptr},
    {kKeyN, focusNavigationPanel, nullptr},
    {kKeyR, command<kCmdRotateDocument>, command<kCmdRotatePage>},
    {kKeyV, nullptr, pasteIntoFindField},
    {kKeyPadPlus, command<kCmdZoomIn>, command<kCmdZoomIn>},
    {kKeyMainPlus, command<kCmdZoomIn>, command<kCmdZoomIn>},
    {kKeyPadMinus, command<kCmdZoomOut>, command<kCmdZoomOut>},
    {kKeyMainMinus, command<kCmdZoomOut>, command<kCmdZoomOut>},
    {kKeyF4, command<kCmdAnnotationPanel>, command<kCmdAnnotationPanel>},
};

}  // namespace

bool handleKey(std::uint32_t key) {
  HideMarkupTip();
  const bool control = platform::controlDown();
  for (const KeyRow& row : kKeys) {
    if (row.key != key) continue;
    const auto action = control ? row.withControl : row.plain;
    if (action == nullptr) return false;
    action();
    return true;
  }
  return false;
}

}  // namespace quillmere
