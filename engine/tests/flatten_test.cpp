// Annotations drawn into the page's content, and pages that share objects.

#include "fpdf_flatten.h"

#include <stdlib.h>

#include <algorithm>
#include <string>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "fpdf_annot.h"
#include "fpdf_doc.h"
#include "fpdf_edit.h"
#include "fpdf_ppo.h"
#include "fpdf_transformpage.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

std::string PixelsOf(FPDF_DOCUMENT document, int index) {
  ScopedFPDFPage page(FPDF_LoadPage(document, index));
  return Pixels(page.get(), FPDF_ANNOT, 2);
}

std::vector<int> SubtypesOn(FPDF_DOCUMENT document, int index) {
  ScopedFPDFPage page(FPDF_LoadPage(document, index));
  std::vector<int> subtypes;
  for (int i = 0; i < FPDFPage_GetAnnotCount(page.get()); ++i) {
    ScopedFPDFAnnotation annotation(FPDFPage_GetAnnot(page.get(), i));
    subtypes.push_back(FPDFAnnot_GetSubtype(annotation.get()));
  }
  return subtypes;
}

// The largest difference of a colour value, 0 to 255; 256 where the sizes differ.
int Difference(const std::string& one, const std::string& other) {
  int largest = one.size() == other.size() ? 0 : 256;
  for (size_t i = 0; largest < 256 && i < one.size(); ++i) {
    largest = std::max(largest, abs(static_cast<unsigned char>(one[i]) - static_cast<unsigned char>(other[i])));
  }
  return largest;
}

// Colours differ by rounding alone.
constexpr int kMostDifference = 2;

// Flattens the first page of |pdf|, compares its pictures, also after saving, and returns the
// subtypes of what is left.
std::vector<int> Flattened(const std::string& pdf, const std::string& what, int result = FLATTEN_SUCCESS) {
  ScopedFPDFDocument document = Load(pdf);
  const std::string before = PixelsOf(document.get(), 0);
  Check(QuillmereEngine_FlattenPage(document.get(), 0) == result, what + ": the result");
  Check(Difference(before, PixelsOf(document.get(), 0)) <= kMostDifference, what + ": the same picture");
  const std::string saved = Save(document.get());
  ScopedFPDFDocument again = Load(saved);
  Check(Difference(before, PixelsOf(again.get(), 0)) <= kMostDifference, what + ": the same picture when saved");
  return SubtypesOn(document.get(), 0);
}

const std::string kBackground = "0.8 1 0.9 rg 10 10 180 80 re f";

// One page with |annotations|; objects from 5 on are |more|.
std::string Annotated(const std::string& annotations,
                      const std::vector<std::string>& more = {},
                      const std::string& entries = "/Contents 4 0 R") {
  std::vector<std::string> objects = {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                      Page(entries + " /Annots [" + annotations + "]"), Stream(kBackground)};
  objects.insert(objects.end(), more.begin(), more.end());
  return MakePdf(objects);
}

std::string Mark(const std::string& subtype) {
  return "<< /Type /Annot /Subtype /" + subtype +
         " /C [1 0.5 0] /Rect [0 0 5 5] /QuadPoints [20 60 120 60 20 40 120 40] >> ";
}

std::string FormOf(const std::string& data, const std::string& entries = "") {
  return Stream(data, "/Type /XObject /Subtype /Form /BBox [0 0 50 30] " + entries);
}

}  // namespace

void TestFlattenCommonKinds() {
  for (const char* subtype : {"Highlight", "StrikeOut", "Underline", "Squiggly"}) {
    Check(Flattened(Annotated(Mark(subtype)), subtype).empty(), std::string(subtype) + " is drawn");
  }
  for (const std::string& shape :
       {std::string("/Subtype /Square /Rect [20 20 80 60]"), std::string("/Subtype /Circle /Rect [20 20 80 60]"),
        std::string("/Subtype /Ink /Rect [20 20 80 60] /InkList [[20 20 80 60 60 30]]"),
        std::string("/Subtype /Text /Contents (Note) /Rect [20 20 40 40]")}) {
    Check(Flattened(Annotated("<< /Type /Annot /C [1 0 0] " + shape + " >>"), shape).empty(), shape + " is drawn");
  }
}

void TestFlattenAppearances() {
  const std::string stamp = "<< /Type /Annot /Subtype /Stamp /AP << /N 5 0 R >> ";
  const std::string red = "1 0 0 rg 0 0 50 30 re f 0 0 1 rg 5 5 10 10 re f";
  Check(Flattened(Annotated(stamp + "/Rect [20 20 120 80] >>", {FormOf(red)}), "a stretched stamp").empty(),
        "a stamp is drawn");
  for (const char* matrix : {"[0 1 -1 0 30 0]", "[0.7 0.7 -0.7 0.7 3 -20]", "[2 0 0 2 9 9]"}) {
    Flattened(Annotated(stamp + "/Rect [20 20 120 80] >>", {FormOf(red, std::string("/Matrix ") + matrix)}),
              std::string("a form turned by ") + matrix);
  }
  for (const char* turns : {"90", "180", "270"}) {
    Flattened(Annotated(stamp + "/F 16 /Rect [20 20 120 80] >>", {FormOf(red)},
                        std::string("/Contents 4 0 R /Rotate ") + turns),
              std::string("a stamp that stands upright on a page turned by ") + turns);
  }
  Flattened(Annotated(stamp + "/Rect [20 20 120 80] >>",
                      {Stream(red, "/BBox [0 0 50 30]")}), "an appearance without its type");
  Flattened(Annotated(stamp + "/Rect [20 20 120 80] >>",
                      {FormOf("/G gs " + red, "/Resources << /ExtGState << /G << /BM /Multiply /ca 0.5 >> >> >>")}),
            "a stamp that darkens");
  Flattened(Annotated(stamp + "/Rect [20 20 120 80] >>" + Mark("Highlight") + stamp + "/Rect [60 30 150 70] >>",
                      {FormOf(red)}, "/Contents [4 0 R 4 0 R]"),
            "what lies above each other");
  Flattened(Annotated(stamp + "/Rect [20 20 120 80] >>", {FormOf(red)}, ""), "a page without content");
}

void TestFlattenKeepsWhatIsNotDrawn() {
  const std::string link = "<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest [3 0 R /Fit] >> ";
  const std::string stamp = "<< /Type /Annot /Subtype /Stamp /Rect [20 20 120 80] /AP << /N 5 0 R >> ";
  const std::vector<std::string> form = {FormOf("1 0 0 rg 0 0 50 30 re f")};
  Check(Flattened(Annotated(link + stamp + ">>", form), "a link beside a stamp") ==
            std::vector<int>{FPDF_ANNOT_LINK},
        "links stay");
  Check(Flattened(Annotated(stamp + "/F 2 >> " + stamp + "/F 32 >> " + stamp + ">>", form), "hidden stamps") ==
            std::vector<int>({FPDF_ANNOT_STAMP, FPDF_ANNOT_STAMP}),
        "hidden annotations stay");
  Check(Flattened(Annotated("<< /Type /Annot /Subtype /FileAttachment /Rect [0 0 9 9] >> " + link), "nothing drawn",
                  FLATTEN_NOTHINGTODO) == std::vector<int>({FPDF_ANNOT_FILEATTACHMENT, FPDF_ANNOT_LINK}),
        "a page with nothing to draw stays as it is");
  Check(Flattened(Annotated("6 0 R 7 0 R 8 0 R",
                            {form[0], "<< /Type /Annot /Subtype /Text /Rect [20 20 40 40] /Popup 7 0 R /AP << /N 5 0 R >> >>",
                             "<< /Type /Annot /Subtype /Popup /Parent 6 0 R /Rect [50 20 90 40] >>",
                             "<< /Type /Annot /Subtype /Popup /Rect [50 20 90 40] >>"}),
                  "pop-ups") == std::vector<int>{FPDF_ANNOT_POPUP},
        "the pop-up of what is drawn goes, another stays");
  const std::string plain_pdf = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R 42] /Count 2 >>", Page("")});
  ScopedFPDFDocument plain = Load(plain_pdf);
  Check(QuillmereEngine_FlattenPage(plain.get(), 0) == FLATTEN_NOTHINGTODO, "a page without annotations");
  for (int index : {1, 2, -1}) {
    Check(QuillmereEngine_FlattenPage(plain.get(), index) == FLATTEN_FAIL, "no such page");
  }
  Check(QuillmereEngine_FlattenPage(nullptr, 0) == FLATTEN_FAIL, "no document");
}

void TestFlattenFields() {
  const auto widget = [](const std::string& entries, const std::string& rect) {
    return "<< /Type /Annot /Subtype /Widget /F 4 /Rect [" + rect + "] " + entries + " >>";
  };
  for (const char* stale : {"", "/NeedAppearances true"}) {
    const std::string pdf = MakePdf(
        {std::string("<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [6 0 R 7 0 R 8 0 R] /DA (/F 0 Tf 0 g) /DR << "
                     "/Font << /F 5 0 R >> >> ") + stale + " >> >>",
         "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
         Page("/Contents 4 0 R /Annots [6 0 R 7 0 R 8 0 R 11 0 R]"), Stream(kBackground),
         "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
         widget("/FT /Tx /T (a) /V (Harbour) /DA (/F 12 Tf 0 g)", "10 70 140 90"),
         widget("/FT /Btn /T (b) /AS /On /AP << /N << /On 9 0 R /Off 10 0 R >> >>", "10 40 60 60"),
         widget("/FT /Sig /T (c) /V << /Type /Sig /Filter /Adobe.PPKLite /Contents <00> >> /AP << /N 10 0 R >>",
                "80 10 130 30"),
         FormOf("0 0 1 rg 0 0 50 30 re f"), FormOf("0 1 0 rg 0 0 50 30 re f"),
         "<< /Type /Annot /Subtype /Stamp /Rect [70 5 150 45] /AP << /N 9 0 R >> >>"});
    Check(Flattened(pdf, std::string("fields ") + stale).empty(), "fields and signatures are drawn");
  }
}

void TestFlattenLeavesOtherPagesAndBoxes() {
  // Content, resources, annotations and boxes that pages share or inherit.
  const std::string pdf = MakePdf(
      {kCatalog,
       "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 /MediaBox [0 0 300 200] /CropBox [20 30 280 180] /Rotate 90 "
       "/Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> /XObject << /Flat0 8 0 R "
       ">> >> >>",
       "<< /Type /Page /Parent 2 0 R /Contents 5 0 R /Annots 6 0 R >>",
       "<< /Type /Page /Parent 2 0 R /Contents 5 0 R /Annots 6 0 R >>",
       "[7 0 R]", "[9 0 R]", Stream("/Flat0 Do BT /F 24 Tf 40 60 Td (Tide) Tj ET"),
       FormOf("0 0 1 rg 0 0 50 30 re f"),
       "<< /Type /Annot /Subtype /Stamp /Rect [60 60 160 120] /AP << /N 10 0 R >> >>",
       FormOf("1 0 0 rg 0 0 40 20 re f")});
  ScopedFPDFDocument document = Load(pdf);
  const std::string first = PixelsOf(document.get(), 0);
  const std::string second = PixelsOf(document.get(), 1);
  Check(QuillmereEngine_FlattenPage(document.get(), 0) == FLATTEN_SUCCESS, "a page that shares everything");
  Check(Difference(PixelsOf(document.get(), 0), first) <= kMostDifference, "the page looks as before");
  Check(PixelsOf(document.get(), 1) == second, "the other page too");
  Check(SubtypesOn(document.get(), 0).empty() && SubtypesOn(document.get(), 1).size() == 1,
        "the other page keeps its annotation");
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  float left = 0, bottom = 0, right = 0, top = 0;
  Check(!FPDFPage_GetMediaBox(page.get(), &left, &bottom, &right, &top), "no box was written to the page");
  Check(FPDFPage_GetRotation(page.get()) == 1, "the page is turned as before");
}

void TestFlattenOpenStates() {
  const std::string stamp = "<< /Type /Annot /Subtype /Stamp /Rect [20 20 120 80] /AP << /N 5 0 R >> >>";
  for (const char* content : {"q 0.5 0 0 0.5 0 0 cm 1 0 0 rg 20 20 100 100 re f",
                              "q q 10 10 30 30 re W n q 2 0 0 2 0 0 cm 1 0 0 rg 0 0 100 100 re f Q"}) {
    const std::string pdf = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                                     Page("/Contents 4 0 R /Annots [" + stamp + "]"), Stream(content),
                                     FormOf("0 0 1 rg 0 0 50 30 re f")});
    ScopedFPDFDocument document = Load(pdf);
    const std::string before = PixelsOf(document.get(), 0);
    Check(QuillmereEngine_FlattenPage(document.get(), 0) == FLATTEN_SUCCESS, "content that ends early");
    Check(Difference(before, PixelsOf(document.get(), 0)) <= kMostDifference,
          std::string("the same picture after ") + content);
  }
}

void TestFlattenManyAnnotations() {
  std::string annotations;
  for (int i = 0; i < 60'000; ++i) {
    annotations += "5 0 R 6 0 R ";
  }
  const std::string pdf =
      Annotated(annotations, {"<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] >>",
                              "<< /Type /Annot /Subtype /Square /C [1 0 0] /Rect [20 20 40 40] >>"});
  ScopedFPDFDocument document = Load(pdf);
  Check(QuillmereEngine_FlattenPage(document.get(), 0) == FLATTEN_SUCCESS, "a page with many annotations");
  Check(SubtypesOn(document.get(), 0).size() == 60'000, "its links stay");
}

void TestInsertedReferences() {
  const std::string source_pdf = MakePdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
       Page("/Contents [99 0 R 4 0 R 98 0 R] /Annots [97 0 R 5 0 R]"), Stream("1 0 0 rg 10 10 50 50 re f"),
       "<< /Type /Annot /Subtype /Stamp /Rect [60 60 160 90] /AP << /N 6 0 R >> >>",
       FormOf("0 0 1 rg 0 0 50 30 re f")});
  const std::string target_pdf = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>", Page("")});
  ScopedFPDFDocument source = Load(source_pdf);
  ScopedFPDFDocument target = Load(target_pdf);
  Check(FPDF_ImportPages(target.get(), source.get(), nullptr, 1), "inserting a page with references to nothing");
  Check(PixelsOf(target.get(), 1) == PixelsOf(source.get(), 0), "it keeps content and annotations");
}

void TestInsertedShapes() {
  // A page without a crop box or turn comes among pages that take both from their node.
  const std::string target_pdf = MakePdf(
      {kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 /Rotate 90 /CropBox [10 20 110 170] >>", Page("")});
  const std::string source_pdf =
      MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
               "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 300 200] /Contents 4 0 R >>",
               Stream("1 0 0 rg 10 10 50 50 re f")});
  ScopedFPDFDocument source = Load(source_pdf);
  ScopedFPDFDocument target = Load(target_pdf);
  Check(FPDF_ImportPages(target.get(), source.get(), nullptr, 1), "inserting a page among turned ones");
  Check(PixelsOf(target.get(), 1) == PixelsOf(source.get(), 0), "it is neither turned nor cropped");
  ScopedFPDFDocument before = Load(target_pdf);
  Check(PixelsOf(target.get(), 0) == PixelsOf(before.get(), 0), "the others stay as they are");

  // A page that does not say that it is one takes its paper from the node as well.
  const std::string untyped_pdf =
      MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 /MediaBox [0 0 150 90] >>", "<< /Parent 2 0 R >>"});
  ScopedFPDFDocument untyped = Load(untyped_pdf);
  Check(FPDF_ImportPages(target.get(), untyped.get(), nullptr, 0), "inserting a page without a type");
  ScopedFPDFPage inserted(FPDF_LoadPage(target.get(), 0));
  Check(FPDF_GetPageWidthF(inserted.get()) == 150 && FPDF_GetPageHeightF(inserted.get()) == 90, "it keeps its size");

  // The node above the page is its own parent.
  const std::string cyclic_pdf =
      MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 /Parent 2 0 R >>", Page("")});
  const std::string plain_pdf = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>", Page("")});
  ScopedFPDFDocument cyclic = Load(cyclic_pdf);
  ScopedFPDFDocument plain = Load(plain_pdf);
  FPDF_ImportPages(plain.get(), cyclic.get(), nullptr, 0);
  FPDF_ImportPages(cyclic.get(), source.get(), nullptr, 0);
  Check(FPDF_GetPageCount(plain.get()) == 2 && FPDF_GetPageCount(cyclic.get()) == 2, "pages below a cycle");
}

void TestWrongNodes() {
  // Nodes that count too few or too many pages, and one that calls itself a page.
  const auto leaf = [](int parent, int width) {
    return "<< /Type /Page /Parent " + std::to_string(parent) + " 0 R /MediaBox [0 0 " + std::to_string(width) +
           " 50] >>";
  };
  const auto widths = [](FPDF_DOCUMENT document) {
    std::vector<int> found;
    for (int i = 0; i < FPDF_GetPageCount(document); ++i) {
      ScopedFPDFPage page(FPDF_LoadPage(document, i));
      found.push_back(static_cast<int>(FPDF_GetPageWidthF(page.get())));
    }
    return found;
  };
  for (const auto& [first, second] : {std::pair("/Type /Pages /Count 1", "/Type /Pages /Count 9"),
                                      std::pair("/Type /Pages /Count 7", "/Type /Page"),
                                      std::pair("/Count -2", "/Type /Page /Count 2")}) {
    const std::string pdf = MakePdf(
        {kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R 9 0 R] /Count 5 >>",
         std::string("<< ") + first + " /Parent 2 0 R /Kids [5 0 R 6 0 R] >>",
         std::string("<< ") + second + " /Parent 2 0 R /Kids [7 0 R 8 0 R] >>", leaf(3, 10), leaf(3, 20), leaf(4, 30),
         leaf(4, 40), leaf(2, 50)});
    for (int index = 0; index < 5; ++index) {
      ScopedFPDFDocument document = Load(pdf);
      std::vector<int> expected = widths(document.get());
      Check(expected == std::vector<int>({10, 20, 30, 40, 50}), std::string("pages below ") + first + ", " + second);
      Check(QuillmereEngine_SeparatePages(document.get()), "a tree with wrong nodes");
      FPDFPage_Delete(document.get(), index);
      expected.erase(expected.begin() + index);
      const std::string saved = Save(document.get());
      ScopedFPDFDocument again = Load(saved);
      Check(widths(document.get()) == expected && widths(again.get()) == expected,
            "another page was deleted below " + std::string(first) + ", " + second);
    }
  }
}

void TestSharedPages() {
  const auto make = [](const std::string& kids, int count) {
    return MakePdf({kCatalog, "<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(count) + " >>",
                         Page("/Contents 4 0 R"), Stream("1 0 0 rg 10 10 50 50 re f"),
                         "<< /Type /Pages /Parent 2 0 R /Kids 6 0 R /Count 2 /Rotate 90 >>", "[7 0 R 8 0 R]",
                         "<< /Type /Page /Parent 5 0 R /MediaBox [0 0 100 50] >>",
                         "<< /Type /Page /Parent 5 0 R /MediaBox [0 0 60 70] >>"});
  };
  for (const auto& [kids, count] : {std::pair<std::string, int>{"3 0 R 3 0 R 3 0 R", 3}, {"5 0 R 3 0 R 5 0 R", 5}}) {
    const std::string pdf = make(kids, count);
    ScopedFPDFDocument document = Load(pdf);
    std::vector<std::string> before;
    for (int i = 0; i < count; ++i) {
      before.push_back(PixelsOf(document.get(), i));
    }
    Check(QuillmereEngine_SeparatePages(document.get()), "separating " + kids);
    for (int i = 0; i < count; ++i) {
      Check(PixelsOf(document.get(), i) == before[i], "a separate page looks as before");
    }
    {
      ScopedFPDFPage last(FPDF_LoadPage(document.get(), count - 1));
      FPDFPage_SetRotation(last.get(), 2);
    }
    FPDFPage_Delete(document.get(), 0);
    Check(FPDF_GetPageCount(document.get()) == count - 1, "one page less");
    const std::string saved = Save(document.get());
    ScopedFPDFDocument again = Load(saved);
    Check(FPDF_GetPageCount(again.get()) == count - 1, "one page less in the file, of " + kids);
    for (int i = 0; i + 2 < count; ++i) {
      Check(PixelsOf(again.get(), i) == before[i + 1], "another page of " + kids);
    }
    ScopedFPDFPage last(FPDF_LoadPage(again.get(), count - 2));
    Check(FPDFPage_GetRotation(last.get()) == 2, "the turned page");
  }

  const std::string listed_pdf =
      MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>", Page("/Annots 5 0 R"),
               Page("/Annots 5 0 R"), "[<< /Subtype /Stamp /Rect [1 1 9 9] >>]"});
  ScopedFPDFDocument listed = Load(listed_pdf);
  Check(QuillmereEngine_SeparatePages(listed.get()), "pages with one list of annotations");
  {
    ScopedFPDFPage first(FPDF_LoadPage(listed.get(), 0));
    ScopedFPDFPage second(FPDF_LoadPage(listed.get(), 1));
    FPDFPage_RemoveAnnot(second.get(), 0);
    Check(FPDFPage_GetAnnotCount(first.get()) == 1 && FPDFPage_GetAnnotCount(second.get()) == 0,
          "an annotation goes from its own page alone");
  }

  const std::string sound_pdf = make("5 0 R 3 0 R", 3);
  ScopedFPDFDocument sound = Load(sound_pdf);
  const std::string saved = SaveWithoutId(sound.get());
  Check(QuillmereEngine_SeparatePages(sound.get()) && SaveWithoutId(sound.get()) == saved,
        "nothing changes where pages are separate");
  const std::string cyclic_pdf = MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>", Page(""),
                                            "<< /Type /Pages /Parent 2 0 R /Kids [2 0 R 3 0 R] /Count 2 >>"});
  ScopedFPDFDocument cyclic = Load(cyclic_pdf);
  Check(!QuillmereEngine_SeparatePages(cyclic.get()), "a tree that leads back into itself");
  Check(!QuillmereEngine_SeparatePages(nullptr), "no document");

  // A page with many annotations that twelve levels of doubled nodes name 4,096 times.
  std::vector<std::string> objects = {kCatalog};
  for (int i = 2; i < 14; ++i) {
    const std::string next = std::to_string(i + 1) + " 0 R ";
    objects.push_back("<< /Type /Pages /Count " + std::to_string(8192 >> (i - 1)) + " /Kids [" + next + next + "] >>");
  }
  std::string annotations;
  for (int i = 0; i < 1000; ++i) {
    annotations += "<< /Subtype /Link >> ";
  }
  objects.push_back(Page("/Annots [" + annotations + "]"));
  const std::string doubled_pdf = MakePdf(objects);
  ScopedFPDFDocument doubled = Load(doubled_pdf);
  Check(FPDF_GetPageCount(doubled.get()) == 4096 && !QuillmereEngine_SeparatePages(doubled.get()),
        "too much to be copied");
}
