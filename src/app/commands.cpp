#include "app/commands.h"

#include "annot/markup_dialog.h"
#include "annot/markup_tip.h"
#include "annot/markups.h"
#include "annot/notes.h"
#include "app/command_actions.h"
#include "app/keys.h"
#include "documents/close.h"
#include "documents/discard.h"
#include "documents/folder_step.h"
#include "documents/modes.h"
#include "documents/open_requests.h"
#include "documents/page_operations.h"
#include "documents/save.h"
#include "documents/summary.h"
#include "documents/unsaved_files.h"
#include "nav/find_bar.h"
#include "panels/binder_actions.h"
#include "panels/panel_toggles.h"
#include "platform/main_window.h"
#include "platform/sound.h"
#include "session/session.h"
#include "view/panes.h"
#include "view/rotation.h"
#include "view/selection.h"
#include "view/zoom.h"

namespace quillmere {

namespace {

bool documentOpen() {
  return documentOf(session.activePane) != nullptr;
}
bool severalPages() {
  return documentOpen() && pageCountOf(session.activePane) >= 2;
}
bool textSelected() {
  return session.selection.active;
}
bool findBarShown() {
  return session.findBarVisible;
}
bool inSinglePage() {
  return session.viewMode == ViewMode::SinglePage;
}
bool twoPanesShown() {
  return !inSinglePage();
}

bool navigationShown() {
  return session.navigationPanelVisible;
}
bool bindersShown() {
  return session.binderPanelVisible;
}
bool stampsShown() {
  return session.stampPanelVisible;
}
bool markupsGrouped() {
  return session.settings.markupsUnderBookmarks;
}
bool panScrolls() {
  return session.panScrollEnabled;
}

template <ZoomMode kMode>
bool zoomModeIs() {
  return session.panes[session.activePane].zoomMode == kMode;
}
template <ZoomMode kMode>
void chooseZoomMode() {
  setZoomMode(session.activePane, kMode);
}
template <ViewMode kMode>
bool viewModeIs() {
  return session.viewMode == kMode;
}
template <ViewMode kMode>
void chooseViewMode() {
  setViewMode(kMode);
}

void openFiles() {
  openWithDialog(session.activePane);
}
void closeActive() {
  closeCommand(session.activePane);
}
void selectWholePage() {
  selectAll(session.activePane);
}
void zoomActiveIn() {
  zoomIn(session.activePane);
}
void zoomActiveOut() {
  zoomOut(session.activePane);
}
void turnDocument() {
  rotateDocument(session.activePane);
}
void turnPage() {
  rotatePage(session.activePane);
}

void insertAbove() {
  InsertDocument(false);
}
void insertBelow() {
  InsertDocument(true);
}

void stepBackInFolder() {
  StepInFolder(-1);
}
void stepOnInFolder() {
  StepInFolder(1);
}

// The sound says that the key or menu was noticed.
void notImplementedYet() {
  platform::beep(platform::Sound::Default);
}

constexpr ViewerRule kAllowed = ViewerRule::Allowed;
constexpr ViewerRule kGreyed = ViewerRule::Greyed;
constexpr ViewerRule kRefused = ViewerRule::Refused;

constexpr Accelerator plain(std::uint16_t key) {
  return {key, false, false};
}
constexpr Accelerator ctrl(std::uint16_t key) {
  return {key, true, false};
}
constexpr Accelerator ctrlShift(std::uint16_t key) {
  return {key, true, true};
}

// Id, text, viewer rule, enabled, checked, handler, accelerator.
constexpr Command kCommands[] = {
    {kCmdOpen, u"&Open...\tCtrl+O", kAllowed, nullptr, nullptr, openFiles, ctrl('O')},
    {kCmdOpenInViewer, u"Open in Separate &Viewer", kGreyed, documentOpen, nullptr,
     openInSeparateViewer},
    {kCmdNewBinder, u"Add &New Binder...", kAllowed, nullptr, nullptr, AddNewBinder},
    {kCmdExistingBinder, u"Add &Existing Binder...", kAllowed, nullptr, nullptr, AddExistingBinder},
    {kCmdPreviousInFolder, u"&Previous in Folder\tCtrl+[", kAllowed, documentOpen, nullptr,
     stepBackInFolder, ctrl(kKeyLeftBracket)},
    {kCmdNextInFolder, u"&Next in Folder\tCtrl+]", kAllowed, documentOpen, nullptr, stepOnInFolder,
     ctrl(kKeyRightBracket)},
    {kCmdSave, u"&Save\tCtrl+S", kRefused, nullptr, nullptr, SaveCommand, ctrl('S')},
    {kCmdSaveAs, u"Save &As...\tCtrl+Shift+S", kRefused, nullptr, nullptr, SaveAsCommand,
     ctrlShift('S')},
    {kCmdSaveAll, u"Save A&ll", kGreyed, nullptr, nullptr, SaveAll},
    {kCmdDiscardAll, u"&Discard All...", kGreyed, nullptr, nullptr, DiscardAll},
    {kCmdPrint, u"&Print...\tCtrl+P", kAllowed, nullptr, nullptr, notImplementedYet, ctrl('P')},
    {kCmdClose, u"&Close\tCtrl+W", kAllowed, nullptr, nullptr, closeActive, ctrl('W')},
    {kCmdExit, u"E&xit", kAllowed, nullptr, nullptr, platform::closeMainWindow},

    {kCmdFind, u"&Find...\tCtrl+F", kAllowed, nullptr, nullptr, OpenFindBar, ctrl('F')},
    {kCmdCopy, u"&Copy\tCtrl+C", kAllowed, textSelected, nullptr, copySelection},
    {kCmdPaste, u"&Paste\tCtrl+V", kAllowed, findBarShown, nullptr, pasteIntoFindField},
    {kCmdSelectAll, u"Select &All\tCtrl+A", kAllowed, nullptr, nullptr, selectWholePage},
    {kCmdDeletePage, u"De&lete Page...", kRefused, severalPages, nullptr, DeleteCurrentPage},
    {kCmdInsertAbove, u"&Insert Document Above...", kRefused, nullptr, nullptr, insertAbove},
    {kCmdInsertBelow, u"Insert Document &Below...", kRefused, nullptr, nullptr, insertBelow},
    {kCmdMarkUp, u"&Mark Up...\tCtrl+M", kRefused, nullptr, nullptr, toggleMarkupDialog, ctrl('M')},
    {kCmdFlatten, u"Flatten &Annotations...", kRefused, nullptr, nullptr, FlattenAnnotations},
    {kCmdRemoveAnnotations, u"Remove All A&nnotations...", kRefused, nullptr, nullptr,
     RemoveAllAnnotations},
    {kCmdMarkupSummary, u"Create Markup &Summary...", kAllowed, nullptr, nullptr,
     CreateMarkupSummary},
    {kCmdRotateDocument, u"&Rotate Document\tR", kRefused, nullptr, nullptr, turnDocument},
    {kCmdRotatePage, u"Rotate &Page\tCtrl+R", kRefused, nullptr, nullptr, turnPage},
    {kCmdDiscardChanges, u"&Discard Changes...", kRefused, nullptr, nullptr, DiscardActive},
    {kCmdSettings, u"&Settings...", kRefused, nullptr, nullptr, notImplementedYet},
    {kCmdHighlight, u"&Highlight Selection\tSpace", kRefused, nullptr, nullptr, highlightSelection},
    {kCmdStrikethrough, u"Stri&kethrough Selection\tCtrl+Space", kRefused, nullptr, nullptr,
     strikeSelectionThrough},
    {kCmdRemoveMarkup, u"&Remove Markup", kRefused, nullptr, nullptr, RemoveMarkup},
    {kCmdNote, u"&Add Note...", kRefused, nullptr, nullptr, EditMarkupNote},
    {kCmdEditText, u"&Edit Text Object...", kRefused, nullptr, nullptr, notImplementedYet},

    {kCmdBookmarksPanel, u"&Bookmarks Panel\tF2", kAllowed, nullptr, navigationShown,
     toggleNavigationPanel, plain(kKeyF2)},
    {kCmdBindersPanel, u"Bin&ders Panel\tF3", kAllowed, nullptr, bindersShown, toggleBinderPanel,
     plain(kKeyF3)},
    {kCmdAnnotationPanel, u"Anno&tation Panel\tF4", kRefused, inSinglePage, stampsShown,
     toggleStampPanel},
    {kCmdGroupMarkups, u"&Group Markups Under Bookmarks", kAllowed, nullptr, markupsGrouped,
     toggleMarkupGrouping},
    {kCmdZoomIn, u"Zoom &In\t+", kAllowed, nullptr, nullptr, zoomActiveIn},
    {kCmdZoomOut, u"Zoom &Out\t-", kAllowed, nullptr, nullptr, zoomActiveOut},
    {kCmdFitPage, u"&Fit Page\tF", kAllowed, nullptr, zoomModeIs<kFitPage>,
     chooseZoomMode<kFitPage>},
    {kCmdFitWidth, u"Fit &Width\tW", kAllowed, nullptr, zoomModeIs<kFitWidth>,
     chooseZoomMode<kFitWidth>},
    {kCmdActualSize, u"&Actual Size (100%)\tA", kAllowed, nullptr, zoomModeIs<kActualSize>,
     chooseZoomMode<kActualSize>},
    {kCmdCustomFit, u"&Custom Fit\tC", kAllowed, nullptr, zoomModeIs<kCustomFit>,
     chooseZoomMode<kCustomFit>},
    {kCmdPanScroll, u"Pa&n Scroll\tCtrl+N", kAllowed, nullptr, panScrolls, togglePanScroll,
     ctrl('N')},
    {kCmdEqualPanes, u"&Equal Panes\tCtrl+\\", kAllowed, twoPanesShown, nullptr, equalizePanes,
     ctrl(kKeyBackslash)},
    {kCmdRefreshFromSource, u"&Refresh from Source", kAllowed, nullptr, nullptr, refreshFromSource},

    {kCmdSinglePage, u"&Single Page\tF5", kAllowed, nullptr, viewModeIs<ViewMode::SinglePage>,
     chooseViewMode<ViewMode::SinglePage>, plain(kKeyF5)},
    {kCmdBook, u"&Book\tF6", kAllowed, nullptr, viewModeIs<ViewMode::Book>,
     chooseViewMode<ViewMode::Book>, plain(kKeyF6)},
    {kCmdIndependentPages, u"&Independent Pages\tF7", kAllowed, nullptr,
     viewModeIs<ViewMode::IndependentPages>, chooseViewMode<ViewMode::IndependentPages>,
     plain(kKeyF7)},
    {kCmdTwoDocuments, u"&Two Documents\tF8", kAllowed, nullptr, viewModeIs<ViewMode::TwoDocuments>,
     chooseViewMode<ViewMode::TwoDocuments>, plain(kKeyF8)},

    {kCmdUserGuide, u"&User Guide", kAllowed, nullptr, nullptr, openUserGuide},
    {kCmdShortcuts, u"&Shortcuts...", kAllowed, nullptr, nullptr, notImplementedYet},
    {kCmdSecurityInfo, u"PDF &Security Info...", kAllowed, nullptr, nullptr, notImplementedYet},
    {kCmdCheckUpdates, u"Check for &Updates...", kAllowed, nullptr, nullptr, notImplementedYet},
    {kCmdAbout, u"&About...", kAllowed, nullptr, nullptr, notImplementedYet},
};

bool refusedHere(const Command& command) {
  return session.viewerRole && command.inViewer == ViewerRule::Refused;
}

}  // namespace

std::span<const Command> allCommands() {
  return kCommands;
}

const Command* findCommand(std::uint32_t id) {
  for (const Command& command : kCommands) {
    if (command.id == id) return &command;
  }
  return nullptr;
}

bool commandEnabled(const Command& command) {
  if (session.viewerRole && command.inViewer != ViewerRule::Allowed) return false;
  return command.enabled == nullptr || command.enabled();
}

bool runCommand(std::uint32_t id) {
  HideMarkupTip();
  if (id >= kCmdRecentFirst && id <= kCmdRecentLast) {
    openRecentDocument(id - kCmdRecentFirst);
    return true;
  }
  const Command* command = findCommand(id);
  if (command == nullptr || refusedHere(*command)) return false;
  command->run();
  return true;
}

void refreshMenus() {
  for (const Command& command : kCommands) {
    const bool checked = command.checked != nullptr && command.checked();
    platform::setMenuItem(command.id, checked, commandEnabled(command));
  }
}

}  // namespace quillmere
