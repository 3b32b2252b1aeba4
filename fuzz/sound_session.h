#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/stand_in.h"
#include "session/session.h"
#include "support/session_invariants.h"

// Shared by the targets that open a file.
namespace quillmere::fuzz {

inline const std::u16string kPath = u"C:\\fuzz.pdf";

// A fresh session in a small window that keeps the existing files; every question gets an answer.
inline void prepareSession(bool viewer) {
  resetSession();
  session.viewerRole = viewer;
  platform::standIn().window.client = {320, 240};
  platform::standIn().chooseAnswer = [](const platform::ShownBox&) {
    return platform::BoxAnswer::Ok;
  };
}

inline void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

inline void requireSoundSession() {
  const std::string broken = test::brokenInvariant();
  require(broken.empty(), broken.c_str());
}

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace quillmere::fuzz
