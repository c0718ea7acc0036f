#include "tests/wma/component.h"

#include <string.h>

#include <iterator>

namespace kelvo::test {

SharedPointer<void*> g_component[4];

namespace {
constexpr int kWords[] = {1, 3};
void* const kWaveOutWrite = reinterpret_cast<void*>(&WaveOutWrite);
}  // namespace

HMODULE ComponentModule() {
  return reinterpret_cast<HMODULE>(&g_component);
}

void ResetComponent() {
  for (int word : kWords) g_component[word] = kWaveOutWrite;
}

bool CallsTheSystem() {
  for (int word : kWords) {
    if (g_component[word] != kWaveOutWrite) return false;
  }
  return true;
}

UINT PlayBlock(int word, int16_t* samples, size_t bytes) {
  WAVEHDR header = {reinterpret_cast<char*>(samples), static_cast<DWORD>(bytes)};
  void* const write = g_component[kWords[word]];
  return reinterpret_cast<UINT(WINAPI*)(HANDLE, void*, UINT)>(write)(nullptr, &header,
                                                                     sizeof(header));
}

}  // namespace kelvo::test

FARPROC GetProcAddress(HMODULE, const char* name) noexcept {
  using namespace kelvo::test;
  return reinterpret_cast<FARPROC>(
      strcmp(name, "waveOutWrite") == 0 ? kWaveOutWrite : static_cast<void*>(g_component));
}
bool IsBadReadPtr(const void* memory, size_t) noexcept {
  return memory == std::end(kelvo::test::g_component);
}
bool IsBadWritePtr(void*, size_t) noexcept {
  return false;
}
