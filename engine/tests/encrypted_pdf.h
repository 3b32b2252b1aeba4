#ifndef QUILLMERE_ENGINE_TESTS_ENCRYPTED_PDF_H_
#define QUILLMERE_ENGINE_TESTS_ENCRYPTED_PDF_H_

#include <string>
#include <vector>

// As MakePdf(), encrypted by the format's first method: RC4 with 40 bits. |password| opens it.
// Strings of the objects are written in parentheses and hold no others.
std::string MakeEncryptedPdf(const std::vector<std::string>& objects, const std::string& password);

#endif  // QUILLMERE_ENGINE_TESTS_ENCRYPTED_PDF_H_
