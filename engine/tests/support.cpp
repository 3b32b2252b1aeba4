#include "support.h"

#include <stdio.h>

#include "fpdf_save.h"

namespace {

int failures = 0;

// Number |value| in |bytes| bytes, the highest first.
std::string BigEndian(size_t value, int bytes) {
  std::string text;
  for (int i = bytes - 1; i >= 0; --i) {
    text += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return text;
}

void WriteFile(const std::string& path, const std::string& bytes) {
  FILE* file = fopen(path.c_str(), "wb");
  fwrite(bytes.data(), 1, bytes.size(), file);
  fclose(file);
}

// A picture of the page at 144 DPI in the format of Netpbm.
std::string Picture(FPDF_PAGE page) {
  const std::string pixels = Pixels(page, FPDF_ANNOT, 2);
  const int width = static_cast<int>(2 * FPDF_GetPageWidthF(page) + 0.5);
  std::string picture = "P6\n" + std::to_string(width) + " " +
                        std::to_string(pixels.size() / 4 / width) + "\n255\n";
  for (size_t at = 0; at < pixels.size(); at += 4) {
    picture += {pixels[at + 2], pixels[at + 1], pixels[at]};
  }
  return picture;
}

}  // namespace

void Check(bool held, const std::string& what) {
  if (!held) {
    ++failures;
    printf("FAILED: %s\n", what.c_str());
  }
}

int Failures() {
  return failures;
}

std::string MakePdf(const std::vector<std::string>& objects, const std::string& trailer) {
  std::string pdf = "%PDF-1.7\n";
  std::vector<size_t> offsets;
  for (size_t i = 0; i < objects.size(); ++i) {
    offsets.push_back(pdf.size());
    pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
  }
  const size_t xref = pdf.size();
  pdf += "xref\n0 " + std::to_string(objects.size() + 1) + "\n0000000000 65535 f \n";
  for (size_t offset : offsets) {
    char line[32];
    snprintf(line, sizeof line, "%010u 00000 n \n", static_cast<unsigned>(offset));
    pdf += line;
  }
  pdf += "trailer\n<< /Root 1 0 R /Size " + std::to_string(objects.size() + 1) + " " + trailer +
         " >>\nstartxref\n" + std::to_string(xref) + "\n%%EOF\n";
  return pdf;
}

std::string MakePackedPdf(const std::vector<std::string>& objects) {
  const size_t packer = objects.size() + 1;
  std::string pdf = "%PDF-1.7\n";
  std::string places = std::string(1, 0) + BigEndian(0, 4) + BigEndian(0, 2);
  std::string heads;
  std::string bodies;
  size_t packed = 0;
  for (size_t i = 0; i < objects.size(); ++i) {
    if (objects[i].find("endstream") == std::string::npos) {
      heads += std::to_string(i + 1) + " " + std::to_string(bodies.size()) + " ";
      bodies += objects[i] + "\n";
      places += std::string(1, 2) + BigEndian(packer, 4) + BigEndian(packed++, 2);
    } else {
      places += std::string(1, 1) + BigEndian(pdf.size(), 4) + BigEndian(0, 2);
      pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
  }
  places += std::string(1, 1) + BigEndian(pdf.size(), 4) + BigEndian(0, 2);
  pdf += std::to_string(packer) + " 0 obj\n<< /Type /ObjStm /N " + std::to_string(packed) +
         " /First " + std::to_string(heads.size()) + " /Length " +
         std::to_string(heads.size() + bodies.size()) + " >>\nstream\n" + heads + bodies +
         "\nendstream\nendobj\n";
  const size_t xref = pdf.size();
  places += std::string(1, 1) + BigEndian(xref, 4) + BigEndian(0, 2);
  pdf += std::to_string(packer + 1) + " 0 obj\n<< /Type /XRef /W [1 4 2] /Root 1 0 R /Size " +
         std::to_string(packer + 2) + " /Length " + std::to_string(places.size()) +
         " >>\nstream\n" + places + "\nendstream\nendobj\nstartxref\n" + std::to_string(xref) +
         "\n%%EOF\n";
  return pdf;
}

std::string Stream(const std::string& data, const std::string& entries) {
  return "<< " + entries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
}

std::string Page(const std::string& entries) {
  return "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 100] " + entries + " >>";
}

std::string Form(const std::string& data, const std::string& resources) {
  return "<< /Type /XObject /Subtype /Form /BBox [0 0 50 50] " + resources + " /Length " +
         std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream";
}

std::string XObjects(const std::string& names) {
  return "/Resources << /XObject << " + names + " >> >>";
}

ScopedFPDFDocument Load(const std::string& pdf, const char* password) {
  return ScopedFPDFDocument(FPDF_LoadMemDocument64(pdf.data(), pdf.size(), password));
}

std::string Save(FPDF_DOCUMENT document) {
  struct Memory : FPDF_FILEWRITE {
    std::string bytes;
  } copy = {};
  copy.version = 1;
  copy.WriteBlock = [](FPDF_FILEWRITE* self, const void* data, unsigned long size) {
    static_cast<Memory*>(self)->bytes.append(static_cast<const char*>(data), size);
    return 1;
  };
  Check(FPDF_SaveAsCopy(document, &copy, FPDF_NO_INCREMENTAL), "saving");
  return copy.bytes;
}

std::string SaveWithoutId(FPDF_DOCUMENT document) {
  const std::string bytes = Save(document);
  return bytes.substr(0, bytes.rfind("/ID"));
}

std::string Pixels(FPDF_PAGE page, int flags, double scale) {
  const int width = static_cast<int>(FPDF_GetPageWidthF(page) * scale + 0.5);
  const int height = static_cast<int>(FPDF_GetPageHeightF(page) * scale + 0.5);
  ScopedFPDFBitmap bitmap(FPDFBitmap_Create(width, height, 0));
  FPDFBitmap_FillRect(bitmap.get(), 0, 0, width, height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap.get(), page, 0, 0, width, height, 0, flags);
  return std::string(static_cast<const char*>(FPDFBitmap_GetBuffer(bitmap.get())),
                     static_cast<size_t>(width) * height * 4);
}

std::vector<std::string> VariedObjects() {
  const std::string resources =
      "/Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> "
      "/XObject << /Form 8 0 R /Image 9 0 R >> >>";
  return {
      "<< /Type /Catalog /Pages 2 0 R /Outlines 14 0 R >>",
      "<< /Type /Pages /Kids [3 0 R 4 0 R 5 0 R] /Count 3 >>",
      Page("/Contents 6 0 R /Annots [11 0 R 12 0 R] " + resources),
      Page("/Contents [7 0 R 6 0 R] /Annots 17 0 R " + resources),
      Page("/Contents 7 0 R /Annots [18 0 R 11 0 R] " + resources),
      "<< /Length 60 /Title (Content) >>\nstream\n"
      "BT /F 24 Tf 10 60 Td (Tide tables) Tj ET /Form Do /Image Do  \nendstream",
      Stream("q 40 0 0 40 120 30 cm /Image Do Q BT /F 12 Tf 10 20 Td (Moon) Tj ET"),
      "<< /Type /XObject /Subtype /Form /BBox [0 0 50 50] /Length 28 >>\nstream\n"
      "1 0 0 rg 5 5 30 20 re f     \nendstream",
      "<< /Type /XObject /Subtype /Image /Width 2 /Height 2 /BitsPerComponent 8 "
      "/ColorSpace /DeviceGray /SMask 10 0 R /Length 4 >>\nstream\n\x20\x60\xA0\xE0\nendstream",
      "<< /Type /XObject /Subtype /Image /Width 1 /Height 1 /BitsPerComponent 8 "
      "/ColorSpace /DeviceGray /Length 1 >>\nstream\n\xC0\nendstream",
      "<< /Type /Annot /Subtype /Link /Rect [5 50 180 80] /Dest [5 0 R /XYZ 0 50 null] >>",
      "<< /Type /Annot /Subtype /Stamp /Rect [100 10 150 40] /AP << /N 13 0 R >> >>",
      "<< /Type /XObject /Subtype /Form /BBox [0 0 50 30] /Length 28 >>\nstream\n"
      "0 0 1 rg 0 0 50 30 re f     \nendstream",
      "<< /Type /Outlines /First 15 0 R /Last 6 0 R /Count 3 >>",
      "<< /Title (First) /Parent 14 0 R /Next 16 0 R /Dest [4 0 R /Fit] >>",
      "<< /Title (Second) /Parent 14 0 R /Next 6 0 R /Type /Annot /Subtype /Link "
      "/Rect [5 5 60 20] /Dest [5 0 R /Fit] >>",
      "[16 0 R 11 0 R]",
      "<< /Type /Annot /Subtype /Link /Rect [5 5 90 20] /Dest [3 0 R /Fit] >>"};
}

void WriteToCompare(const std::string& folder, const std::string& name, FPDF_DOCUMENT document) {
  WriteFile(folder + "/" + name + ".pdf", Save(document));
  ScopedFPDFPage page(FPDF_LoadPage(document, 0));
  WriteFile(folder + "/" + name + ".ppm", Picture(page.get()));
}

int FindPages(FPDF_DOCUMENT document,
              const std::vector<FPDF_ANNOTATION_SUBTYPE>& subtypes,
              int* pages,
              int capacity) {
  PageSearch search(QuillmereEngine_StartPageSearch(document, subtypes.data(),
                                                    static_cast<int>(subtypes.size())));
  while (QuillmereEngine_ContinuePageSearch(search.get(), 1000)) {
  }
  return QuillmereEngine_FoundPages(search.get(), subtypes.data(),
                                    static_cast<int>(subtypes.size()), pages, capacity);
}
