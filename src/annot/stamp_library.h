#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The user's stamps: PNG files in one folder, and "stamps.lst", which names them in their order.
// The date stamp stands before them.
namespace quillmere {

inline constexpr int kMostUserStamps = 50;

// Rebuilds the library from the folder. Reads the sizes of the pictures, not their pixels.
void LoadStampLibrary();

// Writes "stamps.lst", unless it is there and cannot be read. Failure is ignored and leaves the
// list as it was.
void SaveStampList();

// Brings the library up to date when the panel opens: today's date stamp, files that came or went.
// Pending stamps keep the picture that they show. Decodes only the files of their entries.
void refreshStampLibrary();

// Takes an entry out whose file cannot be decoded. The list names it until it is next saved; stamps
// on pages keep the picture as far as memory has it.
void dropUndecodableStamp(std::int32_t index);

// Brings a library without user stamps up to date when its list names some: it may have been in use
// when the library was loaded.
void readMissedList();

// Takes a user stamp out of the library; its file stays. Stamps on pages keep the picture.
void RemoveStamp(std::int32_t index);

// Full paths of the PNG files in the folder, the date stamp excepted; those that are in no entry
// only, if `orphansOnly`. Nobody knows which those are while "stamps.lst" cannot be read.
std::vector<std::u16string> ListStampFiles(bool orphansOnly);

// Deletes all user stamps with their files, and pending placements of them. Does not ask.
void DeleteAllStamps();

// Asks, and deletes files that no entry uses.
void ClearOrphanedStamps();

bool isStampIndex(std::int32_t index);
int countUserStamps();
// Whether a user stamp has this file name, ignoring case.
bool hasUserStamp(std::u16string_view fileName);

// Appends an entry for the file, with this name, if its picture has a size. False when it has none.
bool appendStamp(const std::u16string& path, std::u16string_view name, bool isSystem);

}  // namespace quillmere
