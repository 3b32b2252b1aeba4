#include "stand_in.h"

#include <gtest/gtest.h>

#include <memory>

#include "stand_in_files.h"
#include "stand_in_paths.h"
#include "stand_in_process.h"

namespace quillmere::platform {
namespace {

// Rebuilt as a whole on reset, so that no field can be missed.
std::unique_ptr<StandIn>& holder() {
  static std::unique_ptr<StandIn> instance = std::make_unique<StandIn>();
  return instance;
}

}  // namespace

StandIn& standIn() {
  return *holder();
}

void noteShown(const std::string& what) {
  std::vector<std::string>& shown = standIn().shown;
  if (shown.empty() || shown.back() != what) shown.push_back(what);
}

void resetStandIn() {
  releaseSilentVolumes();
  if (!waitForDetachedThreads()) {
    ADD_FAILURE() << "a thread of an earlier test is still running";
    forgetDetachedThreads();  // or every later test would fail too
  }
  resetVolumes();
  resetFileBooks();
  resetClock();
  holder() = std::make_unique<StandIn>();
  putFolder(standIn().localAppDataFolder);
  putFolder(standIn().desktopFolder);
  putFolder(standIn().temporaryFolder);
  putFile(standIn().executable, "MZ");
}

}  // namespace quillmere::platform
