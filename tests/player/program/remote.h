// Memory of another process, for messages whose parameters point somewhere.
#pragma once

#include <windows.h>

namespace velmora::test {

template <class T>
class Remote {
 public:
  Remote(HANDLE process, const T& value)
      : process_(process),
        memory_(VirtualAllocEx(process, nullptr, sizeof(T), MEM_COMMIT, PAGE_READWRITE)) {
    WriteProcessMemory(process_, memory_, &value, sizeof(T), nullptr);
  }
  ~Remote() { VirtualFreeEx(process_, memory_, 0, MEM_RELEASE); }
  Remote(const Remote&) = delete;
  Remote& operator=(const Remote&) = delete;

  LPARAM address() const { return reinterpret_cast<LPARAM>(memory_); }
  T Read() const {
    T value = {};
    ReadProcessMemory(process_, memory_, &value, sizeof(T), nullptr);
    return value;
  }

 private:
  HANDLE process_;
  void* memory_;
};

}  // namespace velmora::test
