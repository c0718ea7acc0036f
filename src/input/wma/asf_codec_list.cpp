// Bit rate, sample rate and stereo as the encoder described them in words, such as
// "64 kbps, 44 kHz, stereo" or "VBR Quality 75, 44 kHz, stereo".
#include "input/wma/asf_objects.h"

namespace kelvo {
namespace {

constexpr uint16_t kAudioCodec = 2;

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

void ReadCodecList(AsfCursor& cursor, AsfScratch* scratch, AsfInfo* out) noexcept {
  CodecWords words;
  cursor.Skip(16);
  for (uint32_t left = cursor.U32(); left > 0; --left) {
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

}  // namespace kelvo
