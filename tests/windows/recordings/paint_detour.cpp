#include "paint_detour.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace recordings {
namespace {

constexpr char kLibrary[] = "tavd.dll";
constexpr char kSystem[] = "USER32.dll";

HDC painting;

HDC WINAPI begin_paint(HWND, PAINTSTRUCT*) {
  return painting;
}

BOOL WINAPI end_paint(HWND, const PAINTSTRUCT*) {
  return TRUE;
}

template <class Type>
Type* at(BYTE* image, DWORD offset) {
  return reinterpret_cast<Type*>(image + offset);
}

// Where the loader has put the address of a function that the library imports.
void** import_of(const char* name) {
  auto* const image = reinterpret_cast<BYTE*>(GetModuleHandleA(kLibrary));
  if (image == nullptr) throw std::runtime_error("tavd.dll is not loaded");
  const auto offset = static_cast<DWORD>(at<IMAGE_DOS_HEADER>(image, 0)->e_lfanew);
  const auto& header = *at<IMAGE_NT_HEADERS64>(image, offset);
  const DWORD imports = header.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* each = at<IMAGE_IMPORT_DESCRIPTOR>(image, imports); each->Name != 0; ++each) {
    if (lstrcmpiA(at<char>(image, each->Name), kSystem) != 0) continue;
    const auto* names = at<IMAGE_THUNK_DATA64>(image, each->OriginalFirstThunk);
    auto* place = at<IMAGE_THUNK_DATA64>(image, each->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++place) {
      if (IMAGE_SNAP_BY_ORDINAL64(names->u1.Ordinal)) continue;
      const auto* import = at<IMAGE_IMPORT_BY_NAME>(image, static_cast<DWORD>(names->u1.AddressOfData));
      if (std::strcmp(import->Name, name) == 0) return reinterpret_cast<void**>(&place->u1.Function);
    }
  }
  throw std::runtime_error(std::string("tavd.dll does not import ") + name);
}

// Puts an address in the place of another, which it returns.
void* exchange(void** place, void* address) {
  DWORD protection = 0;
  VirtualProtect(static_cast<void*>(place), sizeof *place, PAGE_READWRITE, &protection);
  void* const former = *place;
  *place = address;
  VirtualProtect(static_cast<void*>(place), sizeof *place, protection, &protection);
  return former;
}

struct Detour {
  void** place;
  void* former;
} begin, end;

Detour detour(const char* name, void* address) {
  void** const place = import_of(name);
  return {place, exchange(place, address)};
}

}  // namespace

PaintDetour::PaintDetour(HDC target) {
  painting = target;
  begin = detour("BeginPaint", reinterpret_cast<void*>(begin_paint));
  end = detour("EndPaint", reinterpret_cast<void*>(end_paint));
}

PaintDetour::~PaintDetour() {
  exchange(end.place, end.former);
  exchange(begin.place, begin.former);
}

}  // namespace recordings
