#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The files of binders with unsaved changes, and what is done about all of them.
namespace quillmere {

// A file of a binder with changes that its file lacks.
struct UnsavedFile {
  int binderIndex = 0;
  int fileIndex = 0;
  std::u16string path;   // as in the binder
  std::u16string label;  // base name, then the binder's name
  bool isOpen = false;
  bool save = true;  // false discards the changes
};

// The row of a file of a loaded binder.
UnsavedFile unsavedFileOf(int binderIndex, int fileIndex);

// A row for each document on the shelf, in the order in which they came there, under the first
// binder that lists it. Documents that no loaded binder lists have none.
std::vector<UnsavedFile> BuildUnsavedList();

// Saves the rows that are to be saved, and removes from `files` what could not be saved. True when
// everything was.
bool saveChosenFiles(std::vector<UnsavedFile>& files);

// Saves every document with unsaved changes.
void SaveAll();

// Asks whether the unsaved changes of so many files are to be discarded.
bool confirmDiscardAll(std::size_t count);

// Tells the user that there is nothing to save or discard.
void reportNothingUnsaved();

}  // namespace quillmere
