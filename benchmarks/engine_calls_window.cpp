#include <windows.h>

#include <fpdf_text.h>
#include <fpdfview.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <vector>

#include "engine_calls.h"

namespace quillmere::bench {

namespace {

constexpr const char* kEngineLibrary = "pdfium.dll";

EngineCalls counted;
int barredCalls = 0;

struct SlotAndFunction {
  std::uintptr_t* slot;
  std::uintptr_t function;
};
std::vector<SlotAndFunction> functionsBehindBar;

decltype(&FPDF_LoadDocument) realLoadDocument;
decltype(&FPDF_LoadPage) realLoadPage;
decltype(&FPDFText_LoadPage) realLoadTextPage;
decltype(&FPDF_RenderPageBitmap) realRender;

FPDF_DOCUMENT countingLoadDocument(FPDF_STRING path, FPDF_BYTESTRING password) {
  ++counted.documentLoads;
  return realLoadDocument(path, password);
}

FPDF_PAGE countingLoadPage(FPDF_DOCUMENT document, int index) {
  ++counted.pageLoads;
  return realLoadPage(document, index);
}

FPDF_TEXTPAGE countingLoadTextPage(FPDF_PAGE page) {
  ++counted.textPageLoads;
  return realLoadTextPage(page);
}

void countingRender(FPDF_BITMAP bitmap, FPDF_PAGE page, int x, int y, int width, int height,
                    int rotate, int flags) {
  ++counted.renders;
  realRender(bitmap, page, x, y, width, height, rotate, flags);
}

// One function can replace them all, because the caller cleans up the arguments.
std::intptr_t countBarredCall() {
  ++barredCalls;
  return 0;
}

void put(std::uintptr_t* slot, std::uintptr_t function) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection);
  *slot = function;
  VirtualProtect(slot, sizeof(*slot), protection, &protection);
}

using ImportVisitor = std::function<void(const char* name, std::uintptr_t* slot)>;

void visitImports(const std::uint8_t* base, const IMAGE_IMPORT_DESCRIPTOR& library,
                  const ImportVisitor& visit) {
  const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library.OriginalFirstThunk);
  auto* slots =
      reinterpret_cast<std::uintptr_t*>(const_cast<std::uint8_t*>(base) + library.FirstThunk);
  for (int i = 0; names[i].u1.AddressOfData != 0; ++i) {
    const auto* entry =
        reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names[i].u1.AddressOfData);
    visit(reinterpret_cast<const char*>(entry->Name), slots + i);
  }
}

void visitEngineImports(const ImportVisitor& visit) {
  const auto* base = reinterpret_cast<const std::uint8_t*>(GetModuleHandleW(nullptr));
  const auto* dosHeader = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto* header = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dosHeader->e_lfanew);
  const IMAGE_DATA_DIRECTORY& directory =
      header->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* library =
      reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
  for (; library->Name != 0; ++library) {
    const auto* name = reinterpret_cast<const char*>(base + library->Name);
    if (_stricmp(name, kEngineLibrary) == 0) visitImports(base, *library, visit);
  }
}

template <typename Function>
void replace(const char* wanted, Function* counting, Function*& real) {
  visitEngineImports([&](const char* name, std::uintptr_t* slot) {
    if (std::strcmp(name, wanted) != 0) return;
    real = reinterpret_cast<Function*>(*slot);
    put(slot, reinterpret_cast<std::uintptr_t>(counting));
  });
}

}  // namespace

void startCountingEngineCalls() {
  replace("FPDF_LoadDocument", countingLoadDocument, realLoadDocument);
  replace("FPDF_LoadPage", countingLoadPage, realLoadPage);
  replace("FPDFText_LoadPage", countingLoadTextPage, realLoadTextPage);
  replace("FPDF_RenderPageBitmap", countingRender, realRender);
}

EngineCalls takeEngineCalls() {
  const EngineCalls calls = counted;
  counted = EngineCalls{};
  return calls;
}

EngineBarred::EngineBarred() {
  barredCalls = 0;
  visitEngineImports([](const char*, std::uintptr_t* slot) {
    functionsBehindBar.push_back({slot, *slot});
    put(slot, reinterpret_cast<std::uintptr_t>(countBarredCall));
  });
}

EngineBarred::~EngineBarred() {
  for (const SlotAndFunction& entry : functionsBehindBar) put(entry.slot, entry.function);
  functionsBehindBar.clear();
}

int EngineBarred::calls() const {
  return barredCalls;
}

}  // namespace quillmere::bench
