#include "live_objects.h"

#include <windows.h>

#include <cstdint>

namespace tavdtest {

namespace {

// One entry of the table that the process environment block points to; on 64-bit Windows and Wine alike.
struct Entry {
  std::uint64_t object;
  std::uint32_t owner;  // the low half is the process
  std::uint16_t unique;
  std::uint8_t type;  // 0: free
  std::uint8_t flags;
  std::uint64_t user;
};
static_assert(sizeof(Entry) == 24);
constexpr int kEntries = 65536;
constexpr std::size_t kTableInBlock = 0xF8;
constexpr std::size_t kBlockInThread = 0x60;
constexpr std::uint32_t kProcessMask = 0xFFFF;

const Entry* table() {
  const auto* thread = reinterpret_cast<const unsigned char*>(NtCurrentTeb());
  const auto* block = *reinterpret_cast<const unsigned char* const*>(thread + kBlockInThread);
  return *reinterpret_cast<const Entry* const*>(block + kTableInBlock);
}

BOOL CALLBACK count(HWND window, LPARAM total) {
  ++*reinterpret_cast<int*>(total);
  EnumChildWindows(
      window,
      [](HWND, LPARAM sum) {
        ++*reinterpret_cast<int*>(sum);
        return TRUE;
      },
      total);
  return TRUE;
}

}  // namespace

int live_gdi_objects() {
  const Entry* entries = table();
  const std::uint32_t process = GetCurrentProcessId() & kProcessMask;
  int live = 0;
  for (int i = 0; i < kEntries; ++i) {
    const std::uint32_t owner = entries[i].owner & kProcessMask;
    // Wine's table is the process's own and may name no owner.
    if (entries[i].type != 0 && (owner == process || owner == 0)) ++live;
  }
  return live;
}

int live_windows() {
  int total = 0;
  EnumThreadWindows(GetCurrentThreadId(), count, reinterpret_cast<LPARAM>(&total));
  return total;
}

}  // namespace tavdtest
