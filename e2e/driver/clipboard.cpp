#include "driver/clipboard.h"

#include <windows.h>

#include <cstring>

#include "driver/wait.h"

namespace quillmere::e2e {
namespace {

bool openClipboard() {
  return eventually([] { return OpenClipboard(nullptr) != FALSE; });
}

// The clipboard takes ownership of the block.
HGLOBAL globalBlockWith(const std::wstring& text) {
  const SIZE_T size = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
  std::memcpy(GlobalLock(block), text.c_str(), size);
  GlobalUnlock(block);
  return block;
}

}  // namespace

bool clearClipboard() {
  if (!openClipboard()) return false;
  EmptyClipboard();
  CloseClipboard();
  return true;
}

bool setClipboardText(const std::wstring& text) {
  if (!openClipboard()) return false;
  EmptyClipboard();
  const bool taken = SetClipboardData(CF_UNICODETEXT, globalBlockWith(text)) != nullptr;
  CloseClipboard();
  return taken;
}

std::wstring clipboardText() {
  if (!IsClipboardFormatAvailable(CF_UNICODETEXT) || !openClipboard()) return {};
  std::wstring text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = static_cast<const wchar_t*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

}  // namespace quillmere::e2e
