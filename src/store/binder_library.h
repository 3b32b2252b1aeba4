#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/binder.h"

// The binders of this session: the documents in use first, then the custom binders in the order of
// the panel. A binder is named by its index, a file by its index within the binder. A viewer
// changes none of them.
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

// The binder of a valid index, until the library changes.
BinderFile& binderAt(int index);

// Loads the binder file `path`, unless it is loaded already; its index. kNoBinder when it cannot be
// opened. At the limit the user is told, and it gives kTooManyBinders.
int LoadBinder(const std::u16string& path);

// Loads the binders that the settings name. One that cannot be reached or opened just now keeps its
// place there.
void RestoreBinders();

// Makes the file `path` anew, empty, and loads it. A binder that is loaded already is left as it
// is. Results as above; the user is told of each failure.
int CreateBinder(const std::u16string& path);

// Reads the binder's file again. A binder whose file has gone leaves the library.
void RefreshBinder(int index);

// Makes the library anew from the list in the settings, which decides which binders it has and in
// which order.
void RefreshAllBinders();

// Adds the documents that the binder does not list yet, up to its limit, which the user is told of.
void AddFilesToBinder(int index, const std::vector<std::u16string>& paths);

// Takes a file out of its binder without a question. From the documents in use it goes to the
// recent list.
void RemoveFileRecord(int index, int fileIndex);

// The same for every file of the binder.
void RemoveAllFileRecords(int index);

// Ends the in-place edit of a binder's name. True when it has another name then; the user is told
// why a name is refused. The documents in use keep theirs.
bool FinishBinderRename(int index, std::u16string_view typed);

// Gives the binder's file the name, which was validated. True when it has it then.
bool RenameBinder(int index, const std::u16string& newName);

// Takes a binder out of the library. Its file stays, and so does what is open from it.
void CloseBinder(int index);

// Asks, closes the binder and deletes its file. True unless the user kept it.
bool DeleteBinder(int index);

// Where something is dropped that was dragged along a list.
struct DropPlace {
  int over = 0;        // index of the row under the pointer
  bool after = false;  // below that row instead of above it
};

// Moves a file within its binder, or a custom binder within the library; never above the documents
// in use. The index that it has then.
int MoveFileInBinder(int index, int fileIndex, DropPlace place);
int MoveBinder(int index, DropPlace place);

// True when a binder other than `exceptIndex` lists the document.
bool IsFileInOtherBinder(std::u16string_view path, int exceptIndex);

// Stores page and view of the pane in the binder that its document was opened from. In Book pane 0
// stands for both.
void SaveCurrentView(int pane);

// The same for every document that is open.
void SaveCurrentViews();

}  // namespace quillmere
