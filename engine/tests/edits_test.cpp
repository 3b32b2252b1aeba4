// Giving memory back after edits: the caller must not, but if it does, either nothing is
// given back or no edit is lost.

#include <functional>
#include <string>
#include <vector>

#include "cpp/fpdf_scopers.h"
#include "encrypted_pdf.h"
#include "fpdf_annot.h"
#include "fpdf_edit.h"
#include "fpdf_ppo.h"
#include "fpdf_text.h"
#include "quillmere_engine.h"
#include "support.h"
#include "tests.h"

namespace {

// Two pages with text, a note and a stamp with appearances on the first.
std::vector<std::string> EditableObjects() {
  const std::string font =
      "/Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >>";
  return {kCatalog,
          "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>",
          Page("/Contents 5 0 R /Annots [7 0 R 9 0 R] " + font),
          Page("/Contents 6 0 R " + font),
          Stream("BT /F 24 Tf 10 60 Td (Low water) Tj ET"),
          Stream("BT /F 24 Tf 10 60 Td (High water) Tj ET"),
          "<< /Type /Annot /Subtype /Text /Contents (Before) /Rect [100 10 150 60] /AP << /N 8 0 R >> >>",
          Form("1 0 0 rg 5 5 30 20 re f", ""),
          "<< /Type /Annot /Subtype /Stamp /Rect [20 10 70 60] /AP << /N 10 0 R >> >>",
          Form("0 1 0 rg 5 5 30 20 re f 20 20 30 20 re f", "")};
}

// What a reader sees of |pdf|: pictures, text, notes.
std::string Seen(const std::string& pdf, const char* password) {
  ScopedFPDFDocument document = Load(pdf, password);
  std::string seen = std::to_string(FPDF_GetPageCount(document.get()));
  for (int i = 0; i < FPDF_GetPageCount(document.get()); ++i) {
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), i));
    seen += Pixels(page.get());
    ScopedFPDFTextPage text(FPDFText_LoadPage(page.get()));
    unsigned short units[64] = {};
    FPDFText_GetText(text.get(), 0, 63, units);
    seen.append(reinterpret_cast<const char*>(units), sizeof units);
    for (int k = 0; k < FPDFPage_GetAnnotCount(page.get()); ++k) {
      ScopedFPDFAnnotation note(FPDFPage_GetAnnot(page.get(), k));
      FPDFAnnot_GetStringValue(note.get(), "Contents", units, sizeof units);
      seen.append(reinterpret_cast<const char*>(units), sizeof units);
    }
  }
  return seen;
}

using Edit = std::function<void(FPDF_DOCUMENT)>;

std::string SeenAfter(const std::string& pdf, const char* password, const Edit& edit, bool release) {
  ScopedFPDFDocument document = Load(pdf, password);
  for (int i = 0; i < FPDF_GetPageCount(document.get()); ++i) {
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), i));
    Pixels(page.get());
  }
  edit(document.get());
  if (release) {
    QuillmereEngine_ReleaseParsedObjects(document.get());
  }
  return Seen(Save(document.get()), password);
}

void CheckEdit(const std::string& pdf, const char* password, const std::string& what, const Edit& edit) {
  const std::string without = SeenAfter(pdf, password, edit, false);
  Check(without != Seen(pdf, password), what + " changes what is saved");
  Check(without == SeenAfter(pdf, password, edit, true), what + " outlives giving memory back");
}

void ChangeNote(FPDF_DOCUMENT document) {
  ScopedFPDFPage page(FPDF_LoadPage(document, 0));
  ScopedFPDFAnnotation note(FPDFPage_GetAnnot(page.get(), 0));
  Check(FPDFAnnot_SetStringValue(note.get(), "Contents", Wide("After")), "changing a note");
}

void DeletePage(FPDF_DOCUMENT document) {
  FPDFPage_Delete(document, 0);
}

void ImportPage(FPDF_DOCUMENT document) {
  const std::string other = MakePdf(EditableObjects());
  ScopedFPDFDocument source = Load(other);
  Check(FPDF_ImportPages(document, source.get(), "2", 1), "importing a page");
}

void ChangeText(FPDF_DOCUMENT document) {
  ScopedFPDFPage page(FPDF_LoadPage(document, 0));
  Check(FPDFText_SetText(FPDFPage_GetObject(page.get(), 0), Wide("Slack")), "changing text");
  Check(FPDFPage_GenerateContent(page.get()), "writing the page's content");
}

void EraseFromStamp(FPDF_DOCUMENT document) {
  ScopedFPDFPage page(FPDF_LoadPage(document, 0));
  ScopedFPDFAnnotation stamp(FPDFPage_GetAnnot(page.get(), 1));
  Check(FPDFAnnot_GetObjectCount(stamp.get()) == 2 && FPDFAnnot_RemoveObject(stamp.get(), 0),
        "erasing a part of a stamp");
}

}  // namespace

void TestReleaseAfterEdits() {
  for (const std::string& pdf : {MakePdf(EditableObjects()), MakePackedPdf(EditableObjects())}) {
    CheckEdit(pdf, nullptr, "a note changed in place", ChangeNote);
    CheckEdit(pdf, nullptr, "a deleted page", DeletePage);
    CheckEdit(pdf, nullptr, "an imported page", ImportPage);
    CheckEdit(pdf, nullptr, "changed text", ChangeText);
    CheckEdit(pdf, nullptr, "an erased part of a stamp", EraseFromStamp);
  }
  const std::string encrypted = MakeEncryptedPdf(EditableObjects(), "tide");
  Check(Seen(encrypted, "tide") == Seen(MakePdf(EditableObjects()), nullptr), "an encrypted file");
  ScopedFPDFDocument untouched = Load(encrypted, "tide");
  { ScopedFPDFPage page(FPDF_LoadPage(untouched.get(), 0)); }
  Check(QuillmereEngine_ReleaseParsedObjects(untouched.get()), "an encrypted file gives memory back");
  CheckEdit(encrypted, "tide", "a note changed in an encrypted file", ChangeNote);
  CheckEdit(encrypted, "tide", "a page deleted in an encrypted file", DeletePage);
  CheckEdit(encrypted, "tide", "text changed in an encrypted file", ChangeText);
  CheckEdit(encrypted, "tide", "a part of a stamp erased in an encrypted file", EraseFromStamp);
}
