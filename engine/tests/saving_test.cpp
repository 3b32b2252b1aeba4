// What a saved document is like: encrypted, with its XMP, and packed as its source.

#include <stdlib.h>

#include <string>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "encrypted_pdf.h"
#include "fpdf_annot.h"
#include "fpdf_edit.h"
#include "fpdf_text.h"
#include "support.h"
#include "tests.h"

namespace {

std::vector<std::string> TextObjects(const std::string& catalog_entries = "") {
  return {"<< /Type /Catalog /Pages 2 0 R " + catalog_entries + " >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
          Page("/Contents 4 0 R /Resources << /Font << /F 5 0 R >> >>"),
          Stream("BT /F 24 Tf 10 60 Td (Low water) Tj ET"), "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
}

std::string TextIn(const std::string& pdf) {
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  ScopedFPDFTextPage text(FPDFText_LoadPage(page.get()));
  unsigned short units[64] = {};
  const int count = FPDFText_GetText(text.get(), 0, 63, units);
  return std::string(units, units + (count > 0 ? count - 1 : 0));
}

std::string Saved(const std::string& pdf) {
  ScopedFPDFDocument document = Load(pdf);
  Check(document != nullptr, "a document to be saved");
  return document ? Save(document.get()) : "";
}

// Edits a document in ways that add objects, drop some and turn a page, and saves it.
std::string SavedAfterEdits(const std::string& pdf) {
  ScopedFPDFDocument document = Load(pdf);
  ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
  ScopedFPDFAnnotation annotation(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_STAMP));
  const FS_RECTF place = {10, 40, 40, 10};
  FPDFAnnot_SetRect(annotation.get(), &place);
  const unsigned short appearance[] = {'0', ' ', 'g', ' ', '0', ' ', '0', ' ', '9', ' ', '9', ' ', 'r', 'e', ' ', 'f', 0};
  FPDFAnnot_SetAP(annotation.get(), FPDF_ANNOT_APPEARANCEMODE_NORMAL, appearance);
  FPDFPage_SetRotation(page.get(), 1);
  annotation.reset();
  page.reset();
  FPDFPage_Delete(document.get(), FPDF_GetPageCount(document.get()) - 1);
  return Save(document.get());
}

std::string Seen(const std::string& pdf) {
  ScopedFPDFDocument document = Load(pdf);
  std::string seen = std::to_string(FPDF_GetPageCount(document.get()));
  for (int i = 0; i < FPDF_GetPageCount(document.get()); ++i) {
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), i));
    seen += Pixels(page.get());
  }
  return seen;
}

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != text.npos;
}

bool IsPacked(const std::string& pdf) {
  return Holds(pdf, "/ObjStm") && Holds(pdf, "/XRef") && !Holds(pdf, "trailer");
}

// XMP as packed data that no reader must take apart; the filter says how.
const std::string kXmp = "<x:xmpmeta>Harbour</x:xmpmeta>";

std::string XmpStream(const std::string& data, const std::string& entries = "") {
  return Stream(data, "/Type /Metadata /Subtype /XML " + entries);
}

// A document and an update of it, which an old reader can follow too: the table says that object 6 is
// free, the cross-reference stream beside it that it is packed.
std::string Hybrid() {
  std::vector<std::string> objects = TextObjects("/Kept 6 0 R");
  objects.push_back("null");
  std::string pdf = MakePdf(objects);
  const std::string before = pdf.substr(pdf.rfind("startxref\n") + 10);
  const std::string packed = "6 0 << /Value (Spring tide) >>";
  const size_t packer = pdf.size();
  pdf += "7 0 obj\n" + Stream(packed, "/Type /ObjStm /N 1 /First 4") + "\nendobj\n";
  const size_t places = pdf.size();
  std::string rows = std::string("\x02\0\0\x07\0", 5) + '\x01';
  for (int shift : {16, 8, 0}) {
    rows += static_cast<char>(packer >> shift & 0xFF);
  }
  rows += '\0';
  pdf += "8 0 obj\n" + Stream(rows, "/Type /XRef /W [1 3 1] /Index [6 2] /Size 9 /Root 1 0 R") + "\nendobj\n";
  const size_t table = pdf.size();
  return pdf + "xref\n6 1\n0000000000 00001 f \ntrailer\n<< /Root 1 0 R /Size 9 /Prev " +
         std::to_string(atoi(before.c_str())) + " /XRefStm " + std::to_string(places) + " >>\nstartxref\n" +
         std::to_string(table) + "\n%%EOF\n";
}

std::string HexOf(const std::string& text) {
  std::string hex;
  for (unsigned char letter : text) {
    hex += "0123456789ABCDEF"[letter / 16];
    hex += "0123456789ABCDEF"[letter % 16];
  }
  return hex + ">";
}

}  // namespace

void TestSavedEncryption() {
  for (const bool direct : {false, true}) {
    for (const bool with_id : {false, true}) {
      for (const bool packed : {false, true}) {
        const Encryption encryption{.with_id = with_id, .direct = direct, .packed = packed};
        const std::string what = std::string(direct ? "direct" : "indirect") + (with_id ? "" : " without /ID") +
                                 (packed ? " packed" : "");
        const std::string source = MakeEncryptedPdf(TextObjects(), encryption);
        Check(TextIn(source) == "Low water", "an encrypted source, " + what);
        const std::string saved = Saved(source);
        Check(TextIn(saved) == "Low water", "an encrypted document that was saved, " + what);
        Check(Holds(saved, "/Encrypt") && !Holds(saved, "Low water") && !Holds(saved, "/BaseFont") == packed,
              "a document that stays encrypted, " + what);
        Check(IsPacked(saved) == packed, "an encrypted document is packed as its source, " + what);
        Check(TextIn(Saved(saved)) == "Low water", "an encrypted document that was saved twice, " + what);
      }
    }
  }
}

void TestSavedMetadata() {
  std::vector<std::string> objects = TextObjects("/Metadata 6 0 R");
  objects.push_back(XmpStream(HexOf(kXmp), "/Filter /ASCIIHexDecode"));
  const std::string packed = Saved(MakePdf(objects));
  Check(Holds(packed, "/ASCIIHexDecode") && Holds(packed, HexOf(kXmp)), "packed XMP keeps its filter");
  objects.back() = XmpStream(kXmp);
  Check(Holds(Saved(MakePdf(objects)), kXmp), "plain XMP stays readable");

  const std::string secret = MakeEncryptedPdf(objects, Encryption{});
  Check(!Holds(Saved(secret), "Harbour"), "XMP of an encrypted document is encrypted");
  const std::string readable = MakeEncryptedPdf(objects, Encryption{.plain_metadata = 6});
  Check(Holds(readable, kXmp) && Holds(Saved(readable), kXmp) && TextIn(Saved(readable)) == "Low water",
        "XMP that the encryption leaves readable stays so");
}

void TestPackedStaysPacked() {
  const std::string packed = MakePackedPdf(VariedObjects());
  const std::string saved = Saved(packed);
  Check(IsPacked(saved), "a packed document is written packed");
  Check(Seen(saved) == Seen(packed), "a packed document looks as before");
  Check(IsPacked(Saved(saved)) && Seen(Saved(saved)) == Seen(packed), "saved twice");
  const std::string edited = SavedAfterEdits(packed);
  Check(IsPacked(edited) && Seen(edited) == Seen(SavedAfterEdits(MakePdf(VariedObjects()))),
        "a packed document with edits");
  Check(!Holds(edited, "/Stamp"), "new objects are packed as well");
  Check(saved.starts_with("%PDF-1.7"), "the version stays");
  std::string old = packed;
  old.replace(0, 8, "%PDF-1.4");
  Check(Saved(old).starts_with("%PDF-1.5"), "packed objects came with version 1.5");
}

void TestUnpackedStaysUnpacked() {
  for (const std::string& pdf : {MakePdf(VariedObjects()), SavedAfterEdits(MakePdf(VariedObjects()))}) {
    Check(!Holds(Saved(pdf), "/ObjStm") && !Holds(Saved(pdf), "/XRef"), "an unpacked document stays so");
    Check(Seen(Saved(pdf)) == Seen(pdf), "an unpacked document looks as before");
  }
  const std::string hybrid = Saved(Hybrid());
  Check(Holds(hybrid, "Spring tide") && !Holds(hybrid, "/ObjStm") && TextIn(hybrid) == "Low water", "a document for old readers too is written unpacked");
  // A damaged end: the table is made anew.
  std::string repaired = MakePackedPdf(VariedObjects());
  repaired.replace(repaired.rfind("startxref\n") + 10, 1, "9");
  Check(Seen(Saved(repaired)) == Seen(repaired), "a repaired document looks as before");
}

// A table with gaps is for files with updates; Poppler repairs what has them without.
void TestTablesWithoutGaps() {
  std::vector<std::string> objects = TextObjects();
  for (int i = 0; i < 3; ++i) {
    objects.push_back("(nothing refers to this)");
  }
  objects[0].insert(3, "/Kept 9 0 R ");
  objects.push_back("(" + std::string(500, 'x') + ")");
  const std::string plain = Saved(MakePdf(objects));
  Check(Holds(plain, "xref\r\n0 10\r\n0000000000 65535 f\r\n"), "one section of all objects");
  Check(Holds(plain, "0000000000 65535 f\r\n0000000000 65535 f\r\n"), "what is left out is free");
  Check(TextIn(plain) == "Low water" && TextIn(Saved(plain)) == "Low water", "a table without gaps");
  const std::string packed = Saved(MakePackedPdf(objects));
  Check(IsPacked(packed) && !Holds(packed, "/Index"), "a cross-reference stream of all objects");
  Check(TextIn(packed) == "Low water" && TextIn(Saved(packed)) == "Low water", "a stream without gaps");
}

// Numbers may be far apart without need.
void TestTablesOfSparseNumbers() {
  std::vector<std::string> objects = TextObjects();
  objects.push_back("(far away)");
  const std::string last = std::to_string(objects.size());
  objects[0].insert(3, "/Kept " + last + " 0 R ");
  std::string pdf = MakePdf(objects);
  pdf.resize(pdf.rfind("xref\n", pdf.rfind("trailer")));
  for (const char* use : {" 0 R ", " 0 obj"}) {
    pdf.replace(pdf.find(last + use), last.size(), "900000");
  }
  pdf += "trailer << /Root 1 0 R /Size 900001 >>\n";
  const std::string saved = Saved(pdf);
  Check(Holds(saved, "900000 0 obj") && Holds(saved, "\n900000 1\r\n"), "a table with gaps");
  Check(saved.size() < 10000, "no rows for numbers that nothing has");
  Check(TextIn(saved) == "Low water" && Saved(saved).size() == saved.size(), "sparse numbers are read again");
  for (const std::string& number : {std::string(" 0 R "), std::string(" 0 obj")}) {
    pdf.replace(pdf.find("900000" + number), 6, "000999");
  }
  Check(Holds(Saved(pdf), "xref\r\n0 1000\r\n"), "a table without gaps where they are cheap");
}

void TestManyPackedObjects() {
  // More than one object stream takes, strings of any bytes, and a signature.
  std::vector<std::string> objects = VariedObjects();
  for (int i = 0; i < 700; ++i) {
    objects.push_back("<< /Value (\\(" + std::string(i % 90, 'x') + "\\)) /Number " + std::to_string(i) + " >>");
  }
  std::string kept = "[";
  for (size_t number = VariedObjects().size() + 1; number <= objects.size(); ++number) {
    kept += std::to_string(number) + " 0 R ";
  }
  objects.push_back("<< /Type /Sig /Filter /Adobe.PPKLite /Contents <00FF> >>");
  objects[0].insert(3, "/Kept " + kept + std::to_string(objects.size()) + " 0 R] ");
  const std::string packed = MakePackedPdf(objects);
  const std::string saved = Saved(packed);
  Check(IsPacked(saved) && Seen(saved) == Seen(packed), "many packed objects");
  Check(Holds(saved, "/Type/Sig"), "a signature stands by itself");
  Check(saved.size() < packed.size(), "packed objects are compressed");
  size_t streams = 0;
  for (size_t at = saved.find("/ObjStm"); at != saved.npos; at = saved.find("/ObjStm", at + 1)) {
    ++streams;
  }
  Check(streams >= 4, "object streams stay small");
  const std::string again = Saved(saved);
  Check(Seen(again) == Seen(packed) && again.size() < saved.size() + 200, "nothing is added when saved again");
}
