#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/fnv1a.h"
#include "base/pixel_rect.h"
#include "session/app_settings.h"
#include "session/binder.h"
#include "session/bookmark_entry.h"
#include "session/find_state.h"
#include "session/gesture.h"
#include "session/markup_entry.h"
#include "session/markup_tree.h"
#include "session/pane_slot.h"
#include "session/placement.h"
#include "session/shelf_entry.h"
#include "session/text_selection.h"
#include "session/waiting_opens.h"

namespace quillmere {

enum class ViewMode : std::uint32_t {
  SinglePage = 0,        // one document, pane 0 alone
  Book = 1,              // one document, page n left and n + 1 right, turning together
  IndependentPages = 2,  // one document, each pane on a page of its own
  TwoDocuments = 3,      // each pane owns a document
};

// All that the user-interface thread knows. Nothing else reads it. Each group names the files that
// write it; the others read.
struct SessionState {
  SessionState() = default;
  SessionState(const SessionState&) = delete;
  SessionState& operator=(const SessionState&) = delete;

  // The process. Written by main.cpp and app/startup.cpp.
  bool viewerRole = false;      // set once at start: a read-only process
  bool ownsPrimaryName = true;  // false beside another main window, which owns the shared files

  // What is being asked, and what waits for the answer. Written by session/waiting_opens.cpp and by
  // documents/open_requests.cpp, which opens what waits.
  std::int32_t documentWork = 0;          // guards that are alive
  std::vector<WaitingOpen> waitingOpens;  // what arrived meanwhile
  bool closeWaits = false;                // the main window was asked to close meanwhile

  // Documents, panes and the mode. Written by documents/, session/document_slots.cpp, and for what
  // a pane shows by view/.
  ViewMode viewMode = ViewMode::SinglePage;
  std::int32_t activePane = 0;  // the pane that commands act on
  // Files of documents that were read whole, which PDFium reads from as long as they are open.
  std::unordered_map<FPDF_DOCUMENT, std::vector<std::uint8_t>, Fnv1aPointerHash> documentKeptBuffer;
  ActiveDocument active;  // stands before the panes, whose pages must close first
  PaneSlot panes[2];
  // Lower-cased document path to the path of the binder that it was opened from.
  std::unordered_map<std::u16string, std::u16string, Fnv1aTextHash> documentBinders;

  // How panes are laid out. Written by view/panes.cpp, view/geometry.cpp and documents/modes.cpp.
  bool panScrollEnabled = false;
  std::int32_t paneDividerPosition = 0;  // client x of the divider; 0 means centred
  std::int32_t lastPaneWidth[2] = {-1, -1};

  // The view that Book took over. Written by view/panes.cpp and documents/modes.cpp.
  bool bookOverrideActive = false;  // the view of the panes was saved on entering Book
  float bookOverrideZoom[2] = {1, 1};
  float bookOverridePanX[2] = {0, 0};
  float bookOverridePanY[2] = {0, 0};
  ZoomMode bookOverrideZoomMode[2] = {kFitPage, kFitPage};
  PixelRect bookOverridePane[2];  // where the panes were then; empty for one that was not shown

  // Panels and bars. Written by panels/, nav/find_bar.cpp, store/settings.cpp, app/viewer_role.cpp
  // and session/density.cpp; the placeholders by painting.
  bool navigationPanelVisible = false;
  bool binderPanelVisible = false;
  bool stampPanelVisible = false;
  std::int32_t leftPanelWidth = 190;   // pixels at the screen's own density
  std::int32_t stampPanelWidth = 180;  // pixels at the screen's own density
  float leftPanelSplit = 0.5f;         // share of the left panel above its split
  bool findBarVisible = false;
  PixelRect placeholderRect[2];  // where a click opens the file dialog; empty when not shown
  std::int32_t dpi = 96;         // of the window's screen

  // Stamps and text on pages. Written by annot/.
  std::map<std::int32_t, std::vector<Placement>> placements;  // by zero-based page
  FPDF_DOCUMENT placementDocument = nullptr;                  // where they came from; not owned
  std::int32_t selectedPlacementPage = -1;
  std::int32_t selectedPlacementIndex = -1;

  // The markup that the last context menu was opened over; -1 for none. Written by
  // annot/markups.cpp.
  std::int32_t markupMenuPage = -1;   // zero-based
  std::int32_t markupMenuAnnot = -1;  // in the page's annotation list

  // The markups of one document, in reading order. Written by annot/markup_list.cpp, and by
  // session/document_slots.cpp when that document closes.
  std::vector<MarkupEntry> markupList;
  FPDF_DOCUMENT markupListDocument = nullptr;  // that they are of; not owned, null for none
  // Lists of other open documents, kept for when they are shown again.
  std::unordered_map<FPDF_DOCUMENT, std::vector<MarkupEntry>, Fnv1aPointerHash> otherMarkupLists;

  // The navigation tree: its nodes by number, and in the tree's order. Written by
  // nav/bookmarks.cpp.
  std::vector<BookmarkEntry> bookmarks;
  std::vector<BookmarkOrderEntry> bookmarkOrder;
  MarkupTree markupTree;  // written by nav/markup_tree.cpp

  // Written by view/selection.cpp, nav/find.cpp, session/gesture.cpp and view/navigation.cpp.
  TextSelection selection;
  FindState find;
  GestureState gesture;
  WheelGathering wheel;

  // Settings and the data folder. Written by store/, and by the commands that change a setting.
  AppSettings settings;
  bool settingsFileSeeded = false;  // this process has tried to make the settings file
  bool restoringBinders = false;    // the list of loaded binders is not to be saved now
  std::u16string stampsFolder;      // with a trailing backslash; empty when there is no data folder
  std::u16string bindersFolder;     // likewise
  std::u16string shelveFolder;      // likewise

  // Written by integration/update_check.cpp.
  std::u16string latestVersion;       // newer than this one; empty before a check found it
  std::u16string latestInstallerUrl;  // of the manifest that installs it

  // Binders and unsaved work. Written by store/ and documents/.
  std::vector<BinderFile> binderLibrary;
  std::unordered_set<std::u16string, Fnv1aTextHash> unavailableFiles;        // lower-cased paths
  std::unordered_map<std::u16string, ShelfEntry, Fnv1aTextHash> shelfIndex;  // by lower-cased path
};

// The one record of the process.
extern SessionState session;

// Puts the session into its start state, closing what it holds in the order that PDFium needs.
void resetSession();

// Where the document of a pane lives depends on the mode alone: in the pane itself in TwoDocuments,
// in `session.active` otherwise. Everybody goes through these.
bool inTwoDocuments();
DocumentSlot& documentSlotOf(int pane);
FPDF_DOCUMENT documentOf(int pane);
std::int32_t& pageCountOf(int pane);
std::u16string& pathOf(int pane);
bool& dirtyOf(int pane);
PageRotations& pageRotationsOf(int pane);

// True when the active pane's document has edits, placements or rotations that its file lacks.
bool hasUnsavedChanges();

// True when `document` has placements that its annotations lack.
bool placementsPending(FPDF_DOCUMENT document);

// Rotations are counted in quarter turns clockwise; whole turns count as none.
inline constexpr std::uint32_t kQuarterTurnBits = 3;
// True when the pane's document as a whole has pending quarter turns.
bool documentRotationPending(const PaneSlot& pane);
// True when a page of the pane's document has pending quarter turns.
bool anyPageRotationPending(int pane);

// Closes the pane's text page, then its page.
void closePanePage(int pane);

// Drops the pane's bitmap and its size.
void freePaneBitmap(int pane);

// Both of the above.
void dropPaneView(int pane);

// Opens the page `index`, clamped to the document, as the pane's page, with its text page. Without
// a document nothing happens; a page that cannot be loaded leaves the pane without one.
void loadPane(int pane, std::int32_t index);

// Empties the lists of one pane, or of both.
void clearJumpHistories(int pane);
void clearJumpHistories();

// Makes a pane the one that commands act on. Placements stay with the document that has them.
void setActivePane(int pane);

}  // namespace quillmere
