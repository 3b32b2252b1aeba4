#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/pixel_rect.h"
#include "platform/clipboard.h"
#include "platform/file_dialog.h"
#include "platform/files.h"
#include "platform/instances.h"
#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "platform/sound.h"
#include "platform/tree.h"

// The scripted machine: it records what the logic asks for and gives the answers that a test sets.
// Files are real ones in a temporary folder with a folder per volume.
//
// Use it only from the test's own thread, except where noted.
namespace quillmere::platform {

struct ShownBox {
  std::u16string text;
  std::u16string title;
  BoxButtons buttons = BoxButtons::Ok;
  BoxIcon icon = BoxIcon::None;
  BoxOwner owner = BoxOwner::MainWindow;
};

struct StartedProcess {
  std::u16string program;
  std::u16string commandLine;
};

struct SentPath {
  WindowId window = 0;
  std::uint32_t tag = 0;
  std::u16string path;
};

// A top-level window of another process.
struct OtherWindow {
  WindowId id = 0;
  std::u16string className;
  ScreenRect rect;
  bool minimised = false;
  bool rectKnown = true;
};

struct MenuItemState {
  bool checked = false;
  bool enabled = false;
  bool operator==(const MenuItemState&) const = default;
};

// The main window of this process, as far as the logic sees it.
struct StandInWindow {
  bool exists = true;
  PixelSize client{1000, 700};
  int statusBarHeight = 22;
  std::u16string title;
  std::vector<int> statusRightEdges;
  std::map<int, std::u16string> statusTexts;  // by part
  ScreenRect sliderPlace;
  int sliderPosition = 0;
  bool sliderEnabled = false;
  std::map<std::uint32_t, MenuItemState> menuItems;  // by command
  bool mouseCaptured = false;
  std::optional<WindowPlacement> placement = WindowPlacement{{100, 100, 1200, 900}, false};
  std::vector<WindowPlacement> placementsSet;

  int invalidations = 0;  // all of them
  std::vector<PixelRect> invalidParts;
  int erasingInvalidations = 0;  // those that erase
  int updates = 0;
  int layouts = 0;
  int cursorRefreshes = 0;
  int focusRequests = 0;
  int raises = 0;
  int navigationTreeFocusRequests = 0;
  int binderTreeFocusRequests = 0;
  int binderTreeRebuildsPosted = 0;
  int waitingWorkPosted = 0;
  int closeRequests = 0;

  // What waits for the pages to be painted. They are painted at once unless `paintsLater` is set;
  // then paintNow() does it.
  bool paintsLater = false;
  std::vector<void (*)()> afterPainting;
  // What waits for the user to do nothing. The same applies to it, and idleSlice() calls each once.
  std::vector<bool (*)()> whenIdle;
  void idleSlice();
  // What waits until nothing was changed for a while; the same applies.
  std::vector<void (*)()> whenQuiet;
  void paintNow();
};

// The calls by which a document's file is written, put in its place and read again, and the listing
// of a folder.
enum class FileCall {
  Start,
  Write,
  Flush,
  Close,
  Replace,
  Delete,
  CopyProperties,
  CopyStreams,
  Guard,
  KeepOpen,
  Stamp,
  ReadWhole,
  OpenInLibrary,
  List,
};

// A row of a tree; its number counts from 1 in the order in which rows came.
struct StandInTreeRow {
  TreePlace place;  // where it was put; rows that came or went since then may stand between
  TreeRowContent content;
  bool expanded = false;
  bool removed = false;
  bool dimmed = false;
};
struct StandInTree {
  std::vector<StandInTreeRow> rows;
  std::map<TreeRow, std::vector<TreeRow>> children;  // by row, in the order of the tree
  int updates = 0;                                   // those that are under way
  int clearings = 0;
  TreeRow selected = kNoTreeRow;
  TreeRow top = kNoTreeRow;     // where it is scrolled to; kNoTreeRow for its first row
  TreeRow edited = kNoTreeRow;  // the row whose in-place edit was last started
  TreeRow marked = kNoTreeRow;  // the row with the drop mark
  bool markedBelow = false;
  int repaints = 0;

  // The texts of all rows as they stand below each other, indented by a blank for each level.
  std::vector<std::u16string> outline() const;
  // Numbers of the rows in the same order.
  std::vector<TreeRow> order() const;
  // What a person does with a row's button.
  void collapse(TreeRow row) { rows.at(row - 1).expanded = false; }
};

// The find bar, as far as the logic sees it.
struct StandInFindBar {
  std::u16string field;
  std::u16string status;
  bool optionsEnabled = true;
  int focusRequests = 0;
  std::function<void()> onFieldChanged;  // runs when the logic replaces the field's text
};

struct StandIn {
  // Answers to boxes, in order. A box without an answer, or whose buttons do not offer it, fails
  // the test and answers Cancel.
  std::deque<BoxAnswer> boxAnswers;
  std::vector<ShownBox> boxes;
  std::function<BoxAnswer(const ShownBox&)> chooseAnswer;  // if set, answers in place of the above
  std::function<void(const ShownBox&)> onBox;              // runs while the box is up
  std::vector<Sound> beeps;

  // Answers to file dialogs; an empty list means cancelled. One without an answer fails the test.
  std::deque<std::vector<std::u16string>> openDialogAnswers;
  std::vector<OpenDialogRequest> openDialogs;
  // The same for the dialogs that ask where to save; an empty path means cancelled.
  std::deque<std::u16string> saveDialogAnswers;
  std::vector<SaveDialogRequest> saveDialogs;
  std::function<void()> onSaveDialog;  // runs while one is up

  bool fontFilesThere = true;  // those of Liberation Sans, which every face stands for
  int fontFilesRead = 0;

  std::u16string picturePatterns = u"*.bmp;*.dib;*.png";
  int picturesDecoded = 0;
  int textsDrawn = 0;

  std::optional<std::u16string> clipboard;
  bool clipboardBusy = false;

  // Long names by the short ones, in lower case, that the system has for them everywhere.
  std::map<std::u16string, std::u16string> shortNames;
  std::u16string workingFolder = u"C:\\Users\\User";  // what names without a folder count from
  std::u16string executable = u"C:\\Program Files\\Quillmere\\quillmere.exe";
  std::vector<StartedProcess> processes;
  std::optional<bool> startProcessResult;  // unset: true when the program is there
  std::vector<std::u16string> openedWithSystem;
  bool openWithSystemResult = true;
  std::function<void()> onOpenWithSystem;  // runs while the system opens it or shows a folder
  std::optional<std::uint32_t> date;       // unset: the real one
  bool failGuids = false;
  std::vector<std::uint32_t> sleeps;  // milliseconds, from any thread
  std::function<void()> onSleep;      // runs at each sleep, which itself takes no real time
  std::uint32_t clockStep = 0;        // milliseconds that each reading of the clock adds to it
  bool clockStopped = false;          // only these steps and sleeps advance the clock
  std::atomic<bool> failEvents{false};
  std::atomic<bool> failThreads{false};
  int threadsStarted = 0;
  std::atomic<std::uint64_t> timeoutsGiven{
      0};  // to waits for events, in milliseconds and all together

  // Unset: the first claim of a name owns it, further ones find that it exists.
  std::optional<MutexClaim> mutexClaim;
  std::vector<std::u16string> mutexClaims;  // names in order
  int mutexCloses = 0;
  std::vector<OtherWindow> otherWindows;
  std::vector<WindowId> raisedWindows;
  std::vector<SentPath> sentPaths;
  std::vector<WindowId> windowsAskedToClose;
  ScreenRect workArea{0, 0, 1920, 1040};
  bool workAreaNearestKnown = true;
  int captionHeight = 23;

  bool shiftDown = false;
  bool controlDown = false;

  StandInWindow window;
  // What was asked of the window's visible parts, in order; repetitions in a row are listed once.
  std::vector<std::string> shown;
  std::function<void()> onStatusFilled;  // runs when the status bar has its texts
  StandInTree navigationTree;
  StandInTree binderTree;
  StandInFindBar findBar;

  std::u16string localAppDataFolder = u"C:\\Users\\User\\AppData\\Local";
  std::u16string desktopFolder = u"C:\\Users\\User\\Desktop";
  std::u16string temporaryFolder = u"C:\\Users\\User\\AppData\\Local\\Temp\\";
  std::u16string mappedDrives;            // lower-case letters of drives that are mapped to a share
  std::optional<std::uint64_t> diskFree;  // bytes left for files; unset: no limit
  // Set: asked at each such call, which fails when the answer is true. A close that fails closes.
  std::function<bool(FileCall)> refuseFileCall;

  std::map<std::pair<std::u16string, std::u16string>, std::u16string> registry;  // key, name
  std::set<std::pair<std::u16string, std::u16string>> registryNames;  // key, name; without content
  std::set<std::u16string> lockedRegistryKeys;                        // that cannot be written
  int associationAnnouncements = 0;
  std::u16string packageIdentity;
  std::map<std::u16string, std::u16string> defaultHandlers;  // by extension
  std::vector<Shortcut> shortcuts;
  bool shortcutResult = true;
  std::vector<std::u16string> shownInFolder;
  bool showInFolderResult = true;
};

StandIn& standIn();

// Adds an entry to `shown`.
void noteShown(const std::string& what);

// Resets everything: waits for the threads that the logic started, empties every volume, forgets
// all scripts and records, and makes the folders named above with the executable.
void resetStandIn();

// Waits until no thread that the logic started is running. False after ten seconds.
bool waitForDetachedThreads();

// The work of all conversions of text since the process started: a step for each call and one for
// each unit (byte of UTF-8) that it was given.
std::uint64_t conversionSteps();

// Stops counting the threads that are still running, so that they no longer affect later tests.
void forgetDetachedThreads();

// How a volume ("C:", "Z:" or "\\\\server\\share") answers. C: is present at first, other drives
// are missing (error 3), shares are not found on the network (error 53). Safe from any thread.
enum class VolumeState {
  Present,
  Failing,  // every call fails with the error given; a drive with error 3 is missing
  Silent,   // every call waits until the state changes
};
void setVolume(const std::u16string& volume, VolumeState state, std::uint32_t error = 53);

// Makes attribute queries of one path fail with `error`; 0 lets them through again. Safe from any
// thread.
void setAttributeError(const std::u16string& path, std::uint32_t error);

// How another program has a file open.
enum class OtherUse {
  Nobody,
  Exclusive,     // with no sharing
  SharedWriter,  // for writing, letting others read, write and delete
};
void setOtherUse(const std::u16string& path, OtherUse use);

// Whether PDFium has the file open, or the logic guards it against writers. Such a file cannot be
// deleted, replaced or written.
bool isHeld(const std::u16string& path);
// Whether the logic guards it against writers.
bool isGuarded(const std::u16string& path);

// Whoever has the file open can read it no more, as if its drive had been unplugged for a moment.
void cutOff(const std::u16string& path);

// What a file has besides its bytes, its times and kAttributeReadOnly.
struct FileProperties {
  std::uint32_t attributes = 0;  // kAttributeHidden, kAttributeSystem
  std::uint64_t created = 0;     // in 100-nanosecond ticks since 1601; 0 when nobody set it
  std::u16string accessList;     // empty for that of its folder
  bool operator==(const FileProperties&) const = default;
};
void setProperties(const std::u16string& path, const FileProperties& properties);
FileProperties propertiesOf(const std::u16string& path);

// The real location of the file or folder, whether it exists or not. Existing components are found
// ignoring case, whatever the volume's state. For std::filesystem or fopen.
std::filesystem::path realPath(const std::u16string& path);

// The real path in UTF-8.
std::string realPathUtf8(const std::u16string& path);

// Makes the file and its folders, whatever the script says.
void putFile(const std::u16string& path, std::string_view bytes);
void putFile(const std::u16string& path, const std::vector<std::uint8_t>& bytes);
void putFolder(const std::u16string& path);

// The bytes of a file; nullopt when there is none.
std::optional<std::string> fileBytes(const std::u16string& path);

// Sets the last-write time, in 100-nanosecond ticks since 1601. The file must exist.
void setWriteTime(const std::u16string& path, std::uint64_t ticks);

// File names (without folders) directly in the folder, sorted.
std::vector<std::u16string> namesIn(const std::u16string& folder);

}  // namespace quillmere::platform
