#pragma once

#include <string>

#include "platform/file_in_writing.h"

namespace quillmere {

// A new file in the same folder as another one, so that it can take its place in one step.
struct SiblingFile {
  platform::FileInWritingHandle file;  // null when none could be created
  std::u16string path;                 // may be longer than other paths
};

// Creates a sibling of `path` under a name that no file has.
SiblingFile startSibling(const std::u16string& path);

// The same for a document, whose user may come to see the file: it is named after the document,
// with ".tmp" at the end, unless that name is too long or taken.
SiblingFile startNamedSibling(const std::u16string& path);

// True when `sibling` has that name.
bool isNamedSibling(const std::u16string& sibling, const std::u16string& path);

// Flushes and closes the file. False when the system cannot promise that it is whole.
bool finishSibling(SiblingFile& sibling);

// Puts a finished sibling in the place of the file at `path`, if there is one. Waits about a second
// for a program that has one of them open, such as a virus scanner, but not for a file that must
// not be written or that somebody writes to meanwhile. False on failure, with both unchanged.
bool takePlace(const std::u16string& sibling, const std::u16string& path);

}  // namespace quillmere
