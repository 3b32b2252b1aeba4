#pragma once

#include <windows.h>

#include <objbase.h>

#include <memory>
#include <type_traits>

// RAII owners of system handles and objects.
namespace quillmere::platform {

struct KernelHandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
// A file, process, mutex or event; null for none. CreateFileW's INVALID_HANDLE_VALUE must be turned
// into null first, see `openFile`.
using KernelHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, KernelHandleCloser>;

// CreateFileW on `path`; null on failure, with the system's error still set.
inline KernelHandle openFile(const wchar_t* path, DWORD access, DWORD sharing, DWORD disposition) {
  const HANDLE file =
      CreateFileW(path, access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
  return KernelHandle(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

struct FindCloser {
  void operator()(HANDLE search) const { FindClose(search); }
};
// A file search that found at least one file; null when there is none.
using FindHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, FindCloser>;

struct ComReleaser {
  template <typename Interface>
  void operator()(Interface* object) const {
    object->Release();
  }
};
template <typename Interface>
using ComOwner = std::unique_ptr<Interface, ComReleaser>;

// Creates an object of a class; null on failure.
template <typename Interface>
ComOwner<Interface> createComObject(const CLSID& classId, const IID& interfaceId) {
  void* object = nullptr;
  CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, &object);
  return ComOwner<Interface>(static_cast<Interface*>(object));
}

// Another interface of the same object; null when it has none.
template <typename Interface, typename Other>
ComOwner<Interface> queryInterface(Other& object, const IID& interfaceId) {
  void* found = nullptr;
  object.QueryInterface(interfaceId, &found);
  return ComOwner<Interface>(static_cast<Interface*>(found));
}

struct TaskMemoryFreer {
  void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};
using TaskText = std::unique_ptr<wchar_t, TaskMemoryFreer>;

// Keeps the calling thread in a COM apartment while this object lives.
class ComApartment {
 public:
  ComApartment()
      : entered_(
            SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {
  }
  ~ComApartment() {
    if (entered_) CoUninitialize();
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;

 private:
  bool entered_;
};

struct RegistryKeyCloser {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using RegistryKey = std::unique_ptr<std::remove_pointer_t<HKEY>, RegistryKeyCloser>;

}  // namespace quillmere::platform
