#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "app/command_ids.h"
#include "app/commands.h"

namespace quillmere::test {
namespace {

// The program beside this one, opened for its resources alone.
class AcceleratorsTest : public ::testing::Test {
 protected:
  AcceleratorsTest() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring program(path);
    program.resize(program.rfind(L'\\') + 1);
    program += L"quillmere.exe";
    module_ = LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (module_ == nullptr) return;
    const HACCEL table = LoadAcceleratorsW(module_, L"APPACCEL");
    rows_.resize(static_cast<std::size_t>(CopyAcceleratorTableW(table, nullptr, 0)));
    CopyAcceleratorTableW(table, rows_.data(), static_cast<int>(rows_.size()));
  }
  ~AcceleratorsTest() override {
    if (module_ != nullptr) FreeLibrary(module_);
  }

  // Returns 0 when the key has no command.
  int commandOf(WORD key, BYTE modifiers) const {
    for (const ACCEL& row : rows_) {
      constexpr BYTE kModifiers = FCONTROL | FSHIFT | FALT;
      const bool virtualKey = (row.fVirt & FVIRTKEY) != 0;
      if (virtualKey && row.key == key && (row.fVirt & kModifiers) == modifiers) return row.cmd;
    }
    return 0;
  }

  HMODULE module_ = nullptr;
  std::vector<ACCEL> rows_;
};

TEST_F(AcceleratorsTest, EveryKeyHasItsCommandAndThereIsNoOther) {
  const struct {
    WORD key;
    BYTE modifiers;
    int command;
  } keys[] = {
      {'O', FCONTROL, kCmdOpen},
      {VK_OEM_4, FCONTROL, kCmdPreviousInFolder},
      {VK_OEM_6, FCONTROL, kCmdNextInFolder},
      {'W', FCONTROL, kCmdClose},
      {'P', FCONTROL, kCmdPrint},
      {'S', FCONTROL, kCmdSave},
      {'S', FCONTROL | FSHIFT, kCmdSaveAs},
      {VK_F2, 0, kCmdBookmarksPanel},
      {VK_F3, 0, kCmdBindersPanel},
      {'N', FCONTROL, kCmdPanScroll},
      {VK_OEM_5, FCONTROL, kCmdEqualPanes},
      {VK_F5, 0, kCmdSinglePage},
      {VK_F6, 0, kCmdBook},
      {VK_F7, 0, kCmdIndependentPages},
      {VK_F8, 0, kCmdTwoDocuments},
      {'F', FCONTROL, kCmdFind},
      {'M', FCONTROL, kCmdMarkUp},
  };
  for (const auto& row : keys) {
    EXPECT_EQ(commandOf(row.key, row.modifiers), row.command) << row.key << ' ' << row.modifiers;
  }
  EXPECT_EQ(rows_.size(), std::size(keys));
}

TEST_F(AcceleratorsTest, TheTableOfCommandsNamesTheSameKeys) {
  std::size_t named = 0;
  for (const Command& command : allCommands()) {
    const Accelerator& accelerator = command.accelerator;
    if (accelerator.key == 0) continue;
    ++named;
    const int modifiers = (accelerator.control ? FCONTROL : 0) | (accelerator.shift ? FSHIFT : 0);
    EXPECT_EQ(commandOf(accelerator.key, static_cast<BYTE>(modifiers)),
              static_cast<int>(command.id));
  }
  EXPECT_EQ(named, rows_.size());
}

}  // namespace
}  // namespace quillmere::test
