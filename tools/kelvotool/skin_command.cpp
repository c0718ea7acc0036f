// skin: what the library hands out of a skin, file by file, and whether a player can use it.
#include "base/files/file_system.h"
#include "base/memory/heap.h"
#include "base/text/ansi.h"
#include "host/player/skin/bmp.h"
#include "host/player/skin/skin_loader.h"
#include "skins/skin_feature.h"
#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/device_files.h"

namespace kelvo::tool {
namespace {

// What a player copies out of each bitmap lies within this size; texts have none.
constexpr struct {
  int width, height;
} kSheets[kSkinFileCount + 1] = {{},        {68, 433}, {136, 36}, {275, 82}, {275, 315}, {275, 116},
                                 {58, 24},  {99, 13},  {108, 13}, {42, 9},   {280, 186}, {},
                                 {307, 10}, {92, 85},  {155, 18}, {344, 87}, {},         {68, 433}};

const char* TextOf(SkinFault fault) noexcept {
  switch (fault) {
    case SkinFault::kNone:
      return "";
    case SkinFault::kNotAnArchive:
      return "not a zip archive";
    case SkinFault::kNoMember:
      return "missing";
    case SkinFault::kEncrypted:
      return "refused: encrypted";
    case SkinFault::kMethodUnknown:
      return "refused: packed with another method than deflate";
    case SkinFault::kTooLarge:
      return "refused: larger than 16 MiB";
    case SkinFault::kDamaged:
      return "refused: damaged, or the archive contradicts itself";
    case SkinFault::kNoMemory:
      return "no memory";
  }
  return "";
}

// One skin, folder or archive, as the library reads it.
class Skin {
 public:
  explicit Skin(const wchar_t* path) noexcept : folder_(SystemFiles(), path) {
    uint32_t attributes = 0;
    is_folder_ =
        SystemFiles().GetAttributes(path, &attributes) && (attributes & kAttributeFolder) != 0;
    if (!is_folder_) archive_ = SystemFiles().OpenRead(path, Share::kRead);
  }
  bool exists() const noexcept { return is_folder_ || archive_; }

  // The bytes; null and why.
  void* Read(int32_t number, uint32_t* size, SkinFault* fault) noexcept {
    return is_folder_ ? ReadFile(number, size, fault) : ReadMember(number, size, fault);
  }
  // As the folder or the archive spells what was read last; empty when there was nothing.
  const wchar_t* name() const noexcept { return name_; }

 private:
  void* ReadFile(int32_t number, uint32_t* size, SkinFault* fault) noexcept {
    // A device's files have names without regard to case.
    wchar_t name[kTextCapacity] = L"\\";
    AnsiToWide(SkinFileName(number), kTextCapacity - 2, name + 1, kTextCapacity - 1);
    name_[0] = 0;
    *fault = SkinFault::kNoMember;
    if (!folder_.Exists(name)) return nullptr;
    CopyWide(name_, kTextCapacity, FileNameOf(folder_.found()));
    *fault = SkinFault::kDamaged;
    SkinReaderFeature reader(folder_);
    void* const bytes = reader.ReadFromFolder(L"", number, size);
    if (bytes) *fault = SkinFault::kNone;
    return bytes;
  }

  void* ReadMember(int32_t number, uint32_t* size, SkinFault* fault) noexcept {
    SkinMember member;
    SkinBlock block = ReadFromSkinArchive(*archive_, SkinFileName(number), &member);
    *fault = member.fault;
    AnsiToWide(member.name, sizeof(member.name), name_, kTextCapacity);
    return block.Release(size);
  }

  DeviceFiles folder_;
  OpenFile<FileReader> archive_;
  bool is_folder_;
  wchar_t name_[kTextCapacity] = {};
};

void PrintNumbers(int a, const char* between, int b, const char* behind) noexcept {
  PrintNumber(Stream::kOut, a);
  Print(Stream::kOut, between);
  PrintNumber(Stream::kOut, b);
  Print(Stream::kOut, behind);
}

// False when a player shows its own instead.
bool ShowBitmap(int32_t number, const uint8_t* bytes, uint32_t size) noexcept {
  velmora::BmpHeader header;
  velmora::Bitmap bitmap;
  if (!velmora::ReadBmpHeader(bytes, size, &header)) {
    Print(Stream::kOut, "refused: not a bitmap that can be read");
    return false;
  }
  PrintNumbers(header.width, " x ", header.height, ", ");
  PrintNumber(Stream::kOut, header.bits);
  Print(Stream::kOut, " bits");
  if (!velmora::DecodeBmp(bytes, size, &bitmap)) {
    Print(Stream::kOut, "; refused: its pixels are missing");
    return false;
  }
  const auto& sheet = kSheets[number];
  if (header.width < sheet.width || header.height < sheet.height) {
    Print(Stream::kOut, "; smaller than ");
    PrintNumbers(sheet.width, " x ", sheet.height, ": the rest is not drawn");
  }
  return true;
}

void ShowText(int32_t number, const uint8_t* bytes, uint32_t size) noexcept {
  const std::string_view text(reinterpret_cast<const char*>(bytes), size);
  if (number != kSkinColours) return Print(Stream::kOut, "text");
  // Lines without a colour are skipped, those that lack stay: as many as differ from no colour.
  constexpr velmora::Colour kNone = 0xFF000000;
  velmora::Colour colours[velmora::kVisualColours];
  for (velmora::Colour& colour : colours) colour = kNone;
  velmora::ReadVisualColours(text, colours);
  int count = 0;
  for (const velmora::Colour colour : colours) count += colour != kNone;
  PrintNumbers(count, " of ", velmora::kVisualColours, " colours");
}

bool ShowFile(Skin& skin, int32_t number, int* used) noexcept {
  uint32_t size = 0;
  SkinFault fault;
  void* const bytes = skin.Read(number, &size, &fault);
  PrintNumber(Stream::kOut, number);
  Print(Stream::kOut, "\t");
  Print(Stream::kOut, SkinFileName(number));
  Print(Stream::kOut, "\t");
  Print(Stream::kOut, skin.name()[0] != 0 ? skin.name() : L"-");
  Print(Stream::kOut, "\t");
  if (bytes) PrintNumber(Stream::kOut, static_cast<int>(size));
  Print(Stream::kOut, bytes ? "\t" : "-\t");
  bool usable = fault == SkinFault::kNone;
  if (!bytes) {
    Print(Stream::kOut, TextOf(fault));
  } else if (kSheets[number].width > 0) {
    usable = ShowBitmap(number, static_cast<uint8_t*>(bytes), size);
  } else {
    ShowText(number, static_cast<uint8_t*>(bytes), size);
  }
  Print(Stream::kOut, "\n");
  HeapFree(bytes);
  *used += usable;
  return usable || fault == SkinFault::kNoMember;
}

int ShowSkins(const Arguments& arguments) noexcept {
  int result = 0;
  for (const wchar_t* path : arguments) {
    Skin skin(path);
    if (!skin.exists()) {
      PrintError(path, "no such folder or archive");
      result = 1;
      continue;
    }
    int used = 0;
    for (int32_t number = 1; number <= kSkinFileCount; ++number) {
      if (!ShowFile(skin, number, &used)) result = 1;
    }
    if (used == 0) {
      PrintError(path, "not a skin");
      result = 1;
    }
  }
  return result;
}

}  // namespace

const Command kSkinCommand = {
    L"skin",
    "  skin PATH...           the 17 files of a skin, a folder or a zip archive: number, name, "
    "which\n"
    "                         file or member was taken for it, its bytes, and its size and depth "
    "or\n"
    "                         number of colours; or why it was refused, which counts as found\n",
    1,
    kAnyNumber,
    0,
    0,
    ShowSkins};

}  // namespace kelvo::tool
