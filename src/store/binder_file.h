#pragma once

#include <string>
#include <string_view>

#include "session/binder.h"

// Binder files: UTF-8 text with a byte order mark and CR LF line ends. A head line for each flag of
// the binder, then a line for each document with its saved view after tabs.
namespace quillmere {

// A binder holds this many files one by one, more than any panel shows. The lines of further ones
// are kept as text and written back, since millions of short lines would fill the memory.
inline constexpr std::size_t kMostFilesHeld = 100'000;

// The name that a binder gets from its file: what follows the last backslash, without the last
// extension.
std::u16string BinderNameFromPath(std::u16string_view path);

// Fills `binder` from a file's bytes. Invalid lines and fields are dropped one by one; flags that
// no line names keep their values. False, with the binder unchanged, for text that the system's
// runtime does not read either (big-endian UTF-16).
bool parseBinder(std::string_view bytes, BinderFile& binder);

// The bytes of a binder's file.
std::string binderBytes(const BinderFile& binder);

// Empties the binder and reads it from `path`, which gives it its name. True when the file could be
// opened, whatever it holds.
bool LoadBinderFile(const std::u16string& path, BinderFile& binder);

// The list of documents in use may not have been readable when the program started. Adds what its
// file holds, once it can be read: before anything is removed from the list, or the file's own
// documents would come back, and before it is written over. The tree follows. False when it still
// cannot be read.
bool catchUpWithFile(BinderFile& binder);

// Whether this process writes the binder's file. A viewer writes none; a main window beside another
// one leaves the list of documents in use to that one.
bool keepsBinderFile(const BinderFile& binder);

// Writes the binder's whole file, which stays as it was if that fails. True on success. Does not
// report failures to the user.
bool WriteBinderFile(BinderFile& binder);

// The same, but tells the user when a file that this process writes could not be written.
bool SaveBinderFile(BinderFile& binder);

}  // namespace quillmere
