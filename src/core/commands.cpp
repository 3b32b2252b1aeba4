#include "core/commands.h"

#include <iterator>

#include "core/close.h"
#include "core/command_actions.h"
#include "core/keys.h"
#include "core/open_requests.h"
#include "core/session.h"
#include "nav/find_bar.h"
#include "nav/folder_step.h"
#include "platform/main_window.h"
#include "platform/message_box.h"
#include "store/save.h"
#include "view/modes.h"
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
bool besideEachOther() {
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

template <std::int32_t kMode>
bool zoomModeIs() {
  return session.panes[session.activePane].zoomMode == kMode;
}
template <std::int32_t kMode>
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

void stepBackInFolder() {
  StepInFolder(-1);
}
void stepOnInFolder() {
  StepInFolder(1);
}

// The command's room has nothing to offer yet; the sound tells that the key or menu was heard.
void comesLater() {
  platform::beep(platform::Sound::Default);
}

constexpr bool kRefused = true;
constexpr bool kGreyed = true;

constexpr Accelerator plain(std::uint16_t key) {
  return {key, false, false};
}
constexpr Accelerator ctrl(std::uint16_t key) {
  return {key, true, false};
}
constexpr Accelerator ctrlShift(std::uint16_t key) {
  return {key, true, true};
}

// Id, text, refused in a viewer, greyed in a viewer, enabled, checked, handler, accelerator.
constexpr Command kCommands[] = {
    {kCmdOpen, u"&Open...\tCtrl+O", false, false, nullptr, nullptr, openFiles, ctrl('O')},
    {kCmdOpenInViewer, u"Open in Separate &Viewer", false, kGreyed, documentOpen, nullptr,
     openInSeparateViewer},
    {kCmdNewBinder, u"Add &New Binder...", false, false, nullptr, nullptr, comesLater},
    {kCmdExistingBinder, u"Add &Existing Binder...", false, false, nullptr, nullptr, comesLater},
    {kCmdPreviousInFolder, u"&Previous in Folder\tCtrl+[", false, false, documentOpen, nullptr,
     stepBackInFolder, ctrl(kKeyLeftBracket)},
    {kCmdNextInFolder, u"&Next in Folder\tCtrl+]", false, false, documentOpen, nullptr,
     stepOnInFolder, ctrl(kKeyRightBracket)},
    {kCmdSave, u"&Save\tCtrl+S", kRefused, kGreyed, nullptr, nullptr, SaveCommand, ctrl('S')},
    {kCmdSaveAs, u"Save &As...\tCtrl+Shift+S", kRefused, kGreyed, nullptr, nullptr, comesLater,
     ctrlShift('S')},
    {kCmdSaveAll, u"Save A&ll", false, kGreyed, nullptr, nullptr, saveAllDocuments},
    {kCmdDiscardAll, u"&Discard All...", false, kGreyed, nullptr, nullptr, discardAllDocuments},
    {kCmdPrint, u"&Print...\tCtrl+P", false, false, nullptr, nullptr, comesLater, ctrl('P')},
    {kCmdClose, u"&Close\tCtrl+W", false, false, nullptr, nullptr, closeActive, ctrl('W')},
    {kCmdExit, u"E&xit", false, false, nullptr, nullptr, platform::closeMainWindow},

    {kCmdFind, u"&Find...\tCtrl+F", false, false, nullptr, nullptr, OpenFindBar, ctrl('F')},
    {kCmdCopy, u"&Copy\tCtrl+C", false, false, textSelected, nullptr, copySelection},
    {kCmdPaste, u"&Paste\tCtrl+V", false, false, findBarShown, nullptr, pasteIntoFindField},
    {kCmdSelectAll, u"Select &All\tCtrl+A", false, false, nullptr, nullptr, selectWholePage},
    {kCmdDeletePage, u"De&lete Page...", kRefused, kGreyed, severalPages, nullptr, comesLater},
    {kCmdInsertAbove, u"&Insert Document Above...", kRefused, kGreyed, nullptr, nullptr,
     comesLater},
    {kCmdInsertBelow, u"Insert Document &Below...", kRefused, kGreyed, nullptr, nullptr,
     comesLater},
    {kCmdMarkUp, u"&Mark Up...\tCtrl+M", kRefused, kGreyed, nullptr, nullptr, comesLater,
     ctrl('M')},
    {kCmdFlatten, u"Flatten &Annotations...", kRefused, kGreyed, nullptr, nullptr, comesLater},
    {kCmdRemoveAnnotations, u"Remove All A&nnotations...", kRefused, kGreyed, nullptr, nullptr,
     comesLater},
    {kCmdMarkupSummary, u"Create Markup &Summary...", false, false, nullptr, nullptr, comesLater},
    {kCmdRotateDocument, u"&Rotate Document\tR", kRefused, kGreyed, nullptr, nullptr, turnDocument},
    {kCmdRotatePage, u"Rotate &Page\tCtrl+R", kRefused, kGreyed, nullptr, nullptr, turnPage},
    {kCmdDiscardChanges, u"&Discard Changes...", kRefused, kGreyed, nullptr, nullptr, comesLater},
    {kCmdSettings, u"&Settings...", kRefused, kGreyed, nullptr, nullptr, comesLater},
    {kCmdHighlight, u"&Highlight Selection\tSpace", kRefused, kGreyed, nullptr, nullptr,
     comesLater},
    {kCmdStrikethrough, u"Stri&kethrough Selection\tCtrl+Space", kRefused, kGreyed, nullptr,
     nullptr, comesLater},
    {kCmdRemoveMarkup, u"&Remove Markup", kRefused, kGreyed, nullptr, nullptr, comesLater},
    {kCmdNote, u"&Add Note...", kRefused, kGreyed, nullptr, nullptr, comesLater},
    {kCmdEditText, u"&Edit Text Object...", kRefused, kGreyed, nullptr, nullptr, comesLater},

    {kCmdBookmarksPanel, u"&Bookmarks Panel\tF2", false, false, nullptr, navigationShown,
     toggleNavigationPanel, plain(kKeyF2)},
    {kCmdBindersPanel, u"Bin&ders Panel\tF3", false, false, nullptr, bindersShown,
     toggleBinderPanel, plain(kKeyF3)},
    {kCmdAnnotationPanel, u"Anno&tation Panel\tF4", kRefused, kGreyed, inSinglePage, stampsShown,
     toggleStampPanel},
    {kCmdGroupMarkups, u"&Group Markups Under Bookmarks", false, false, nullptr, markupsGrouped,
     toggleMarkupGrouping},
    {kCmdZoomIn, u"Zoom &In\t+", false, false, nullptr, nullptr, zoomActiveIn},
    {kCmdZoomOut, u"Zoom &Out\t-", false, false, nullptr, nullptr, zoomActiveOut},
    {kCmdFitPage, u"&Fit Page\tF", false, false, nullptr, zoomModeIs<kFitPage>,
     chooseZoomMode<kFitPage>},
    {kCmdFitWidth, u"Fit &Width\tW", false, false, nullptr, zoomModeIs<kFitWidth>,
     chooseZoomMode<kFitWidth>},
    {kCmdActualSize, u"&Actual Size (100%)\tA", false, false, nullptr, zoomModeIs<kActualSize>,
     chooseZoomMode<kActualSize>},
    {kCmdCustomFit, u"&Custom Fit\tC", false, false, nullptr, zoomModeIs<kCustomFit>,
     chooseZoomMode<kCustomFit>},
    {kCmdPanScroll, u"Pa&n Scroll\tCtrl+N", false, false, nullptr, panScrolls, togglePanScroll,
     ctrl('N')},
    {kCmdEqualPanes, u"&Equal Panes\tCtrl+\\", false, false, besideEachOther, nullptr,
     equalizePanes, ctrl(kKeyBackslash)},
    {kCmdRefreshFromSource, u"&Refresh from Source", false, false, nullptr, nullptr,
     refreshFromSource},

    {kCmdSinglePage, u"&Single Page\tF5", false, false, nullptr, viewModeIs<ViewMode::SinglePage>,
     chooseViewMode<ViewMode::SinglePage>, plain(kKeyF5)},
    {kCmdBook, u"&Book\tF6", false, false, nullptr, viewModeIs<ViewMode::Book>,
     chooseViewMode<ViewMode::Book>, plain(kKeyF6)},
    {kCmdIndependentPages, u"&Independent Pages\tF7", false, false, nullptr,
     viewModeIs<ViewMode::IndependentPages>, chooseViewMode<ViewMode::IndependentPages>,
     plain(kKeyF7)},
    {kCmdTwoDocuments, u"&Two Documents\tF8", false, false, nullptr,
     viewModeIs<ViewMode::TwoDocuments>, chooseViewMode<ViewMode::TwoDocuments>, plain(kKeyF8)},

    {kCmdUserGuide, u"&User Guide", false, false, nullptr, nullptr, openUserGuide},
    {kCmdShortcuts, u"&Shortcuts...", false, false, nullptr, nullptr, comesLater},
    {kCmdSecurityInfo, u"PDF &Security Info...", false, false, nullptr, nullptr, comesLater},
    {kCmdCheckUpdates, u"Check for &Updates...", false, false, nullptr, nullptr, comesLater},
    {kCmdAbout, u"&About...", false, false, nullptr, nullptr, comesLater},
};

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
  if (session.viewerRole && command.greyedInViewer) return false;
  return command.enabled == nullptr || command.enabled();
}

bool runCommand(std::uint32_t id) {
  if (id >= kCmdRecentFirst && id <= kCmdRecentLast) {
    openRecentDocument(id - kCmdRecentFirst);
    return true;
  }
  const Command* command = findCommand(id);
  if (command == nullptr || (session.viewerRole && command->refusedInViewer)) return false;
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
