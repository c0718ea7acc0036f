#include "dll_file.h"

#include <string.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "fail.h"

namespace bench {
namespace {

constexpr uint16_t kMachineArm = 0x1C0;
constexpr uint16_t kSubsystemCe = 9;
constexpr uint32_t kHighLow = 3;

template <class T>
T Load(const std::vector<uint8_t>& bytes, size_t at) {
  if (at > bytes.size() || sizeof(T) > bytes.size() - at) Fail("damaged DLL");
  T value;
  memcpy(&value, &bytes[at], sizeof(T));
  return value;
}

}  // namespace

DllFile::DllFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  const std::vector<uint8_t> file{std::istreambuf_iterator<char>(stream), {}};
  if (file.empty()) Fail("cannot read %s", path.c_str());
  const uint32_t pe = Load<uint32_t>(file, 0x3C);
  const uint32_t optional = pe + 24;
  if (Load<uint16_t>(file, pe + 4) != kMachineArm ||
      Load<uint16_t>(file, optional + 68) != kSubsystemCe) {
    Fail("%s is no Windows CE program for ARM", path.c_str());
  }
  entry_ = Load<uint32_t>(file, optional + 16);
  preferred_base_ = Load<uint32_t>(file, optional + 28);
  memory_.resize(Load<uint32_t>(file, optional + 56));
  const uint32_t table = optional + Load<uint16_t>(file, pe + 20);
  for (uint32_t i = 0; i < Load<uint16_t>(file, pe + 6); ++i) {
    const uint32_t header = table + 40 * i;
    const uint32_t bytes =
        std::min(Load<uint32_t>(file, header + 8), Load<uint32_t>(file, header + 16));
    const uint32_t rva = Load<uint32_t>(file, header + 12);
    const uint32_t offset = Load<uint32_t>(file, header + 20);
    if (offset + bytes > file.size() || rva + bytes > memory_.size()) Fail("damaged DLL");
    std::copy_n(file.begin() + offset, bytes, memory_.begin() + rva);
  }
  const auto directory = [&](uint32_t number) {
    return Load<uint32_t>(file, optional + 96 + 8 * number);
  };
  relocation_table_ = directory(5);
  relocation_bytes_ = Load<uint32_t>(file, optional + 96 + 44);
  for (uint32_t at = directory(1); Word(at + 12) != 0; at += 20) {
    uint32_t slot = Word(at + 16);
    for (uint32_t lookup = Word(at); Word(lookup) != 0; lookup += 4, slot += 4) {
      imports_.push_back({Text(Word(lookup) + 2), slot});
    }
  }
  const uint32_t names = directory(0);
  for (uint32_t i = 0; i < Word(names + 24); ++i) {
    const uint32_t index = Load<uint16_t>(memory_, Word(names + 36) + 2 * i);
    exports_[Text(Word(Word(names + 32) + 4 * i))] = Word(Word(names + 28) + 4 * index);
  }
}

uint32_t DllFile::Word(uint32_t rva) const {
  return Load<uint32_t>(memory_, rva);
}

void DllFile::SetWord(uint32_t rva, uint32_t value) {
  static_cast<void>(Word(rva));
  memcpy(&memory_[rva], &value, 4);
}

std::string DllFile::Text(uint32_t rva) const {
  std::string text;
  while (const char c = Load<char>(memory_, rva++)) text += c;
  return text;
}

uint32_t DllFile::Export(const std::string& name) const {
  const auto found = exports_.find(name);
  if (found == exports_.end()) Fail("no export %s", name.c_str());
  return found->second;
}

void DllFile::MoveTo(uint32_t base) {
  uint32_t block = relocation_table_;
  while (block < relocation_table_ + relocation_bytes_) {
    const uint32_t bytes = Word(block + 4);
    if (bytes < 8) Fail("damaged relocations");
    for (uint32_t at = block + 8; at < block + bytes; at += 2) {
      const uint32_t entry = Load<uint16_t>(memory_, at);
      if (entry >> 12 != kHighLow) continue;
      const uint32_t rva = Word(block) + (entry & 0xFFF);
      SetWord(rva, Word(rva) + base - preferred_base_);
    }
    block += bytes;
  }
}

}  // namespace bench
