#pragma once

#include <fpdfview.h>

#include <cstdint>
#include <optional>
#include <string>

#include "annot/picture_work.h"
#include "platform/pictures.h"
#include "session/stamp_entry.h"

// The pictures of library entries, in the sizes that are needed.
namespace quillmere {

inline constexpr int kThumbnailHeight = 80;  // pixels at 96 DPI, at most

// The size of a file's picture. Of a PNG file only the head is read; others are decoded.
std::optional<PictureSize> stampPictureSize(const std::u16string& path);

// The entry's picture in a size that is quick to draw; made on first use. When its file cannot be
// decoded by then it is the thumbnail; null without one, or when there is no such entry.
platform::SharedPicture stampBitmap(std::int32_t index);

// The picture itself, or a copy of a large one that is quick to draw.
platform::SharedPicture quickToDraw(const platform::SharedPicture& picture);

// The largest copy of the entry's picture in memory; null when there is none.
platform::SharedPicture keptStampPicture(const StampEntry& entry);

// The picture with all of its pixels, from the entry's file; the copy in memory when that cannot be
// read.
platform::SharedPicture wholeStampPicture(std::int32_t index);

// Makes the entry's thumbnail when it has none. False when its file cannot be decoded.
bool makeThumbnail(StampEntry& entry);

// A bitmap with these pixels, which the caller destroys; null when memory ran out.
FPDF_BITMAP pdfBitmapOf(const platform::Picture& picture);

// The same of a file; null when it cannot be decoded.
FPDF_BITMAP LoadStampBitmapForPdf(const std::u16string& path);

}  // namespace quillmere
