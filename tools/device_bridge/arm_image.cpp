#include "arm_image.h"

#include <string.h>

#include <algorithm>

#include "faults.h"

namespace bridge {
namespace {

constexpr WORD kMachineArm = 0x1C0;
constexpr WORD kSubsystemCe = 9;

std::vector<uint8_t> ReadAll(const std::wstring& path) {
  const HANDLE file =
      CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) Fail("no %ls", path.c_str());
  std::vector<uint8_t> bytes(GetFileSize(file, nullptr));
  DWORD got = 0;
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr);
  CloseHandle(file);
  bytes.resize(got);
  return bytes;
}

const IMAGE_NT_HEADERS32* Headers(const std::vector<uint8_t>& file) {
  const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(file.data());
  const size_t at = file.size() >= sizeof(*dos) ? static_cast<size_t>(dos->e_lfanew) : file.size();
  if (at > file.size() || file.size() - at < sizeof(IMAGE_NT_HEADERS32)) return nullptr;
  const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(&file[at]);
  const bool ours = headers->Signature == IMAGE_NT_SIGNATURE &&
                    headers->FileHeader.Machine == kMachineArm &&
                    headers->OptionalHeader.Subsystem == kSubsystemCe;
  return ours ? headers : nullptr;
}

}  // namespace

ArmImage::ArmImage(const std::wstring& path) {
  const std::vector<uint8_t> file = ReadAll(path);
  const IMAGE_NT_HEADERS32* nt = Headers(file);
  if (!nt) Fail("%ls is no library of the device", path.c_str());
  bytes_ = nt->OptionalHeader.SizeOfImage;
  memory_ = static_cast<uint8_t*>(
      VirtualAlloc(nullptr, bytes_, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
  if (!memory_) Fail("no memory for %ls", path.c_str());
  memcpy(memory_, file.data(), nt->OptionalHeader.SizeOfHeaders);
  const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(nt);
  code_ = section->VirtualAddress;
  code_bytes_ = section->Misc.VirtualSize;
  for (int i = 0; i < nt->FileHeader.NumberOfSections; ++i, ++section) {
    memcpy(memory_ + section->VirtualAddress, &file[section->PointerToRawData],
           std::min(section->SizeOfRawData, section->Misc.VirtualSize));
  }
  Move(base() - nt->OptionalHeader.ImageBase);
}

ArmImage::~ArmImage() {
  VirtualFree(memory_, 0, MEM_RELEASE);
}

void ArmImage::Move(uint32_t distance) {
  const IMAGE_DATA_DIRECTORY& table = Directory(IMAGE_DIRECTORY_ENTRY_BASERELOC);
  for (uint32_t at = table.VirtualAddress; at < table.VirtualAddress + table.Size;) {
    const auto* block = At<IMAGE_BASE_RELOCATION>(at);
    if (block->SizeOfBlock < sizeof(*block)) break;
    for (uint32_t i = at + sizeof(*block); i < at + block->SizeOfBlock; i += 2) {
      const uint16_t entry = *At<uint16_t>(i);
      if (entry >> 12 != IMAGE_REL_BASED_HIGHLOW) continue;
      uint32_t* word = At<uint32_t>(block->VirtualAddress + (entry & 0xFFF));
      *word += distance;
      relocated_.push_back(word);
    }
    at += block->SizeOfBlock;
  }
}

uint32_t ArmImage::Export(const char* name) const {
  const auto* table =
      At<IMAGE_EXPORT_DIRECTORY>(Directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
  for (DWORD i = 0; i < table->NumberOfNames; ++i) {
    if (strcmp(At<char>(At<DWORD>(table->AddressOfNames)[i]), name) != 0) continue;
    return base() + At<DWORD>(table->AddressOfFunctions)[At<WORD>(table->AddressOfNameOrdinals)[i]];
  }
  return 0;
}

std::vector<ArmImage::Import> ArmImage::Imports() const {
  std::vector<Import> imports;
  const auto* library =
      At<IMAGE_IMPORT_DESCRIPTOR>(Directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
  for (; library->Name != 0; ++library) {
    const DWORD* lookup = At<DWORD>(library->OriginalFirstThunk);
    uint32_t* slot = At<uint32_t>(library->FirstThunk);
    for (; *lookup != 0; ++lookup, ++slot) {
      imports.push_back({At<char>(library->Name), At<char>(*lookup + 2), slot});
    }
  }
  return imports;
}

void ArmImage::Protect() const {
  const auto* nt = At<IMAGE_NT_HEADERS32>(At<IMAGE_DOS_HEADER>(0)->e_lfanew);
  const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(nt);
  for (int i = 0; i < nt->FileHeader.NumberOfSections; ++i, ++section) {
    if (section->Characteristics & IMAGE_SCN_MEM_WRITE) continue;
    DWORD before;
    VirtualProtect(memory_ + section->VirtualAddress, section->Misc.VirtualSize, PAGE_READONLY,
                   &before);
  }
}

}  // namespace bridge
