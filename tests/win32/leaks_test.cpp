// A hundred visits leave nothing behind: no window, no object of GDI, no memory.
#include <gtest/gtest.h>

#include <cstdint>

#include "adapters/windows/windows_headers.h"
#include "tests/support/visit.h"
#include "tests/support/watchdog.h"

namespace dossierkit {
namespace {

// An entry of the table of all objects of GDI, which Windows keeps in each process.
struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;
  std::uint8_t flags;
  std::uint64_t user;
};

// Wine has that table and leaves GetGuiResources at 0.
int GdiObjects() {
  if (const DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return static_cast<int>(told);
#ifdef _WIN64
  const auto* entries = *reinterpret_cast<const GdiEntry* const*>(__readgsqword(0x60) + 0xF8);
#else
  const auto* entries = *reinterpret_cast<const GdiEntry* const*>(__readfsdword(0x30) + 0x94);
#endif
  constexpr int kMost = 16384;
  int count = 0;
  for (int i = 0; i < kMost; ++i) count += entries[i].type != 0;
  return count;
}

BOOL CALLBACK Count(HWND, LPARAM count) noexcept {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

BOOL CALLBACK CountOwn(HWND window, LPARAM count) noexcept {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != GetCurrentProcessId()) return TRUE;
  Count(window, count);
  EnumChildWindows(window, Count, count);
  return TRUE;
}

int Windows() {
  int count = 0;
  EnumWindows(CountOwn, reinterpret_cast<LPARAM>(&count));
  for (HWND window = FindWindowExW(HWND_MESSAGE, nullptr, nullptr, nullptr); window;
       window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr))
    CountOwn(window, reinterpret_cast<LPARAM>(&count));
  return count;
}

// What the heaps of the process have given out, in KiB.
int HeapKib() {
  HANDLE heaps[64];
  const DWORD known = GetProcessHeaps(64, static_cast<HANDLE*>(heaps));
  std::size_t bytes = 0;
  for (DWORD i = 0; i < known && i < 64; ++i) {
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(heaps[i]);
    while (HeapWalk(heaps[i], &entry)) {
      if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    }
    HeapUnlock(heaps[i]);
  }
  return static_cast<int>(bytes / 1024);
}

struct Held {
  int windows = Windows();
  int gdi = GdiObjects();
  int heap = HeapKib();
};

TEST(NativeLeaks, AHundredVisitsLeaveNothing) {
  tests::Visit visit;
  const auto visits = [&](int count) {
    for (int i = 0; i < count; ++i) {
      tests::ExpectProgressWithin(60, "one of a hundred visits");
      visit.Open([&] {
        visit.GoTo("A03");
        visit.user.DoubleClick("A03_A0304_v");  // the picker
      });
      visit.statements.clear();
      visit.files.FailAt(0);  // forgets what it noted
    }
    return Held();
  };
  const Held before = visits(5);
  const Held after = visits(100);
  EXPECT_EQ(after.windows, before.windows);
  EXPECT_LT(after.gdi - before.gdi, 20) << "fewer than one in five visits: Windows keeps some for a while";
  EXPECT_GT(after.gdi, 20) << "they are counted";
  EXPECT_LT(after.heap - before.heap, 50) << "of " << after.heap << " KiB: half a kilobyte a visit";
}

}  // namespace
}  // namespace dossierkit
