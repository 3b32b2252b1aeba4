#include "app/menus.h"

#include <algorithm>
#include <span>

#include "annot/notes.h"
#include "app/commands.h"
#include "base/limits.h"
#include "base/text_format.h"
#include "session/session.h"
#include "store/shelf.h"
#include "view/selection.h"

namespace quillmere {

namespace {

constexpr std::uint32_t kSeparator = 0;
// Stands for the submenu of recent documents.
constexpr std::uint32_t kRecentDocuments = kCmdRecentFirst;
constexpr std::size_t kRecentRows = kCmdRecentLast - kCmdRecentFirst + 1;

constexpr std::uint32_t kFileMenu[] = {
    kCmdOpen,           kCmdOpenInViewer, kSeparator,
    kRecentDocuments,   kSeparator,       kCmdNewBinder,
    kCmdExistingBinder, kSeparator,       kCmdPreviousInFolder,
    kCmdNextInFolder,   kSeparator,       kCmdSave,
    kCmdSaveAs,         kCmdSaveAll,      kCmdDiscardAll,
    kSeparator,         kCmdPrint,        kSeparator,
    kCmdClose,          kSeparator,       kCmdExit,
};
constexpr std::uint32_t kEditMenu[] = {
    kCmdFind,
    kSeparator,
    kCmdCopy,
    kCmdPaste,
    kCmdSelectAll,
    kSeparator,
    kCmdDeletePage,
    kCmdInsertAbove,
    kCmdInsertBelow,
    kSeparator,
    kCmdMarkUp,
    kCmdFlatten,
    kCmdRemoveAnnotations,
    kCmdMarkupSummary,
    kSeparator,
    kCmdRotateDocument,
    kCmdRotatePage,
    kSeparator,
    kCmdDiscardChanges,
    kSeparator,
    kCmdSettings,
};
constexpr std::uint32_t kViewMenu[] = {
    kCmdBookmarksPanel, kCmdBindersPanel, kCmdAnnotationPanel, kSeparator, kCmdGroupMarkups,
    kSeparator,         kCmdZoomIn,       kCmdZoomOut,         kSeparator, kCmdFitPage,
    kCmdFitWidth,       kCmdActualSize,   kCmdCustomFit,       kSeparator, kCmdPanScroll,
    kSeparator,         kCmdEqualPanes,
};
constexpr std::uint32_t kModeMenu[] = {kCmdSinglePage, kCmdBook, kCmdIndependentPages,
                                       kCmdTwoDocuments};
constexpr std::uint32_t kHelpMenu[] = {
    kCmdUserGuide, kCmdShortcuts,    kSeparator, kCmdSecurityInfo,
    kSeparator,    kCmdCheckUpdates, kSeparator, kCmdAbout,
};

MenuRow commandRow(std::uint32_t id) {
  MenuRow row;
  const Command* command = findCommand(id);
  if (command == nullptr) return row;
  row.command = id;
  row.text = command->text;
  row.enabled = commandEnabled(*command);
  row.checked = command->checked != nullptr && command->checked();
  return row;
}

MenuRow commandRow(std::uint32_t id, bool enabled) {
  MenuRow row = commandRow(id);
  row.enabled = enabled;
  return row;
}

// In a menu's text a single ampersand marks a key.
std::u16string menuText(const std::u16string& text) {
  std::u16string shown;
  for (const char16_t unit : text) shown.append(unit == u'&' ? 2 : 1, unit);
  return shown;
}

MenuRow recentDocumentsRow() {
  MenuRow row;
  row.text = u"Recent &Documents";
  const auto& recent = session.settings.recentFiles;
  if (!session.settings.recentFilesEnabled || recent.empty()) {
    row.enabled = false;
    return row;
  }
  for (std::size_t i = 0; i < std::min(recent.size(), kRecentRows); ++i) {
    MenuRow entry;
    entry.command = kCmdRecentFirst + static_cast<std::uint32_t>(i);
    entry.text = formatText(
        u"&%d  %s", {decimal(static_cast<std::int64_t>(i) + 1), menuText(fileNameOf(recent[i]))});
    row.submenu.push_back(entry);
  }
  return row;
}

std::vector<MenuRow> rowsOf(std::span<const std::uint32_t> layout) {
  std::vector<MenuRow> rows;
  for (const std::uint32_t id : layout) {
    rows.push_back(id == kRecentDocuments ? recentDocumentsRow() : commandRow(id));
  }
  return rows;
}

// What can be done with the markup that was right-clicked; empty without one.
std::vector<MenuRow> markupRows() {
  if (session.markupMenuAnnot < 0) return {};
  const bool editable = !session.viewerRole;
  std::vector<MenuRow> rows{commandRow(kCmdNote, editable), commandRow(kCmdRemoveMarkup, editable),
                            MenuRow{}};
  if (!ReadMarkupNote(session.markupMenuPage, session.markupMenuAnnot).empty()) {
    rows.front().text = u"&Edit Note...";
  }
  return rows;
}

std::vector<MenuRow> viewMenu() {
  std::vector<MenuRow> rows = rowsOf(kViewMenu);
  if (session.viewerRole) {
    rows.push_back(MenuRow{});
    rows.push_back(commandRow(kCmdRefreshFromSource));
  }
  return rows;
}

}  // namespace

std::vector<MenuBarEntry> menuBar() {
  return {{u"&File", fileMenu()},
          {u"&Edit", rowsOf(kEditMenu)},
          {u"&View", viewMenu()},
          {u"&Mode", rowsOf(kModeMenu)},
          {u"&Help", rowsOf(kHelpMenu)}};
}

std::vector<MenuRow> fileMenu() {
  return rowsOf(kFileMenu);
}

std::vector<MenuRow> contextMenu(int pane, int x, int y) {
  const bool editable = !session.viewerRole;
  const bool selected = hasTextSelection(pane);
  const bool unsaved = hasUnsavedChanges() || ActiveIsShelved();
  const bool onText = charAtPoint(pane, x, y) >= 0;

  std::vector<MenuRow> rows = markupRows();
  rows.push_back(commandRow(kCmdSave, unsaved));
  rows.push_back(commandRow(kCmdDiscardChanges, unsaved));
  rows.push_back(MenuRow{});
  rows.push_back(commandRow(kCmdCopy, selected));
  rows.push_back(commandRow(kCmdSelectAll));
  rows.push_back(commandRow(kCmdHighlight, selected && editable));
  rows.push_back(commandRow(kCmdStrikethrough, selected && editable));
  rows.push_back(commandRow(kCmdEditText, onText && editable));
  rows.push_back(MenuRow{});
  rows.push_back(commandRow(kCmdDeletePage, pageCountOf(pane) >= 2 && editable));
  for (const std::uint32_t id :
       {kCmdInsertAbove, kCmdInsertBelow, kCmdRotateDocument, kCmdRotatePage}) {
    rows.push_back(commandRow(id, editable));
  }
  if (session.viewerRole) {
    rows.push_back(MenuRow{});
    rows.push_back(commandRow(kCmdRefreshFromSource));
  }
  rows.push_back(MenuRow{});
  rows.push_back(commandRow(kCmdOpenInViewer, editable));
  rows.push_back(commandRow(kCmdClose));
  rows.back().text = u"Close\tCtrl+W";
  return rows;
}

}  // namespace quillmere
