#pragma once

#include <string>

namespace quillmere {

// How a document joins the working documents.
enum WorkingDocsMode : int {
  kWorkingDocsToHead = 0,     // it moves to the head of the list
  kWorkingDocsKeepPlace = 1,  // it keeps its place when listed already
  kWorkingDocsLeaveAlone = 2,
};

// Lists a document among those in use.
void AddToWorkingDocuments(const std::u16string& path, WorkingDocsMode how);

// Makes the built-in binder of documents in use, with the contents it had last time.
void LoadWorkingDocuments();

// Takes a document out of the recent list and saves the list if that changed it.
void RemoveFromRecentFiles(const std::u16string& path);

// The file that holds the list of documents in use; empty without a data folder.
std::u16string WorkingDocsPath();

}  // namespace quillmere
