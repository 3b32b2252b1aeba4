#pragma once

#include <string>
#include <vector>

// The recent list: documents that left the documents in use, newest first. Every change is saved at
// once.
namespace quillmere {

// Puts the documents at the front, in this order, and cuts the list to its limit.
void AddToRecentFiles(const std::vector<std::u16string>& paths);

// Removes a document from the list.
void RemoveFromRecentFiles(const std::u16string& path);

// Brings the list in line with its settings: empty while it is off, no longer than its limit.
void ApplyRecentFilesSettings();

// Empties the list if the user agrees.
void ClearRecentFiles();

}  // namespace quillmere
