#pragma once

#include <string>
#include <vector>

// The built-in binder of documents in use. It stands first in the library and is kept in a file of
// its own. A viewer shows it empty and keeps no file.
namespace quillmere {

// How a document joins the working documents.
enum WorkingDocsMode : int {
  kWorkingDocsToHead = 0,     // it moves to the head of the list
  kWorkingDocsKeepPlace = 1,  // it keeps its place when listed already
  kWorkingDocsLeaveAlone = 2,
};

// Lists documents among those in use, one after the other. The tree follows once the present
// message is done, the file once the window is painted.
void AddToWorkingDocuments(const std::vector<std::u16string>& paths, WorkingDocsMode how);
void AddToWorkingDocuments(const std::u16string& path, WorkingDocsMode how);

// Writes the list to its file unless the file has it already; says nothing when that fails.
void SaveWorkingDocuments();

// Makes the built-in binder unless it is there, with what it held last time where that is restored;
// where it is not, its file is deleted. Without a data folder there is no such binder.
void LoadWorkingDocuments();

// The file that holds the list of documents in use; empty without a data folder.
std::u16string WorkingDocsPath();
bool IsWorkingDocsPath(const std::u16string& path);

}  // namespace quillmere
