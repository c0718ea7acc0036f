#include "device_functions.h"

#include "arm_image.h"
#include "faults.h"

namespace bridge {
namespace {

constexpr DWORD kSubfolder = 0x80000000;

// Resources say where they are as a distance from their module. The bridge's is another one.
void Move(const ArmImage& image, uint32_t root, uint32_t folder_rva, uint32_t distance) {
  const auto* folder = image.At<IMAGE_RESOURCE_DIRECTORY>(folder_rva);
  const auto* entry = reinterpret_cast<const IMAGE_RESOURCE_DIRECTORY_ENTRY*>(folder + 1);
  for (int i = 0; i < folder->NumberOfNamedEntries + folder->NumberOfIdEntries; ++i, ++entry) {
    const uint32_t child = root + (entry->OffsetToData & ~kSubfolder);
    if (entry->OffsetToData & kSubfolder) {
      Move(image, root, child, distance);
    } else {
      image.At<IMAGE_RESOURCE_DATA_ENTRY>(child)->OffsetToData += distance;
    }
  }
}

}  // namespace

void ShowResources(HMODULE bridge, const ArmImage& image) {
  IMAGE_DATA_DIRECTORY resources = image.Directory(IMAGE_DIRECTORY_ENTRY_RESOURCE);
  if (resources.Size == 0) return;
  uint8_t* module = reinterpret_cast<uint8_t*>(bridge);
  const uint32_t distance = image.base() - reinterpret_cast<uint32_t>(bridge);
  Move(image, resources.VirtualAddress, resources.VirtualAddress, distance);
  resources.VirtualAddress += distance;
  auto* headers = reinterpret_cast<IMAGE_NT_HEADERS32*>(
      module + reinterpret_cast<IMAGE_DOS_HEADER*>(module)->e_lfanew);
  IMAGE_DATA_DIRECTORY& shown =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_RESOURCE];
  DWORD before;
  if (!VirtualProtect(&shown, sizeof(shown), PAGE_READWRITE, &before))
    Fail("cannot show the resources");
  shown = resources;
  VirtualProtect(&shown, sizeof(shown), before, &before);
}

}  // namespace bridge
