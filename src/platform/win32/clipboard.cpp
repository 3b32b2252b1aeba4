#include "platform/clipboard.h"

#include <windows.h>

#include <cstring>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

class OpenedClipboard {
 public:
  OpenedClipboard() : open_(OpenClipboard(windowHandles.main) != 0) {}
  ~OpenedClipboard() {
    if (open_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return open_; }

 private:
  bool open_;
};

// A movable block with the text and its terminator; null when out of memory.
HGLOBAL globalBlockWith(const std::u16string& text) {
  const std::size_t size = (text.size() + 1) * sizeof(char16_t);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
  void* bytes = block == nullptr ? nullptr : GlobalLock(block);
  if (bytes == nullptr) {
    GlobalFree(block);
    return nullptr;
  }
  std::memcpy(bytes, text.c_str(), size);
  GlobalUnlock(block);
  return block;
}

}  // namespace

bool setClipboardText(const std::u16string& text) {
  const OpenedClipboard clipboard;
  if (!clipboard) return false;
  const HGLOBAL block = globalBlockWith(text);
  if (block == nullptr) return false;
  EmptyClipboard();
  if (SetClipboardData(CF_UNICODETEXT, block) != nullptr) return true;
  GlobalFree(block);  // the system takes ownership only on success
  return false;
}

std::optional<std::u16string> clipboardText() {
  const OpenedClipboard clipboard;
  const HANDLE block = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
  const auto* units = block == nullptr ? nullptr : static_cast<const wchar_t*>(GlobalLock(block));
  if (units == nullptr) return std::nullopt;
  const std::size_t length = wcsnlen(units, GlobalSize(block) / sizeof(wchar_t));
  std::u16string text = fromWide({units, length});
  GlobalUnlock(block);
  return text;
}

}  // namespace quillmere::platform
