#include "annot/write_placements.h"

#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <quillmere_engine.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "annot/annotations.h"
#include "annot/placement_box.h"
#include "annot/placement_fonts.h"
#include "annot/placement_record.h"
#include "annot/placement_text.h"
#include "annot/placements.h"
#include "annot/stamp_library.h"
#include "annot/stamp_pictures.h"
#include "session/document_slots.h"
#include "session/pdfium_handles.h"
#include "session/session.h"

namespace quillmere {

namespace {

struct PageObjectDestroyer {
  void operator()(FPDF_PAGEOBJECT object) const { FPDFPageObj_Destroy(object); }
};
using PageObjectHandle =
    std::unique_ptr<std::remove_pointer_t<FPDF_PAGEOBJECT>, PageObjectDestroyer>;

struct FontCloser {
  void operator()(FPDF_FONT font) const { FPDFFont_Close(font); }
};
using FontHandle = std::unique_ptr<std::remove_pointer_t<FPDF_FONT>, FontCloser>;

// What annotations of one document are made of: image objects whose picture is stored once however
// many annotations show it, and fonts, each opened when it is first used.
class Resources {
 public:
  explicit Resources(FPDF_DOCUMENT document) : document_(document) {}

  // An image object with the picture of a stamp; null when there is none.
  PageObjectHandle stamp(const Placement& placement) {
    if (!isStampIndex(placement.stampIndex)) return picture(placement.image);
    const auto known = library_.find(placement.stampIndex);
    if (known != library_.end()) return copyOf(known->second);
    const StampEntry& entry = session.stampLibrary[static_cast<std::size_t>(placement.stampIndex)];
    FPDF_BITMAP bitmap = LoadStampBitmapForPdf(entry.path);
    if (bitmap == nullptr && entry.bitmap) bitmap = pdfBitmapOf(*entry.bitmap);
    if (bitmap == nullptr) return picture(placement.image);
    return copyOf(library_[placement.stampIndex] = imageOf(bitmap));
  }

  PageObjectHandle picture(const platform::SharedPicture& shown) {
    if (!shown) return nullptr;
    const auto known = pictures_.find(shown);
    if (known != pictures_.end()) return copyOf(known->second);
    return copyOf(pictures_[shown] = imageOf(pdfBitmapOf(*shown)));
  }

  // The codes are the font's own: PDFium would look for them by character, and takes the first of
  // two that look alike and no code at all for a hard blank.
  PageObjectHandle text(const Placement& placement, const std::vector<std::uint32_t>& codes) {
    const FPDF_FONT font = fontOf(placement.fontIndex);
    if (font == nullptr) return refuse();
    PageObjectHandle object(
        FPDFPageObj_CreateTextObj(document_, font, static_cast<float>(placement.fontSize)));
    if (!object) return refuse();
    FPDFText_SetCharcodes(object.get(), codes.data(), codes.size());
    const std::uint32_t color = textColor(placement.colorIndex);
    FPDFPageObj_SetFillColor(object.get(), color >> 16, color >> 8 & 0xFF, color & 0xFF, 255);
    return object;
  }

  // True when PDFium could not make an object that there is something to make of.
  bool refused() const { return refused_; }

 private:
  PageObjectHandle refuse() {
    refused_ = true;
    return nullptr;
  }

  PageObjectHandle imageOf(FPDF_BITMAP bitmap) {
    const PdfBitmapHandle owner(bitmap);
    PageObjectHandle image(FPDFPageObj_NewImageObj(document_));
    if (!bitmap || !image || !FPDFImageObj_SetBitmap(nullptr, 0, image.get(), bitmap))
      return refuse();
    return image;
  }

  PageObjectHandle copyOf(const PageObjectHandle& image) {
    PageObjectHandle copy(image ? QuillmereEngine_ShareImage(image.get()) : nullptr);
    return copy ? std::move(copy) : refuse();
  }

  FPDF_FONT fontOf(std::int32_t row) {
    FontHandle& font =
        fonts_[row >= 0 && row < kPlacementFonts ? static_cast<std::size_t>(row) : 0];
    if (!font) font.reset(FPDFText_LoadStandardFont(document_, placementFont(row).baseFont));
    return font.get();
  }

  FPDF_DOCUMENT document_;
  std::map<std::int32_t, PageObjectHandle> library_;
  std::map<platform::SharedPicture, PageObjectHandle> pictures_;
  std::array<FontHandle, kPlacementFonts> fonts_;
  bool refused_ = false;
};

// The appearance of a placement; null when it cannot be made.
using ObjectMaker = PageObjectHandle (*)(Resources& resources, Placement& placement);

PageObjectHandle placed(PageObjectHandle image, const Placement& placement) {
  const FS_MATRIX matrix = placementMatrix(placement);
  if (image) FPDFPageObj_SetMatrix(image.get(), &matrix);
  return image;
}

PageObjectHandle stampObject(Resources& resources, Placement& placement) {
  return placed(resources.stamp(placement), placement);
}

// A standard font has no glyphs for other scripts, so such a text is written as its picture.
PageObjectHandle textObject(Resources& resources, Placement& placement) {
  const std::optional<std::vector<std::uint32_t>> codes = standardFontCodes(placement.text);
  if (!codes) return placed(resources.picture(placementPicture(placement)), placement);
  PageObjectHandle object = resources.text(placement, *codes);
  if (!object) return nullptr;
  const FS_MATRIX matrix = textDropMatrix(
      placement, measureTextDrop(placement.text, placement.fontSize, placement.fontIndex));
  FPDFPageObj_Transform(object.get(), matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f);
  return object;
}

// Readers do not print annotations without the Print flag.
void describe(FPDF_ANNOTATION annotation, const Placement& placement) {
  const std::u16string record = FormatPlacementRecord(placement);
  std::vector<FPDF_WCHAR> units(record.begin(), record.end());
  units.push_back(0);
  FPDFAnnot_SetStringValue(annotation, kPlacementKey, units.data());
  FPDFAnnot_SetFlags(annotation, FPDF_ANNOT_FLAG_PRINT);
}

bool addAnnotation(FPDF_PAGE page, PageObjectHandle object, const Placement& placement) {
  AnnotationHandle annotation(FPDFPage_CreateAnnot(page, FPDF_ANNOT_STAMP));
  if (!annotation) return false;
  const int index = FPDFPage_GetAnnotCount(page) - 1;
  const FS_RECTF rect = PlacementAnnotRect(placement);
  FPDFAnnot_SetRect(annotation.get(), &rect);
  if (!FPDFAnnot_AppendObject(annotation.get(), object.get())) {
    annotation.reset();
    FPDFPage_RemoveAnnot(page, index);
    return false;
  }
  static_cast<void>(object.release());  // the annotation's now
  describe(annotation.get(), placement);
  annotation.reset();
  QuillmereEngine_MakeAnnotIndirect(page, index);
  return true;
}

// A blank text is nothing to write.
bool pendingOf(const Placement& placement, PlacementKind kind) {
  const bool blank = kind == PlacementKind::TextDrop && isBlankText(placement.text);
  return placement.pending() && placement.kind == kind && !blank;
}

struct WrittenPlacements {
  AddedAnnotations added;
  bool all = true;  // false when one stayed out that is not just without a picture
};

std::vector<std::int32_t> pagesWithPending(PlacementKind kind) {
  std::vector<std::int32_t> pages;
  for (const auto& [page, list] : session.placements) {
    const bool any = std::any_of(list.begin(), list.end(), [kind](const Placement& placement) {
      return pendingOf(placement, kind);
    });
    if (any) pages.push_back(page);
  }
  return pages;
}

void writePage(FPDF_PAGE page, std::int32_t pageIndex, PlacementKind kind, ObjectMaker make,
               Resources& resources, WrittenPlacements& written) {
  for (Placement& placement : session.placements[pageIndex]) {
    if (!pendingOf(placement, kind)) continue;
    PageObjectHandle object = make(resources, placement);
    if (!object) continue;
    if (addAnnotation(page, std::move(object), placement)) {
      written.added.push_back({pageIndex, FPDFPage_GetAnnotCount(page) - 1});
    } else {
      written.all = false;
    }
  }
}

WrittenPlacements writePending(FPDF_DOCUMENT document, PlacementKind kind, ObjectMaker make) {
  WrittenPlacements written;
  if (session.viewerRole || document == nullptr || document != session.placementDocument)
    return written;
  const std::vector<std::int32_t> pages = pagesWithPending(kind);
  if (pages.empty()) return written;
  separatePagesToAnnotate(document);
  Resources resources(document);
  for (const std::int32_t pageIndex : pages) {
    const ReachedPage page(document, pageIndex);
    if (page.get() == nullptr) {
      written.all = false;
      continue;
    }
    writePage(page.get(), pageIndex, kind, make, resources, written);
  }
  if (resources.refused()) written.all = false;
  if (!written.added.empty()) forgetAnnotationSearch();
  // The document in memory differs from its file now, even if it is never saved.
  for (const int pane : panesHolding(document)) {
    if (!written.added.empty()) markAltered(documentSlotOf(pane));
  }
  return written;
}

WrittenPlacements writeBothKinds(FPDF_DOCUMENT document) {
  WrittenPlacements written = writePending(document, PlacementKind::Stamp, stampObject);
  const WrittenPlacements texts = writePending(document, PlacementKind::TextDrop, textObject);
  written.added.insert(written.added.end(), texts.added.begin(), texts.added.end());
  written.all = written.all && texts.all;
  return written;
}

// The last one first: those below it keep their indexes.
void takeBack(FPDF_DOCUMENT document, const AddedAnnotations& added) {
  for (auto last = added.rbegin(); last != added.rend(); ++last) {
    const ReachedPage page(document, last->page);
    FPDFPage_RemoveAnnot(page.get(), last->index);
  }
  if (!added.empty()) forgetAnnotationSearch();
}

}  // namespace

AddedAnnotations WritePendingStamps(FPDF_DOCUMENT document) {
  return writePending(document, PlacementKind::Stamp, stampObject).added;
}

AddedAnnotations WritePendingTextDrops(FPDF_DOCUMENT document) {
  return writePending(document, PlacementKind::TextDrop, textObject).added;
}

AddedAnnotations writePendingPlacements(FPDF_DOCUMENT document) {
  return writeBothKinds(document).added;
}

bool writeWithPlacements(FPDF_DOCUMENT document, const std::function<bool()>& write) {
  const WrittenPlacements written = writeBothKinds(document);
  if (written.all && write()) return true;
  takeBack(document, written.added);
  return false;
}

}  // namespace quillmere
