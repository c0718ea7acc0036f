// A Windows CE DLL for ARM, as its loader sees it.
#pragma once

#include <stdint.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

class DllFile {
 public:
  // A file that is no such DLL ends the run.
  explicit DllFile(const std::string& path);

  struct Import {
    std::string name;
    uint32_t slot;
  };

  uint32_t size() const { return static_cast<uint32_t>(memory_.size()); }
  uint32_t entry() const { return entry_; }
  const std::vector<uint8_t>& memory() const { return memory_; }
  const std::vector<Import>& imports() const { return imports_; }
  uint32_t Export(const std::string& name) const;  // relative to the base

  // Adjusts every word that holds an address.
  void MoveTo(uint32_t base);

  uint32_t Word(uint32_t rva) const;

 private:
  void SetWord(uint32_t rva, uint32_t value);
  std::string Text(uint32_t rva) const;

  std::vector<uint8_t> memory_;
  std::vector<Import> imports_;
  std::map<std::string, uint32_t> exports_;
  uint32_t preferred_base_ = 0;
  uint32_t entry_ = 0;
  uint32_t relocation_table_ = 0;
  uint32_t relocation_bytes_ = 0;
};

}  // namespace bench
