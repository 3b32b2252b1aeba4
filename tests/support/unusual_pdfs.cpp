#include "support/unusual_pdfs.h"

#include <cstddef>
#include <map>
#include <vector>

#include "support/pdf_builder.h"

namespace quillmere::test {

namespace {

using Objects = std::map<int, std::string>;  // bodies by number, from 1

std::string reference(int number) {
  return PdfFile::reference(number);
}

std::string streamBody(const std::string& data, const std::string& entries = "") {
  return "<< " + entries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
         "\nendstream";
}

std::string pageBody(int content) {
  return "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << /Font << /F1 7 0 R "
         ">> >> /Contents " +
         reference(content) + " >>";
}

Objects twoPages() {
  return {{1, "<< /Type /Catalog /Pages 2 0 R >>"},
          {2, "<< /Type /Pages /Count 2 /Kids [3 0 R 5 0 R] >>"},
          {3, pageBody(4)},
          {4, streamBody(textContent("Page 1"))},
          {5, pageBody(6)},
          {6, streamBody(textContent("Page 2"))},
          {7, "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"}};
}

bool isStream(const std::string& body) {
  return body.ends_with("endstream");
}

std::string padded(std::size_t number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - text.size(), '0') + text;
}

// A file as it grows.
struct Growing {
  std::string bytes = "%PDF-1.5\n";
  std::map<int, std::size_t> offsets;

  void add(int number, const std::string& body) {
    offsets[number] = bytes.size();
    bytes += std::to_string(number) + " 0 obj\n" + body + "\nendobj\n";
  }
  // A cross-reference table of these objects, each in a section of its own.
  void addTable(const std::vector<int>& numbers, const std::map<int, std::size_t>& places) {
    bytes += "xref\n0 1\n0000000000 65535 f \n";
    for (const int number : numbers) {
      const auto place = places.find(number);
      bytes += std::to_string(number) + " 1\n" +
               padded(place == places.end() ? 0 : place->second, 10) + " 00000 n \n";
    }
  }
  void end(std::size_t table) { bytes += "startxref\n" + std::to_string(table) + "\n%%EOF\n"; }
};

// Where an object is, as a cross-reference stream says it.
std::string entry(char kind, std::size_t place, std::size_t index) {
  std::string bytes(1, kind);
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(place >> shift & 0xFF);
  return bytes + static_cast<char>(index);
}

constexpr int kPack = 8;
constexpr int kCrossReferences = 9;

// Adds the streams as they are and everything else in one stream. Returns the entries of a
// cross-reference stream for all of them; its own offset is that of what comes next.
std::string addPacked(Growing& file, const Objects& objects) {
  std::string heads;
  std::string bodies;
  std::string entries = entry(0, 0, 0);
  std::size_t packed = 0;
  for (const auto& [number, body] : objects) {
    if (isStream(body)) {
      file.add(number, body);
      entries += entry(1, file.offsets[number], 0);
    } else {
      heads += std::to_string(number) + " " + std::to_string(bodies.size()) + " ";
      bodies += body + "\n";
      entries += entry(2, kPack, packed++);
    }
  }
  file.add(kPack, streamBody(heads + bodies, "/Type /ObjStm /N " + std::to_string(packed) +
                                                 " /First " + std::to_string(heads.size())));
  return entries + entry(1, file.offsets[kPack], 0) + entry(1, file.bytes.size(), 0);
}

std::string crossReferenceBody(const std::string& entries) {
  return streamBody(entries, "/Type /XRef /W [1 4 1] /Root 1 0 R /Size 10");
}

std::string trailer(int size, const std::string& entries) {
  return "trailer\n<< /Root 1 0 R /Size " + std::to_string(size) + " " + entries + " >>\n";
}

std::string plainPdf(const Objects& objects, const std::string& trailerEntries = "") {
  Growing file;
  std::vector<int> numbers;
  for (const auto& [number, body] : objects) {
    file.add(number, body);
    numbers.push_back(number);
  }
  const std::size_t table = file.bytes.size();
  file.addTable(numbers, file.offsets);
  file.bytes += trailer(objects.rbegin()->first + 1, trailerEntries);
  file.end(table);
  return file.bytes;
}

// One pass over a linearised file, with the numbers that an earlier one found.
struct Linearised {
  Growing file;
  std::size_t firstTable = 0;
  std::size_t mainTable = 0;
  std::size_t firstPageEnd = 0;
};

Linearised linearise(const Linearised& known) {
  const Objects objects = twoPages();
  const std::vector<int> first = {1, 3, 4, 7};
  const std::vector<int> rest = {2, 5, 6};
  Linearised next;
  Growing& file = next.file;
  file.add(kPack, "<< /Linearized 1 /L " + padded(known.file.bytes.size(), 8) +
                      " /H [0000 0000] /O 3 /E " + padded(known.firstPageEnd, 8) + " /N 2 /T " +
                      padded(known.mainTable, 8) + " >>");
  next.firstTable = file.bytes.size();
  file.addTable({1, 3, 4, 7, kPack}, known.file.offsets);
  file.bytes += trailer(kPack + 1, "/Prev " + padded(known.mainTable, 8));
  file.end(0);
  for (const int number : first) file.add(number, objects.at(number));
  next.firstPageEnd = file.bytes.size();
  for (const int number : rest) file.add(number, objects.at(number));
  next.mainTable = file.bytes.size();
  file.addTable(rest, file.offsets);
  file.bytes += trailer(kPack + 1, "");
  file.end(next.firstTable);
  return next;
}

std::string bytesOf(const std::string& hexadecimal) {
  std::string bytes;
  for (std::size_t n = 0; n + 1 < hexadecimal.size(); n += 2) {
    bytes += static_cast<char>(std::stoi(hexadecimal.substr(n, 2), nullptr, 16));
  }
  return bytes;
}

// `content` is what the cipher makes of "BT /F1 24 Tf 72 700 Td (Quill and page) Tj ET" in
// object 4.
std::string encryptedWith(const std::string& encryption, const std::string& content) {
  Objects objects = twoPages();
  objects[2] = "<< /Type /Pages /Count 1 /Kids [3 0 R] >>";
  objects[4] = streamBody(bytesOf(content));
  objects.erase(5);
  objects.erase(6);
  const std::string id = "<00112233445566778899AABBCCDDEEFF>";
  return plainPdf(objects, "/ID [" + id + " " + id + "] /Encrypt << /Filter /Standard /P -44 " +
                               "/StmF /StdCF /StrF /StdCF " + encryption + " >>");
}

}  // namespace

std::string packedPdf() {
  Growing file;
  const std::string entries = addPacked(file, twoPages());
  const std::size_t table = file.bytes.size();
  file.add(kCrossReferences, crossReferenceBody(entries));
  file.end(table);
  return file.bytes;
}

std::string hybridPdf() {
  Growing file;
  const std::string entries = addPacked(file, twoPages());
  const std::size_t hidden = file.bytes.size();
  file.add(kCrossReferences, crossReferenceBody(entries));
  const std::size_t table = file.bytes.size();
  file.addTable({4, 6, kPack, kCrossReferences}, file.offsets);
  file.bytes += trailer(kCrossReferences + 1, "/XRefStm " + std::to_string(hidden));
  file.end(table);
  return file.bytes;
}

std::string linearisedPdf() {
  // Every number has as many digits in each pass.
  return linearise(linearise(Linearised())).file.bytes;
}

std::string sharedPagePdf() {
  Objects objects = twoPages();
  objects[2] = "<< /Type /Pages /Count 2 /Kids [3 0 R 3 0 R] >>";
  objects.erase(5);
  objects.erase(6);
  return plainPdf(objects);
}

std::string sharedNodePdf() {
  Objects objects = twoPages();
  objects[2] = "<< /Type /Pages /Count 2 /Kids [3 0 R 5 0 R] /Parent 8 0 R >>";
  objects[8] = "<< /Type /Pages /Count 4 /Kids [2 0 R 2 0 R] >>";
  objects[1] = "<< /Type /Catalog /Pages 8 0 R >>";
  return plainPdf(objects);
}

std::string signedPdf() {
  Objects objects = twoPages();
  objects[1] = "<< /Type /Catalog /Pages 2 0 R /AcroForm << /SigFlags 3 /Fields [8 0 R] >> >>";
  objects[2] = "<< /Type /Pages /Count 1 /Kids [3 0 R] >>";
  objects[3].insert(2, " /Annots [8 0 R]");
  objects[5] =
      "<< /Type /Sig /Filter /Adobe.PPKLite /SubFilter /adbe.pkcs7.detached /ByteRange [0 10 20 "
      "30] "
      "/Contents <3080AABBCCDD> /M (D:20260101120000Z) >>";
  objects.erase(6);
  objects[8] =
      "<< /Type /Annot /Subtype /Widget /FT /Sig /T (Signature) /V 5 0 R /Rect [50 50 150 100] /P "
      "3 "
      "0 R /F 132 >>";
  return plainPdf(objects);
}

std::string aes128Pdf() {
  return encryptedWith(
      "/V 4 /R 4 /Length 128 /CF << /StdCF << /CFM /AESV2 /Length 16 /AuthEvent /DocOpen >> >> /O "
      "<" +
          std::string(64, '5') +
          "> /U <DAD4BECA610F407E8E523EB0CA56C38100000000000000000000000000000000>",
      "000102030405060708090A0B0C0D0E0F96E6A4CCA1F195E8BD845BD44B022C5758358E96F86DF7F6C0D5A988AAD1"
      "7FBC27A70128E121B214856D7ADC3885967F");
}

std::string aes256Pdf() {
  return encryptedWith(
      "/V 5 /R 6 /Length 256 /CF << /StdCF << /CFM /AESV3 /Length 32 /AuthEvent /DocOpen >> >> "
      "/U <EACE262798D0F7325982B486540FF1C118871E1515E59AD3AE35F093A26A54A6"
      "31323334353637386162636465666768> "
      "/UE <DDC5E7484193D1DFA047DF5682FAAD5976242E81567E89DFB13388FEE50134FB> "
      "/O <E32962ECE30339764B4E0B7E776EF4E4D4129E8D1B062FB496C2CB01FB758E89"
      "6F776E657276616C6F776E65726B6579> "
      "/OE <AD1667A2968CB691AB07FCDEA204EA19E8E3F3BF74AC78E7C5385327E92E3E5F> "
      "/Perms <ADE97B300CFAE2E2B7C1E4D849A7BEE4>",
      "000102030405060708090A0B0C0D0E0F608C901DFF090E755BE7405AADB4EE473A149AB014854B571C8F2C590C89"
      "2F2DE1A81D7F7D5C7CC5D090E716AB2CF439");
}

}  // namespace quillmere::test
