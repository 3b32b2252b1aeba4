// Form fields and signatures as they are drawn.

#include <string>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

std::string Appearance(const std::string& color) {
  return Stream(color + " rg 0 0 50 20 re f", "/Type /XObject /Subtype /Form /BBox [0 0 50 20]");
}

// One page whose annotations are |widgets|; object 5 is a font, objects from 6 on are |more|.
std::string FormPdf(const std::string& form,
                    const std::string& widgets,
                    const std::vector<std::string>& more) {
  std::vector<std::string> objects = {
      "<< /Type /Catalog /Pages 2 0 R /AcroForm << /DA (/F 0 Tf 0 g) /DR << /Font << /F 5 0 R >> >> " +
          form + " >> >>",
      "<< /Type /Pages /Kids [3 0 R] /Count 1 >>", Page("/Contents 4 0 R /Annots [" + widgets + "]"),
      Stream("0 0 1 rg 150 80 40 15 re f"), "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
  objects.insert(objects.end(), more.begin(), more.end());
  return MakePdf(objects);
}

std::string FirstPage(const std::string& pdf, int flags = FPDF_ANNOT) {
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  return Pixels(page.get(), flags);
}

// Blue, green and red of the pixel |x| from the left and |y| from the bottom.
std::vector<int> ColorAt(const std::string& pixels, int x, int y) {
  const size_t at = 4 * ((99 - y) * 200 + x);
  return {static_cast<unsigned char>(pixels[at]), static_cast<unsigned char>(pixels[at + 1]),
          static_cast<unsigned char>(pixels[at + 2])};
}

std::string Widget(const std::string& entries, const std::string& rect = "10 10 60 30") {
  return "<< /Type /Annot /Subtype /Widget /Rect [" + rect + "] " + entries + " >>";
}

// A page with what forms hold: buttons in two states, a signature that is turned, and one whose
// appearance is stretched.
std::string FieldsToCompare(const std::string& page_entries) {
  const std::string cross = Stream("0 0 1 RG 2 w 0 0 m 20 20 l 0 20 m 20 0 l S",
                                   "/Type /XObject /Subtype /Form /BBox [0 0 20 20]");
  const std::string arrow = Stream("1 0 0 rg 0 0 m 40 10 l 0 20 l f",
                                   "/Type /XObject /Subtype /Form /BBox [0 0 40 20] /Matrix [0 1 -1 0 20 0]");
  const std::string signed_by = " /V << /Type /Sig /Filter /Adobe.PPKLite /Contents <00> >>";
  const std::string states = " /AP << /N << /On 10 0 R /Off 11 0 R >> >>";
  return MakePdf(
      {"<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [6 0 R 7 0 R 8 0 R 9 0 R] >> >>",
       "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
       Page("/Contents 4 0 R /Annots [6 0 R 7 0 R 8 0 R 9 0 R] " + page_entries),
       Stream("0.9 g 10 10 180 80 re f"), "null",
       Widget("/FT /Btn /T (a) /F 4 /AS /On" + states, "20 60 40 80"),
       Widget("/FT /Btn /T (b) /F 4 /AS /Off" + states, "60 60 80 80"),
       Widget("/FT /Sig /T (c) /F 4 /AP << /N 12 0 R >>" + signed_by, "100 20 120 60"),
       Widget("/FT /Sig /T (d) /F 4 /AP << /N 10 0 R >>" + signed_by, "20 20 90 40"), cross,
       Stream("0 0.5 0 rg 5 5 10 10 re f", "/Type /XObject /Subtype /Form /BBox [0 0 20 20]"), arrow});
}

const std::vector<int> kRed = {0, 0, 255}, kGreen = {0, 255, 0}, kWhite = {255, 255, 255};

// How many pixels of a box are dark.
int DarkIn(const std::string& pixels, int left, int bottom, int right, int top) {
  int dark = 0;
  for (int y = bottom; y < top; ++y) {
    for (int x = left; x < right; ++x) {
      dark += ColorAt(pixels, x, y)[1] < 128;
    }
  }
  return dark;
}

}  // namespace

void TestFieldsAreDrawn() {
  const std::string pixels =
      FirstPage(FormPdf("", "6 0 R 7 0 R 8 0 R",
                        {Widget("/FT /Sig /AP << /N 9 0 R >>"),
                         Widget("/FT /Btn /AS /On /AP << /N << /On 10 0 R /Off 9 0 R >> >>", "10 40 60 60"),
                         Widget("/FT /Tx /V (No appearance) /DA (/F 12 Tf 0 g)", "10 70 140 90"),
                         Appearance("1 0 0"), Appearance("0 1 0")}));
  Check(ColorAt(pixels, 30, 20) == kRed, "a signature's appearance");
  Check(ColorAt(pixels, 30, 50) == kGreen, "a button in its state");
  Check(DarkIn(pixels, 10, 70, 140, 90) > 100, "a text field without an appearance");
  Check(ColorAt(pixels, 170, 90) == std::vector<int>({255, 0, 0}), "the page beside its fields");

  const std::string plain = FormPdf("", "", {});
  Check(FirstPage(plain, FPDF_ANNOT) == FirstPage(plain, 0), "a page without fields");
  const std::string broken = FormPdf(
      "/NeedAppearances true", "6 0 R 7 0 R null 99 0 R",
      {Widget("/FT /Tx /V 7 0 R /MaxLen -1 /Ff -1"), Widget("/FT /Ch /Opt [[] 7 0 R] /I [-1 9] /TI 1000000")});
  Check(!FirstPage(broken).empty(), "fields of nonsense");
}

void TestFieldFlags() {
  const auto color = [](int flags, int rendering) {
    return ColorAt(FirstPage(FormPdf("", "6 0 R",
                                     {Widget("/FT /Sig /F " + std::to_string(flags) + " /AP << /N 7 0 R >>"),
                                      Appearance("1 0 0")}),
                             FPDF_ANNOT | rendering),
                   30, 20);
  };
  Check(color(0, 0) == kRed && color(0, FPDF_PRINTING) == kWhite, "a field for the screen");
  Check(color(4, 0) == kRed && color(4, FPDF_PRINTING) == kRed, "a field for screen and paper");
  Check(color(2, 0) == kWhite && color(6, FPDF_PRINTING) == kWhite, "a hidden field");
  Check(color(32, 0) == kWhite && color(36, FPDF_PRINTING) == kRed, "a field for paper");
}

void TestFieldsOutOfDate() {
  const std::string field = Widget("/FT /Tx /V (mmmm) /DA (/F 12 Tf 0 g) /AP << /N 7 0 R >>");
  const std::string sound = FirstPage(FormPdf("", "6 0 R", {field, Appearance("1 0 0")}));
  Check(ColorAt(sound, 50, 12) == kRed, "the file's own appearance of a field");
  const std::string pdf = FormPdf("/NeedAppearances true", "6 0 R", {field, Appearance("1 0 0")});
  const std::string stale = FirstPage(pdf);
  Check(ColorAt(stale, 50, 12) != kRed && DarkIn(stale, 10, 10, 60, 30) > 20,
        "an appearance that is out of date");
  // What cannot be made anew stays as it is.
  const std::string signature = Widget("/FT /Sig /AP << /N 7 0 R >>");
  Check(ColorAt(FirstPage(FormPdf("/NeedAppearances true", "6 0 R", {signature, Appearance("1 0 0")})), 50,
                12) == kRed,
        "a signature where appearances are out of date");

  ScopedFPDFDocument document = Load(pdf);
  std::string saved;
  for (int i = 0; i < 3; ++i) {
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
    Check(Pixels(page.get()) == stale, "the same field each time");
    page.reset();
    Check(QuillmereEngine_ReleaseParsedObjects(document.get()), "giving memory back after fields");
    const std::string again = SaveWithoutId(document.get());
    Check(saved.empty() || saved == again, "fields get an appearance once");
    saved = again;
  }
}

void WriteFieldsToCompare(const std::string& folder) {
  for (int turns : {0, 90}) {
    const std::string pdf = FieldsToCompare("/Rotate " + std::to_string(turns));
    ScopedFPDFDocument document = Load(pdf);
    WriteToCompare(folder, "fields-" + std::to_string(turns), document.get());
  }
  const std::string text = FormPdf(
      "/NeedAppearances true /Fields [6 0 R 7 0 R]", "6 0 R 7 0 R",
      {Widget("/FT /Tx /T (a) /F 4 /V (Harbour 27) /DA (/F 12 Tf 0 g)", "10 70 140 90"),
       Widget("/FT /Tx /T (b) /F 4 /V (Pier) /DA (/F 14 Tf 0 g) /Q 2", "10 40 140 60")});
  ScopedFPDFDocument document = Load(text);
  WriteToCompare(folder, "fields-text", document.get());
}
