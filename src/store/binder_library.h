#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/binder.h"

// The binders of this session: the documents in use first, then the custom binders in the order of
// the panel. A binder is identified by its index, a file by its index within the binder. A viewer
// shows those of the settings and changes neither them nor the settings.
namespace quillmere {

inline constexpr int kNoBinder = -1;
inline constexpr int kTooManyBinders = -2;

inline constexpr int kMostCustomBinders = 50;
inline constexpr std::size_t kMostFilesInBinder = 1000;

// Index of the loaded binder whose file is `path`, ignoring case; kNoBinder when there is none.
int FindBinder(std::u16string_view path);

// Index of the built-in binder of documents in use; kNoBinder when there is none.
int WorkingDocumentsIndex();

bool IsValidBinder(int index);
bool IsValidBinderFile(int index, int fileIndex);

// The binder at a valid index; the reference lasts until the library changes.
BinderFile& binderAt(int index);

// Loads the binder file `path` unless it is loaded already, and returns its index; kNoBinder when
// it cannot be opened. At the limit it tells the user and returns kTooManyBinders.
int LoadBinder(const std::u16string& path);

// Loads the binders that the settings name. One that cannot be reached or opened at the moment
// keeps its place in the list.
void RestoreBinders();

// Creates or empties the file `path` and loads it. A binder that is loaded already is left as it
// is. Results as above; the user is told of each failure.
int CreateBinder(const std::u16string& path);

// Reads the binder's file again. If the file has gone, the binder leaves the library.
void RefreshBinder(int index);

// Rebuilds the library from the list in the settings, which decides which binders it has and in
// which order. While the settings cannot be read, the library stays as it is.
void RefreshAllBinders();

// Adds the documents that the binder does not list yet, up to its limit, and tells the user when
// the limit is reached.
void AddFilesToBinder(int index, const std::vector<std::u16string>& paths);

// Removes a file from its binder without asking. A file removed from the documents in use goes to
// the recent list.
void RemoveFileRecord(int index, int fileIndex);

// The same for every file of the binder.
void RemoveAllFileRecords(int index);

// Ends the in-place edit of a binder's name. True when the name has changed; the user is told why a
// name is refused. The documents in use keep their name.
bool FinishBinderRename(int index, std::u16string_view typed);

// Renames the binder's file to a validated name. True on success.
bool RenameBinder(int index, const std::u16string& newName);

// Removes a binder from the library. Its file stays, and so do documents opened from it.
void CloseBinder(int index);

// True when there is a custom binder, be it one whose file could not be reached so far.
bool AnyCustomBinder();

// Removes every custom binder, even those that could not be reached so far: nothing else removes
// these. True when there was one.
bool CloseAllCustomBinders();

// Asks, closes the binder and deletes its file. True unless the user kept it.
bool DeleteBinder(int index);

// Where something dragged along a list is dropped.
struct DropPlace {
  int over = 0;        // index of the row under the pointer
  bool after = false;  // below that row instead of above it
};

// Moves a file within its binder, or a custom binder within the library; never above the documents
// in use. Returns the new index.
int MoveFileInBinder(int index, int fileIndex, DropPlace place);
int MoveBinder(int index, DropPlace place);

// True when a binder other than `exceptIndex` lists the document.
bool IsFileInOtherBinder(std::u16string_view path, int exceptIndex);

}  // namespace quillmere
