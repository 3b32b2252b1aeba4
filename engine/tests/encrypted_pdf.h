#ifndef QUILLMERE_ENGINE_TESTS_ENCRYPTED_PDF_H_
#define QUILLMERE_ENGINE_TESTS_ENCRYPTED_PDF_H_

#include <string>
#include <vector>

// As MakePdf(), encrypted by the format's first method: RC4 with 40 bits. |password| opens it.
// Strings of the objects are written in parentheses and hold no others.
std::string MakeEncryptedPdf(const std::vector<std::string>& objects, const std::string& password);

// How a document that opens without a password is encrypted: RC4 with 128 bits, revision 4.
struct Encryption {
  bool with_id = true;
  bool direct = false;          // its dictionary stands in the trailer
  bool packed = false;          // objects are packed as MakePackedPdf() does
  int plain_metadata = 0;       // the number of the object that stays readable; 0 for none
};
std::string MakeEncryptedPdf(const std::vector<std::string>& objects, const Encryption& encryption);

#endif  // QUILLMERE_ENGINE_TESTS_ENCRYPTED_PDF_H_
