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

constexpr uint16_t kAudioCodec = 2;

// What a codec's entry says in words, such as "64 kbps, 44 kHz, stereo" or "VBR Quality 75, 44 kHz,
// stereo".
struct CodecWords {
  uint32_t bit_rate = 0;     // kbit/s
  uint32_t sample_rate = 0;  // kHz
  uint32_t stereo = 0;
};

// Position behind the first `word`, or null.
const wchar_t* Behind(const wchar_t* text, const wchar_t* word) noexcept {
  const size_t length = WideLength(word);
  for (; *text != 0; ++text) {
    size_t i = 0;
    while (i < length && text[i] == word[i]) ++i;
    if (i == length) return text + length;
  }
  return nullptr;
}

// The number at the first digit; 0 without text or digits.
uint32_t FirstNumber(const wchar_t* text) noexcept {
  if (!text) return 0;
  while (*text != 0 && (*text < L'0' || *text > L'9')) ++text;
  return static_cast<uint32_t>(ParseDecimal(text));
}

void Parse(const wchar_t* description, CodecWords* words) noexcept {
  if (description[0] == 0) return;
  if (EqualAsciiNoCase(description, L"VBR", 3)) {
    words->bit_rate = 0;
    words->sample_rate = FirstNumber(FindWide(description, L','));
  } else {
    words->bit_rate = FirstNumber(description);
    words->sample_rate = FirstNumber(Behind(description, L"kbps"));
  }
  if (Behind(description, L"stereo")) words->stereo = 1;
}

}  // namespace

void ReadContentDescription(AsfCursor& cursor, AsfInfo* out) noexcept {
  uint8_t lengths[10];
  if (!cursor.Read(lengths, sizeof(lengths))) return;
  wchar_t value[kTextCapacity];
  cursor.Text(value, LoadU16(lengths));
  KeepFirst(out->title, value);
  cursor.Text(value, LoadU16(lengths + 2));
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

void ReadCodecList(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept {
  CodecWords words;
  cursor.Skip(16);
  uint32_t left = cursor.U32();
  if (!cursor.ok()) return;  // an earlier list's words stay
  for (; left > 0; --left) {
    const uint16_t type = cursor.U16();
    cursor.Skip(uint32_t{cursor.U16()} * 2);  // the codec's name
    cursor.Text(scratch->text, uint32_t{cursor.U16()} * 2);
    cursor.Skip(cursor.U16());  // codec-specific information
    if (!cursor.ok()) break;
    if (type == kAudioCodec) Parse(scratch->text, &words);
  }
  out->format.stereo = words.stereo;
  out->format.sample_rate = words.sample_rate;
  if (out->format.bit_rate == 0) out->format.bit_rate = words.bit_rate;
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

}  // namespace kelvo
