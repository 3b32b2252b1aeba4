#pragma once

#include <fpdf_annot.h>
#include <fpdfview.h>

#include "platform/pictures.h"

namespace quillmere {

// The picture of the first image in an annotation's appearance, upright and with its mask applied,
// in the image's own size, at most 16 megapixels. Null when there is none.
platform::SharedPicture ExtractAnnotImage(FPDF_DOCUMENT document, FPDF_PAGE page,
                                          FPDF_ANNOTATION annotation);

}  // namespace quillmere
