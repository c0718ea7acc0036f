#include "input/wma/asf_header.h"

#include <string.h>

#include "base/memory/heap.h"
#include "input/wma/asf_objects.h"

namespace kelvo {
namespace {

constexpr size_t kGuidBytes = 16;
constexpr size_t kObjectHeaderBytes = 24;  // GUID, 64-bit size that includes this header
constexpr size_t kFileHeaderBytes = 30;    // the same, 32-bit object count, 2 reserved bytes

// GUIDs in their byte order in files.
constexpr uint8_t kHeaderObject[kGuidBytes] = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                               0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr uint8_t kContentDescription[kGuidBytes] = {
    0x33, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11, 0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr uint8_t kExtendedContent[kGuidBytes] = {0x40, 0xA4, 0xD0, 0xD2, 0x07, 0xE3, 0xD2, 0x11,
                                                  0x97, 0xF0, 0x00, 0xA0, 0xC9, 0x5E, 0xA8, 0x50};
constexpr uint8_t kStreamBitrates[kGuidBytes] = {0xCE, 0x75, 0xF8, 0x7B, 0x8D, 0x46, 0xD1, 0x11,
                                                 0x8D, 0x82, 0x00, 0x60, 0x97, 0xC9, 0xA2, 0xB2};
constexpr uint8_t kCodecList[kGuidBytes] = {0x40, 0x52, 0xD1, 0x86, 0x1D, 0x31, 0xD0, 0x11,
                                            0xA3, 0xA4, 0x00, 0xA0, 0xC9, 0x03, 0x48, 0xF6};
constexpr uint8_t kFileProperties[kGuidBytes] = {0xA1, 0xDC, 0xAB, 0x8C, 0x47, 0xA9, 0xCF, 0x11,
                                                 0x8E, 0xE4, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};

bool IsGuid(const uint8_t* bytes, const uint8_t (&guid)[kGuidBytes]) noexcept {
  return memcmp(bytes, guid, kGuidBytes) == 0;
}

void ReadStreamBitrates(AsfCursor& cursor, AsfInfo* out) noexcept {
  const uint32_t count = cursor.U16();
  uint64_t sum = 0;  // bits per second
  for (uint32_t i = 0; i < count && cursor.ok(); ++i) {
    cursor.Skip(2);
    sum += cursor.U32();
  }
  if (!cursor.ok() || count == 0 || out->format.bit_rate != 0) return;
  out->format.bit_rate = static_cast<uint32_t>(sum / count / 1000);
}

void ReadFileProperties(AsfCursor& cursor, AsfInfo* out) noexcept {
  uint8_t body[80];
  if (!cursor.Read(body, sizeof(body))) return;
  const uint64_t play_duration = LoadU64(body + 40);  // 100 ns
  const uint64_t preroll = LoadU64(body + 56);        // ms
  out->length_ms = static_cast<uint32_t>((play_duration - preroll * 10000) / 10000);
}

// False when the walk ends here: at the end of the file, or at a size that leads nowhere.
bool ReadObject(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept {
  uint8_t header[kObjectHeaderBytes];
  if (!cursor.Read(header, sizeof(header))) return false;
  const uint64_t size = LoadU64(header + kGuidBytes);
  if (size < kObjectHeaderBytes || size - kObjectHeaderBytes > cursor.left()) return false;
  if (IsGuid(header, kContentDescription)) {
    ReadContentDescription(cursor, out);
  } else if (IsGuid(header, kExtendedContent)) {
    ReadExtendedContent(cursor, scratch, out);
  } else if (IsGuid(header, kStreamBitrates)) {
    ReadStreamBitrates(cursor, out);
  } else if (IsGuid(header, kCodecList)) {
    ReadCodecList(cursor, scratch, out);
  } else if (IsGuid(header, kFileProperties)) {
    ReadFileProperties(cursor, out);
  } else {
    cursor.Skip(size - kObjectHeaderBytes);
  }
  return cursor.ok();
}

void MakeDisplayTitle(const wchar_t* path, AsfInfo* out) noexcept {
  wchar_t* title = out->display_title;
  if (out->author[0] != 0 || out->title[0] != 0) {
    CopyWide(title, kTextCapacity, out->author);
    // What does not fit is cut off.
    if (AppendWide(title, kTextCapacity, L" - ")) {
      static_cast<void>(AppendWide(title, kTextCapacity, out->title));
    }
    return;
  }
  const wchar_t* name = FileNameOf(path);
  const wchar_t* point = FindLastWide(name, L'.');
  const bool cut = point && point > name;
  CopyWide(title, kTextCapacity, name, cut ? static_cast<size_t>(point - name) : WideLength(name));
}

}  // namespace

void ClearAsfInfo(AsfInfo* info) noexcept {
  memset(info, 0, sizeof(*info));
}

bool ReadAsfInfo(ByteSource& source, const wchar_t* path, AsfInfo* out) noexcept {
  ClearAsfInfo(out);
  AsfCursor cursor(source);
  uint8_t header[kFileHeaderBytes];
  if (!cursor.Read(header, sizeof(header)) || !IsGuid(header, kHeaderObject)) return false;
  // Too large for the device's stack, which is committed a page at a time.
  const HeapPtr<AsfScratch> scratch(HeapNew<AsfScratch>());
  if (!scratch) return false;
  out->format.track = kNoAsfTrack;
  for (uint32_t left = LoadU32(header + kObjectHeaderBytes); left > 0; --left) {
    if (!ReadObject(cursor, scratch.get(), out)) break;
  }
  MakeDisplayTitle(path, out);
  return true;
}

}  // namespace kelvo
