#include "imports.h"

#include <cstring>

namespace tavdtest {

namespace {

template <typename Part>
Part* part_at(HMODULE module, DWORD offset) {
  return reinterpret_cast<Part*>(reinterpret_cast<unsigned char*>(module) + offset);
}

void* exchange(IMAGE_THUNK_DATA* entry, void* replacement) {
  void* const original = reinterpret_cast<void*>(entry->u1.Function);
  if (replacement == nullptr) return original;
  DWORD before = 0;
  VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &before);
  entry->u1.Function = reinterpret_cast<ULONG_PTR>(replacement);
  VirtualProtect(entry, sizeof *entry, before, &before);
  return original;
}

}  // namespace

void* redirect_import(HMODULE module, const char* function, void* replacement) {
  const auto* dos = part_at<IMAGE_DOS_HEADER>(module, 0);
  const auto* headers = part_at<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
  const DWORD table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* dll = part_at<IMAGE_IMPORT_DESCRIPTOR>(module, table); dll->Name != 0; ++dll) {
    auto* name = part_at<IMAGE_THUNK_DATA>(module, dll->OriginalFirstThunk);
    auto* entry = part_at<IMAGE_THUNK_DATA>(module, dll->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++entry) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* imported = part_at<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(name->u1.AddressOfData));
      if (std::strcmp(reinterpret_cast<const char*>(imported->Name), function) == 0) {
        return exchange(entry, replacement);
      }
    }
  }
  return nullptr;
}

}  // namespace tavdtest
