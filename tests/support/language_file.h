// A language library as a file: headers and one section of resources, which the system loads.
#pragma once

#include <map>
#include <string>

#include "tests/support/wide_text.h"

namespace kelvo::test {

inline std::string Zeros(size_t count) {
  return std::string(count, '\0');
}

// Kinds of resources, with the system's numbers.
enum ResourceType : uint16_t {
  kBitmapType = 2,
  kMenuType = 4,
  kDialogType = 5,
  kStringsType = 6,
  kDataType = 10
};
using Resources = std::map<uint16_t, std::map<uint16_t, std::string>>;  // by type and number

constexpr size_t kPeHeader = 0x40, kPeOptional = 0x58;
constexpr size_t kPeSection = 0x200;  // where it begins in the file
constexpr uint16_t kPe386 = 0x14C, kPeAmd64 = 0x8664;
constexpr uint16_t kPeOwn = sizeof(void*) == 8 ? kPeAmd64 : kPe386;

inline size_t PeOptionalBytes(uint16_t machine) {
  return machine == kPeAmd64 ? 240 : 224;
}

// The section: a folder of types, one of numbers for each, one of languages for each, places, data.
inline std::string ResourceSection(const Resources& resources, size_t address) {
  size_t tables = 16 + 8 * resources.size(), leaves = 0;
  for (const auto& [type, ids] : resources) {
    tables += 16 + ids.size() * (8 + 24);
    leaves += ids.size();
  }
  std::string root = Zeros(14) + Le(resources.size(), 2), types, languages, places, data;
  size_t type_at = 16 + 8 * resources.size();
  size_t language_at = tables - 24 * leaves, place_at = tables;
  for (const auto& [type, ids] : resources) {
    root += Le(type, 4) + Le(0x80000000 | type_at, 4);
    types += Zeros(14) + Le(ids.size(), 2);
    type_at += 16 + 8 * ids.size();
    for (const auto& [id, bytes] : ids) {
      types += Le(id, 4) + Le(0x80000000 | language_at, 4);
      languages += Zeros(14) + Le(1, 2) + Le(0, 4) + Le(place_at, 4);
      language_at += 24;
      data.resize((data.size() + 3) / 4 * 4);
      places += Le(address + tables + 16 * leaves + data.size(), 4) + Le(bytes.size(), 4);
      places += Zeros(8);
      place_at += 16;
      data += bytes;
    }
  }
  return root + types + languages + places + data;
}

inline std::string LanguagePe(const Resources& resources, uint16_t machine = kPeOwn) {
  constexpr size_t kAddress = 0x1000, kMemory = 0x100000;  // with zeros behind the section
  const bool is_64 = machine == kPeAmd64;
  const std::string section = ResourceSection(resources, kAddress);
  const size_t optional = PeOptionalBytes(machine);
  const int word = is_64 ? 8 : 4;
  std::string file = "MZ" + Zeros(0x3A) + Le(kPeHeader, 4) + "PE" + Le(0, 2) + Le(machine, 2) +
                     Le(1, 2) + Zeros(12) + Le(optional, 2) + Le(is_64 ? 0x2022 : 0x2102, 2);
  file += Le(is_64 ? 0x20B : 0x10B, 2) + Zeros(is_64 ? 22 : 26) + Le(0x10000000, word);
  file += Le(kAddress, 4) + Le(0x200, 4);                 // alignment in memory and file
  file += Le(4, 4) + Le(0, 4) + Le(4, 4) + Le(0, 4);      // versions; the system's is 4
  file += Le(kAddress + kMemory, 4) + Le(kPeSection, 4);  // of the image, of the headers
  file += Le(0, 4) + Le(2, 2) + Le(0, 2) + Zeros(4u * static_cast<unsigned>(word));
  file += Le(0, 4) + Le(16, 4) + Zeros(16) + Le(kAddress, 4) + Le(section.size(), 4);
  file.resize(kPeOptional + optional);
  file += ".rsrc" + Zeros(3) + Le(kMemory, 4) + Le(kAddress, 4) + Le(section.size(), 4) +
          Le(kPeSection, 4) + Zeros(12) + Le(0x40000040, 4);
  file.resize(kPeSection);
  return file + section;
}

// A block of strings, each with its NUL.
inline std::string StringBlock(const std::map<int, std::string>& texts) {
  std::string block;
  for (int i = 0; i < 16; ++i) {
    const auto found = texts.find(i);
    block += found == texts.end()
                 ? Le(0, 2)
                 : Le(found->second.size() + 1, 2) + Utf16(found->second) + Le(0, 2);
  }
  return block;
}

// Of buttons.
inline std::string DialogTemplate(const std::map<int, std::string>& controls,
                                  const std::string& caption = "") {
  std::string dialog = Le(0x90C00000, 4) + Le(0, 4) + Le(controls.size(), 2) + Le(0, 4) +
                       Le(100, 2) + Le(50, 2) + Le(0, 4) + Utf16(caption) + Le(0, 2);
  for (const auto& [id, text] : controls) {
    dialog.resize((dialog.size() + 3) / 4 * 4);
    dialog += Zeros(16) + Le(static_cast<uint64_t>(id), 2) + Le(0xFFFF, 2) + Le(0x80, 2) +
              Utf16(text) + Le(0, 2) + Le(0, 2);
  }
  return dialog;
}

inline std::string MenuItem(int flags, int id, const std::string& text) {
  return Le(static_cast<uint64_t>(flags), 2) + Le(static_cast<uint64_t>(id), 2) + Utf16(text) +
         Le(0, 2);
}
inline std::string MenuPopup(int flags, const std::string& text) {
  return Le(0x10u | static_cast<uint64_t>(flags), 2) + Utf16(text) + Le(0, 2);
}

}  // namespace kelvo::test
