// Title, author and the named attributes.
#include "input/wma/asf_objects.h"

namespace kelvo {
namespace {

// A value is kept in the first place that names it; an empty one does not count.
template <size_t kCapacity>
void KeepFirst(wchar_t (&kept)[kCapacity], const wchar_t* value) noexcept {
  if (kept[0] == 0) CopyWide(kept, kCapacity, value);
}

void KeepFirstTrack(MediaInfo* format, uint32_t number) noexcept {
  if (format->track == kNoAsfTrack) format->track = static_cast<int32_t>(number);
}

enum AttributeType : uint16_t {
  kText = 0,
  kBytes = 1,
  kBool = 2,
  kNumber32 = 3,
  kNumber64 = 4,
  kNumber16 = 5,
};

// The value as text or as number; what it is not is empty or 0. Numbers have the size of their
// type, whatever `bytes` says.
uint32_t ReadValue(AsfCursor& cursor, uint16_t type, uint16_t bytes, AsfScratch* text) noexcept {
  text->text[0] = 0;
  switch (type) {
    case kText:
      cursor.Text(text->text, bytes);
      return 0;
    case kBool:
    case kNumber32:
      return cursor.U32();
    case kNumber64: {
      const uint32_t low = cursor.U32();
      cursor.Skip(4);
      return low;
    }
    case kNumber16:
      return cursor.U16();
    case kBytes:
    default:
      cursor.Skip(bytes);
      return 0;
  }
}

}  // namespace

void ReadContentDescription(AsfCursor& cursor, AsfInfo* out) noexcept {
  uint8_t lengths[10];
  if (!cursor.Read(lengths, sizeof(lengths))) return;
  wchar_t value[kTextCapacity];
  if (!cursor.Text(value, LoadU16(lengths))) return;
  KeepFirst(out->title, value);
  if (!cursor.Text(value, LoadU16(lengths + 2))) return;
  KeepFirst(out->author, value);
  // Copyright, description and rating.
  for (int i = 4; i < 10; i += 2) cursor.Skip(LoadU16(lengths + i));
}

void ReadExtendedContent(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept {
  wchar_t name[32];  // longer than every name that is looked for
  for (uint32_t left = cursor.U16(); left > 0; --left) {
    cursor.Text(name, cursor.U16());
    const uint16_t type = cursor.U16();
    const uint16_t bytes = cursor.U16();
    const uint32_t number = ReadValue(cursor, type, bytes, scratch);
    if (!cursor.ok()) return;
    if (EqualAsciiNoCase(name, L"WM/Genre")) {
      KeepFirst(out->format.genre, scratch->text);
    } else if (EqualAsciiNoCase(name, L"WM/AlbumTitle")) {
      KeepFirst(out->album, scratch->text);
    } else if (EqualAsciiNoCase(name, L"WM/TrackNumber")) {
      KeepFirstTrack(&out->format, number);
    } else if (EqualAsciiNoCase(name, L"WM/Track")) {
      KeepFirstTrack(&out->format, number + 1);  // counts from 0
    } else if (type == kText && EqualAsciiNoCase(name, L"WMFSDKVersion")) {
      out->sdk_version = static_cast<uint32_t>(ParseDecimal(scratch->text));
    }
  }
}

}  // namespace kelvo
