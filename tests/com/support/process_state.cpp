#include "tests/com/support/process_state.h"

#include <psapi.h>

#include <array>
#include <cstdint>

namespace qortest {

namespace {

constexpr DWORD kMostHeaps = 64;

struct Heaps {
  std::array<HANDLE, kMostHeaps> all{};
  DWORD count = 0;
};

Heaps HeapsOfProcess() {
  Heaps heaps;
  heaps.count = GetProcessHeaps(kMostHeaps, heaps.all.data());
  if (heaps.count > kMostHeaps) heaps.count = kMostHeaps;
  return heaps;
}

void CountBlocks(HANDLE heap, ProcessState& state) {
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry) != FALSE) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
    ++state.blocks;
    state.bytes += entry.cbData;
  }
  HeapUnlock(heap);
}

// The system's own count is not to be had everywhere: every number that a handle may have is tried.
std::size_t OpenHandles() {
  constexpr std::uintptr_t kHighest = 0x8000;
  std::size_t open = 0;
  for (std::uintptr_t number = 4; number <= kHighest; number += 4) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(number), &flags) != FALSE) ++open;
  }
  return open;
}

}  // namespace

void KeepNoFreedTexts() {
  using Switch = void(WINAPI*)();
  const HMODULE automation = LoadLibraryW(L"oleaut32.dll");
  const auto found =
      reinterpret_cast<Switch>(reinterpret_cast<void*>(GetProcAddress(automation, "SetOaNoCache")));
  if (found != nullptr) found();
}

ProcessState MeasureProcess() {
  ProcessState state;
  const Heaps heaps = HeapsOfProcess();
  for (DWORD at = 0; at < heaps.count; ++at) CountBlocks(heaps.all[at], state);
  state.handles = OpenHandles();
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof(memory);
  K32GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
  state.committed = memory.PagefileUsage;
  return state;
}

bool AreHeapsSound() {
  const Heaps heaps = HeapsOfProcess();
  for (DWORD at = 0; at < heaps.count; ++at) {
    if (HeapValidate(heaps.all[at], 0, nullptr) == FALSE) return false;
  }
  return true;
}

}  // namespace qortest
