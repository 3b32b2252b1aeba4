#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/tree.h"
#include "session/binder_tree.h"

// The rows of the binder tree and what they stand for. A row's value has the index of its binder in
// the high 16 bits and in the low ones the index of its document or one of three markers.
namespace quillmere {

inline constexpr platform::Tree kBinderTree = platform::Tree::Binders;

inline constexpr std::uint32_t kNewBinderMarker = 65533;
inline constexpr std::uint32_t kAddDocumentMarker = 65534;
inline constexpr std::uint32_t kHeadMarker = 65535;
// A binder can hold more documents than can be numbered; the further ones are kept but not shown.
inline constexpr std::size_t kMostFileRows = kNewBinderMarker;

std::int32_t binderRowValue(std::size_t binderIndex, std::uint32_t low);

// What the row with this value stood for when it was made; of no kind for values of no row.
BinderRow binderRowOf(std::int32_t value);
// The selected row.
BinderRow selectedBinderRow();

// Two rows that stand for the same, wherever they are.
bool sameBinderRow(const BinderRow& one, const BinderRow& other);

// Where the row's binder, and its document, are in the library now; kNoBinder when they are gone.
int binderIndexOf(const BinderRow& row);
int fileIndexOf(const BinderRow& row);
bool isWorkingDocuments(const BinderRow& row);

BinderRow headRowOf(int binderIndex);
BinderRow fileRowOf(int binderIndex, int fileIndex);

// The tree's row for this, or the nearest to where it was; kNoTreeRow for a row of no kind.
platform::TreeRow nearestTreeRow(const BinderRow& row);

// The document that a row with this value was made for; null for other rows. Valid until the rows
// change.
ShownBinderFile* shownFile(std::int32_t value);

// What the row of a document reads.
std::u16string binderFileText(std::u16string_view path);

// What is shown while the pointer rests on the row: the full path. Empty for none.
std::u16string binderRowTip(std::int32_t value);

// The first or the last row beside the selected one; kNoTreeRow when none is selected.
platform::TreeRow lastSiblingOfSelected();
platform::TreeRow firstSiblingOfSelected();

}  // namespace quillmere
