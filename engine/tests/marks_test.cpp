// Highlights, strikeouts, notes, their pop-ups, and pictures that are stored once.

#include <string>
#include <utility>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "fpdf_edit.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

struct Box {
  float left, bottom, right, top;
};

// A page of |page_entries| with two dark bars that stand for lines of text.
std::string LinesPdf(const std::string& page_entries) {
  return MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                  Page("/Contents 4 0 R " + page_entries),
                  Stream("20 50 100 10 re 20 30 60 10 re f 150 10 10 80 re f")});
}

ScopedFPDFAnnotation AddMark(FPDF_PAGE page,
                             FPDF_ANNOTATION_SUBTYPE subtype,
                             const std::vector<Box>& boxes,
                             unsigned int alpha = 255) {
  ScopedFPDFAnnotation mark(FPDFPage_CreateAnnot(page, subtype));
  const bool highlight = subtype == FPDF_ANNOT_HIGHLIGHT;
  FPDFAnnot_SetColor(mark.get(), FPDFANNOT_COLORTYPE_Color, 255, highlight ? 255 : 0, 0, alpha);
  for (const Box& box : boxes) {
    const FS_QUADPOINTSF quad = {box.left, box.top,    box.right, box.top,
                                 box.left, box.bottom, box.right, box.bottom};
    FPDFAnnot_AppendAttachmentPoints(mark.get(), &quad);
  }
  return mark;
}

// Blue, green, red at a place in points of an upright page of 200 by 100.
std::vector<int> ColorAt(const std::string& pixels, int x, int y) {
  const size_t at = 4 * ((99 - y) * 200 + x);
  return {static_cast<unsigned char>(pixels[at]), static_cast<unsigned char>(pixels[at + 1]),
          static_cast<unsigned char>(pixels[at + 2])};
}

bool IsNear(const std::vector<int>& color, const std::vector<int>& other) {
  for (size_t i = 0; i < 3; ++i) {
    if (color[i] > other[i] + 2 || color[i] < other[i] - 2) {
      return false;
    }
  }
  return true;
}

const std::vector<int> kYellow = {0, 255, 255}, kBlack = {0, 0, 0}, kWhite = {255, 255, 255},
                       kRed = {0, 0, 255};

size_t CountOf(const std::string& text, const std::string& part) {
  size_t count = 0;
  for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

}  // namespace

void TestPopupsAreNotMade() {
  std::string notes;
  for (int i = 0; i < 50; ++i) {
    notes += "<< /Type /Annot /Subtype /Text /Contents (A note) /Rect [10 10 30 30] >> ";
  }
  const std::string pdf = LinesPdf("/Annots [" + notes + "]");
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  const std::string drawn = Pixels(page.get());
  const std::string saved = SaveWithoutId(document.get());
  Check(CountOf(saved, "/Popup") == 0, "no pop-ups");
  Check(Pixels(page.get()) == drawn && SaveWithoutId(document.get()) == saved,
        "notes add nothing when they are drawn again");
}

void TestForeignQuads() {
  // The corners of one box in the orders that programs write.
  const std::string orders[] = {"20 60 120 60 20 50 120 50", "20 50 120 50 120 60 20 60",
                                "20 60 120 60 120 50 20 50", "120 50 20 50 120 60 20 60"};
  for (const std::string& order : orders) {
    const std::string pdf = LinesPdf("/Annots [<< /Type /Annot /Subtype /Highlight /C [1 1 0] /QuadPoints [" +
                                     order + " 5 8 15 8 5 2 15 2] /Rect [5 2 120 60] >>]");
    ScopedFPDFDocument document = Load(pdf);
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
    const std::string pixels = Pixels(page.get());
    Check(ColorAt(pixels, 60, 55) == kBlack, "text under a highlight, corners " + order);
    Check(ColorAt(pixels, 10, 5) == kYellow, "a second quad, corners " + order);
    ScopedFPDFDocument white = Load(pdf);
    FPDFPageObj_SetFillColor(FPDFPage_GetObject(page.get(), 0), 255, 255, 255, 255);
    Check(ColorAt(Pixels(page.get()), 60, 55) == kYellow, "a highlight, corners " + order);
  }
}

void TestMarkAppearances() {
  const std::string pdf = LinesPdf("");
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  // Two quads that overlap, at half opacity.
  ScopedFPDFAnnotation highlight =
      AddMark(page.get(), FPDF_ANNOT_HIGHLIGHT, {{10, 70, 60, 90}, {40, 60, 90, 80}, {0, 0, 0, 0}}, 127);
  Check(QuillmereEngine_WriteMarkAppearance(highlight.get(), 0), "a highlight's appearance");
  ScopedFPDFAnnotation strikeout =
      AddMark(page.get(), FPDF_ANNOT_STRIKEOUT, {{100, 64, 140, 88}, {100, 30, 140, 54}});
  Check(QuillmereEngine_WriteMarkAppearance(strikeout.get(), 2), "a strikeout's appearance");
  ScopedFPDFAnnotation upright = AddMark(page.get(), FPDF_ANNOT_STRIKEOUT, {{166, 10, 190, 90}});
  Check(QuillmereEngine_WriteMarkAppearance(upright.get(), -1), "an upright strikeout's appearance");
  const std::string pixels = Pixels(page.get());
  Check(IsNear(ColorAt(pixels, 20, 85), {128, 255, 255}), "a highlight at half opacity");
  Check(ColorAt(pixels, 50, 75) == ColorAt(pixels, 20, 85), "overlapping quads");
  Check(ColorAt(pixels, 50, 95) == kWhite && ColorAt(pixels, 20, 65) == kWhite, "beside the quads");
  Check(ColorAt(pixels, 120, 75) == kRed && ColorAt(pixels, 120, 79) == kWhite, "a bar along x");
  Check(ColorAt(pixels, 178, 50) == kRed && ColorAt(pixels, 172, 50) == kWhite, "a bar along y");
  FS_RECTF rect = {};
  FPDFAnnot_GetRect(highlight.get(), &rect);
  Check(rect.left == 10 && rect.bottom == 60 && rect.right == 90 && rect.top == 90, "a mark's rectangle");

  unsigned int red, green, blue, alpha;
  Check(FPDFPageObj_GetFillColor(FPDFAnnot_GetObject(highlight.get(), 0), &red, &green, &blue, &alpha) &&
            red == 255 && green == 255 && blue == 0,
        "the colour of a mark's first object");
  // Written again, the appearance before is in no file; its number is free.
  constexpr size_t kFreeNumber = 20;
  const size_t size = Save(document.get()).size();
  for (int i = 0; i < 10; ++i) {
    Check(QuillmereEngine_WriteMarkAppearance(highlight.get(), 0), "an appearance written again");
  }
  Check(Save(document.get()).size() < size + 10 * kFreeNumber + 20, "one appearance for each mark");

  ScopedFPDFAnnotation empty = AddMark(page.get(), FPDF_ANNOT_HIGHLIGHT, {{5, 5, 5, 5}});
  Check(!QuillmereEngine_WriteMarkAppearance(empty.get(), 0) && !FPDFAnnot_HasKey(empty.get(), "AP"),
        "a mark without a quad of any size");
  ScopedFPDFAnnotation stamp(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
  Check(!QuillmereEngine_WriteMarkAppearance(stamp.get(), 0), "a stamp is no mark");
  Check(!QuillmereEngine_WriteMarkAppearance(nullptr, 0), "no mark");
}

void TestMarkEntries() {
  const std::string pdf = LinesPdf("");
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  ScopedFPDFAnnotation mark = AddMark(page.get(), FPDF_ANNOT_HIGHLIGHT, {{10, 70, 60, 90}});
  FPDFAnnot_SetStringValue(mark.get(), "RC", Wide("<p>Rich</p>"));
  Check(CountOf(Save(document.get()), "/Annots[<<") == 1, "a new annotation stands in the page");
  Check(QuillmereEngine_MakeAnnotIndirect(page.get(), 0), "an annotation of its own");
  Check(QuillmereEngine_MakeAnnotIndirect(page.get(), 0), "an annotation that is one already");
  Check(!QuillmereEngine_MakeAnnotIndirect(page.get(), 1) && !QuillmereEngine_MakeAnnotIndirect(page.get(), -1) &&
            !QuillmereEngine_MakeAnnotIndirect(nullptr, 0),
        "no annotation");
  Check(QuillmereEngine_RemoveAnnotEntry(mark.get(), "RC"), "removing an entry");
  Check(!QuillmereEngine_RemoveAnnotEntry(mark.get(), "RC"), "removing an entry that is not there");
  Check(!QuillmereEngine_RemoveAnnotEntry(mark.get(), nullptr) && !QuillmereEngine_RemoveAnnotEntry(nullptr, "RC"),
        "removing nothing");
  FPDFAnnot_SetStringValue(mark.get(), "Contents", Wide("Through the old handle"));
  const std::string saved = Save(document.get());
  Check(CountOf(saved, "/Annots[<<") == 0 && CountOf(saved, "/RC") == 0, "what is saved of it");
  Check(CountOf(saved, "Through the old handle") == 1, "its handle stays valid");
}

void TestPopupIndexes() {
  const std::string pdf = MakePdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>", Page("/Annots [4 0 R 5 0 R null 6 0 R 7 0 R 8 0 R]"),
       "<< /Subtype /Text /Popup 8 0 R >>", "<< /Subtype /Text >>", "<< /Subtype /Popup /Parent 5 0 R >>",
       "<< /Subtype /Text /Popup 4 0 R >>", "<< /Subtype /Popup >>"});
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  const int expected[] = {5, 3, -1, -1, -1, -1, -1};
  for (int i = 0; i < 7; ++i) {
    Check(QuillmereEngine_PopupIndex(page.get(), i) == expected[i], "the pop-up of annotation " + std::to_string(i));
  }
  Check(QuillmereEngine_PopupIndex(page.get(), -1) == -1 && QuillmereEngine_PopupIndex(nullptr, 0) == -1,
        "no annotation, no pop-up");
}

// A signature that the user deleted again must not be read out of the file.
void TestRemovedStampsAreNotWritten() {
  const auto countOf = [](const std::string& text, const std::string& part) {
    int count = 0;
    for (size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  };
  for (const std::string& pdf : {LinesPdf(""), MakePackedPdf(VariedObjects())}) {
    ScopedFPDFDocument document = Load(pdf);
    const std::string before = Save(document.get());
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
    const int old = FPDFPage_GetAnnotCount(page.get());
    for (const char* words : {"kept words", "gone words"}) {
      ScopedFPDFBitmap bitmap(FPDFBitmap_Create(2, 2, 0));
      FPDFBitmap_FillRect(bitmap.get(), 0, 0, 2, 1, *words == 'k' ? 0xFF406080 : 0xFF806040);
      ScopedFPDFAnnotation stamp(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
      FPDF_PAGEOBJECT image = FPDFPageObj_NewImageObj(document.get());
      Check(FPDFImageObj_SetBitmap(nullptr, 0, image, bitmap.get()), "a picture");
      Check(FPDFAnnot_AppendObject(stamp.get(), image), "a picture on a stamp");
      FPDFAnnot_SetStringValue(stamp.get(), "Words", Wide(words));
    }
    const std::string both = Save(document.get());
    Check(countOf(both, "/Subtype/Image") == countOf(before, "/Subtype/Image") + 2, "two stamps are written");
    Check(FPDFPage_RemoveAnnot(page.get(), old + 1), "taking a stamp away");
    const std::string after = Save(document.get());
    Check(countOf(after, "/Subtype/Image") == countOf(before, "/Subtype/Image") + 1, "its picture goes with it");
    Check(after.find("gone words") == after.npos, "its words go with it");
    ScopedFPDFDocument again = Load(after);
    ScopedFPDFPage shown(FPDF_LoadPage(again.get(), 0));
    Check(FPDFPage_GetAnnotCount(shown.get()) == old + 1 && Pixels(shown.get()) == Pixels(page.get()), "the other stays");
  }
}

void TestSharedImages() {
  const int kSide = 128;
  ScopedFPDFBitmap bitmap(FPDFBitmap_Create(kSide, kSide, 1));
  unsigned char* bytes = static_cast<unsigned char*>(FPDFBitmap_GetBuffer(bitmap.get()));
  unsigned int noise = 1;
  for (int i = 0; i < 4 * kSide * kSide; ++i) {
    noise = noise * 1664525 + 1013904223;
    bytes[i] = static_cast<unsigned char>(noise >> 24);
  }
  // The page's pixels, and the file, with |stamps| stamps of the same picture.
  const auto saved = [&](int stamps, bool shared) {
    const std::string pdf = LinesPdf("");
    ScopedFPDFDocument document = Load(pdf);
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
    FPDF_PAGEOBJECT original = FPDFPageObj_NewImageObj(document.get());
    Check(FPDFImageObj_SetBitmap(nullptr, 0, original, bitmap.get()), "a picture");
    for (int i = 0; i < stamps; ++i) {
      ScopedFPDFAnnotation stamp(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
      const float left = 5.0f * i;
      const FS_RECTF rect = {left, 40, left + 30, 10};
      FPDFAnnot_SetRect(stamp.get(), &rect);
      FPDF_PAGEOBJECT image = shared ? QuillmereEngine_ShareImage(original) : FPDFPageObj_NewImageObj(document.get());
      if (!shared) {
        FPDFImageObj_SetBitmap(nullptr, 0, image, bitmap.get());
      }
      const FS_MATRIX matrix = {30, 0, 0, 30, left, 10};
      FPDFPageObj_SetMatrix(image, &matrix);
      Check(FPDFAnnot_AppendObject(stamp.get(), image), "a picture on a stamp");
    }
    FPDFPageObj_Destroy(original);
    return std::pair(Pixels(page.get()), Save(document.get()));
  };
  const auto one = saved(1, true), many = saved(20, true), apart = saved(20, false);
  Check(many.first == apart.first && many.first != one.first, "pictures that are stored once are drawn as others");
  Check(many.second.size() < one.second.size() + 20'000, "twenty stamps with one picture");
  Check(apart.second.size() > 10 * one.second.size(), "twenty stamps with twenty pictures");

  // The picture of a stamp that the file has.
  ScopedFPDFDocument document = Load(many.second);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  Check(Pixels(page.get()) == many.first, "shared pictures in a saved file");
  ScopedFPDFAnnotation stamp(FPDFPage_GetAnnot(page.get(), 0));
  FPDF_PAGEOBJECT image = QuillmereEngine_ShareImage(FPDFAnnot_GetObject(stamp.get(), 0));
  ScopedFPDFAnnotation added(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
  const FS_RECTF rect = {150, 90, 190, 50};
  FPDFAnnot_SetRect(added.get(), &rect);
  const FS_MATRIX matrix = {40, 0, 0, 40, 150, 50};
  Check(image && FPDFPageObj_SetMatrix(image, &matrix) && FPDFAnnot_AppendObject(added.get(), image),
        "the picture of a stamp in the file");
  Check(Save(document.get()).size() < many.second.size() + 2000, "it is not stored again");
  Check(!QuillmereEngine_ShareImage(nullptr) && !QuillmereEngine_ShareImage(FPDFPage_GetObject(page.get(), 0)),
        "no picture to share");
  FPDF_PAGEOBJECT without = FPDFPageObj_NewImageObj(document.get());
  Check(!QuillmereEngine_ShareImage(without), "an image object without a picture");
  FPDFPageObj_Destroy(without);
}

void WriteMarksToCompare(const std::string& folder) {
  const std::string boxes[] = {"", "/CropBox [10 5 180 95]", "/MediaBox [-50 -20 250 120] /CropBox [-30 -10 200 100]"};
  for (size_t box = 0; box < 3; ++box) {
    for (int turns = 0; turns < 4; ++turns) {
      const std::string pdf = LinesPdf(boxes[box] + " /Rotate " + std::to_string(90 * turns));
      ScopedFPDFDocument document = Load(pdf);
      {
        ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
        // A selection over two lines, an overlap, and lines struck out along x and y.
        QuillmereEngine_WriteMarkAppearance(
            AddMark(page.get(), FPDF_ANNOT_HIGHLIGHT, {{18, 48, 122, 62}, {18, 28.3f, 82, 49}}, 140).get(), 0);
        QuillmereEngine_WriteMarkAppearance(
            AddMark(page.get(), FPDF_ANNOT_STRIKEOUT, {{60.5f, 66, 140, 88}, {20, 28, 82, 42}}).get(), 0);
        QuillmereEngine_WriteMarkAppearance(
            AddMark(page.get(), FPDF_ANNOT_STRIKEOUT, {{144, 10, 166, 90}}).get(), 1);
        for (int i = 0; i < FPDFPage_GetAnnotCount(page.get()); ++i) {
          QuillmereEngine_MakeAnnotIndirect(page.get(), i);
          ScopedFPDFAnnotation mark(FPDFPage_GetAnnot(page.get(), i));
          FPDFAnnot_SetFlags(mark.get(), FPDF_ANNOT_FLAG_PRINT);
        }
      }
      WriteToCompare(folder, "marks-" + std::to_string(box) + "-" + std::to_string(90 * turns), document.get());
    }
  }
}
