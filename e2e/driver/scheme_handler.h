#pragma once

#include <string>

// Replaces the programs that the system opens addresses with.
namespace quillmere::e2e {

// While it lives, addresses of this scheme ("http") are recorded instead of opened.
class SchemeHandler {
 public:
  explicit SchemeHandler(const std::wstring& scheme);
  ~SchemeHandler();
  SchemeHandler(const SchemeHandler&) = delete;
  SchemeHandler& operator=(const SchemeHandler&) = delete;

 private:
  std::wstring key_;
  std::wstring before_;
};

// The addresses recorded in this scenario, each on a line.
std::string openedAddresses();

}  // namespace quillmere::e2e
