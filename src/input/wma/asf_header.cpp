#include "input/wma/asf_header.h"

#include <string.h>

#include "base/memory/heap.h"
#include "input/wma/asf_objects.h"

namespace kelvo {
namespace {

constexpr AsfGuid kContentDescription = {0x33, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                         0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};
constexpr AsfGuid kExtendedContent = {0x40, 0xA4, 0xD0, 0xD2, 0x07, 0xE3, 0xD2, 0x11,
                                      0x97, 0xF0, 0x00, 0xA0, 0xC9, 0x5E, 0xA8, 0x50};
constexpr AsfGuid kStreamBitrates = {0xCE, 0x75, 0xF8, 0x7B, 0x8D, 0x46, 0xD1, 0x11,
                                     0x8D, 0x82, 0x00, 0x60, 0x97, 0xC9, 0xA2, 0xB2};
constexpr AsfGuid kCodecList = {0x40, 0x52, 0xD1, 0x86, 0x1D, 0x31, 0xD0, 0x11,
                                0xA3, 0xA4, 0x00, 0xA0, 0xC9, 0x03, 0x48, 0xF6};

// False when the walk ends here: at the end of the file, or at a size that leads nowhere. The known
// ones are read by what is in them, whatever their size says.
bool ReadObject(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept {
  uint8_t header[kAsfObjectBytes];
  if (!cursor.Read(header, sizeof(header))) return false;
  const uint64_t size = LoadU64(header + sizeof(AsfGuid));
  if (IsAsfObject(header, kContentDescription)) {
    ReadContentDescription(cursor, out);
  } else if (IsAsfObject(header, kExtendedContent)) {
    ReadExtendedContent(cursor, scratch, out);
  } else if (IsAsfObject(header, kStreamBitrates)) {
    ReadStreamBitrates(cursor, out);
  } else if (IsAsfObject(header, kCodecList)) {
    ReadCodecList(cursor, scratch, out);
  } else if (IsAsfObject(header, kAsfFileProperties)) {
    ReadFileProperties(cursor, out);
  } else {
    if (size < kAsfObjectBytes || size - kAsfObjectBytes > cursor.left()) return false;
    cursor.Skip(size - kAsfObjectBytes);
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

bool ReadAsfInfo(ByteSource& source, const wchar_t* path, AsfInfo* out) noexcept {
  memset(out, 0, sizeof(*out));
  AsfCursor cursor(source);
  uint8_t header[kAsfHeaderBytes];
  if (!cursor.Read(header, sizeof(header)) || !IsAsfObject(header, kAsfHeader)) return false;
  // Too large for the device's stack, which is committed a page at a time.
  const HeapPtr<AsfScratch> scratch(HeapNew<AsfScratch>());
  if (!scratch) return false;
  out->format.track = kNoAsfTrack;
  for (uint32_t left = LoadU32(header + kAsfObjectBytes); left > 0; --left) {
    if (!ReadObject(cursor, scratch.get(), out)) break;
  }
  MakeDisplayTitle(path, out);
  return true;
}

}  // namespace kelvo
