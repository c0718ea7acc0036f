// The device's library in this process's memory, as the device's loader would leave it.
#pragma once

#include <windows.h>

#include <stdint.h>

#include <string>
#include <vector>

namespace bridge {

class ArmImage {
 public:
  // A file that is no library of the device ends the run.
  explicit ArmImage(const std::wstring& path);
  ~ArmImage();
  ArmImage(const ArmImage&) = delete;
  ArmImage& operator=(const ArmImage&) = delete;

  uint32_t base() const { return reinterpret_cast<uint32_t>(memory_); }
  bool Contains(uint32_t address) const { return address - base() < bytes_; }
  bool IsCode(uint32_t address) const { return address - base() - code_ < code_bytes_; }
  uint32_t entry() const { return base() + headers().AddressOfEntryPoint; }
  // Address of an exported function; 0: none of that name.
  uint32_t Export(const char* name) const;

  // Gives every word that holds an address the value of `adjust` for the address that it should
  // hold.
  template <class Adjust>
  void Relocate(Adjust adjust) {
    for (uint32_t* word : relocated_) *word = adjust(*word);
  }

  struct Import {
    const char* library;
    const char* name;
    uint32_t* slot;
  };
  std::vector<Import> Imports() const;

  const IMAGE_DATA_DIRECTORY& Directory(int number) const {
    return headers().DataDirectory[number];
  }
  template <class T>
  T* At(uint32_t rva) const {
    return reinterpret_cast<T*>(memory_ + rva);
  }

  // Nothing is written from now on but what the file's sections allow; nothing runs as this
  // machine's code.
  void Protect() const;

 private:
  const IMAGE_OPTIONAL_HEADER32& headers() const {
    return At<IMAGE_NT_HEADERS32>(At<IMAGE_DOS_HEADER>(0)->e_lfanew)->OptionalHeader;
  }
  void Move(uint32_t distance);

  uint8_t* memory_ = nullptr;
  uint32_t bytes_ = 0;
  uint32_t code_ = 0, code_bytes_ = 0;  // the first section
  std::vector<uint32_t*> relocated_;
};

}  // namespace bridge
