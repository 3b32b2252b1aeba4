#pragma once

#include <string>
#include <vector>

#include "annot/stamp_library.h"
#include "store/data_folder.h"
#include "support/png_file.h"
#include "support/session_test.h"

namespace quillmere::test {

// A stamps folder in a fresh data folder.
class StampTest : public SessionTest {
 protected:
  StampTest() { makeDataFolders(); }

  static std::u16string inStamps(const std::u16string& name) { return session.stampsFolder + name; }
  static void putStamp(const std::u16string& name, int width = 40, int height = 20,
                       std::uint32_t color = 0xFF203040) {
    platform::putFile(inStamps(name), plainPng(width, height, color));
  }
  static void putList(const std::string& bytes) {
    platform::putFile(inStamps(u"stamps.lst"), bytes);
  }
  // The bytes of the list; empty without one.
  static std::string listed() { return platform::fileBytes(inStamps(u"stamps.lst")).value_or(""); }
  static std::vector<std::u16string> names() {
    std::vector<std::u16string> all;
    for (const StampEntry& entry : session.stampLibrary) all.push_back(entry.name);
    return all;
  }
  // A library of `count` user stamps named "1" and so on.
  static void fillLibrary(int count) {
    std::string list;
    for (int n = 1; n <= count; ++n) {
      const std::string name = std::to_string(n) + ".png";
      putStamp(std::u16string(name.begin(), name.end()));
      list += name + "\r\n";
    }
    putList(list);
    LoadStampLibrary();
  }
  // Places a stamp of the library on page 0, as pending.
  static Placement& placeStamp(std::int32_t stamp) {
    Placement placement;
    placement.stampIndex = stamp;
    placement.width = 40;
    placement.height = 20;
    return session.placements[0].emplace_back(placement);
  }
};

}  // namespace quillmere::test
