#include "host/sound_settings.h"

#include <wchar.h>

namespace velmora {
namespace {

constexpr long kLastSlider = 27;

// Reads `count` numbers of 0 to `last`, with commas between them and nothing else.
bool ReadNumbers(const std::wstring& text, int32_t* numbers, int count, long last) {
  const wchar_t* at = text.c_str();
  for (int i = 0; i < count; ++i) {
    if (i > 0 && *at++ != L',') return false;
    if (*at < L'0' || *at > L'9') return false;
    wchar_t* end;
    const long number = wcstol(at, &end, 10);
    if (number > last) return false;
    numbers[i] = number;
    at = end;
  }
  return *at == 0;
}

}  // namespace

bool SoundSettings::Take(const std::wstring& option, const std::wstring& value) {
  if (option == L"--bass") return ReadNumbers(value, &bass_, 1, 4);
  bool taken = false;
  if (option == L"--eq") taken = ReadNumbers(value, bands_, 10, kLastSlider);
  if (option == L"--preamp") taken = ReadNumbers(value, &preamp_, 1, kLastSlider);
  equalizer_ = equalizer_ || taken;
  return taken;
}

void SoundSettings::Apply(kelvo::EffectsProcessor& effects) const {
  effects.EnableEqualizer(equalizer_);
  if (equalizer_) effects.SetEqualizer(preamp_, bands_);
  effects.SetBassMode(bass_);
}

}  // namespace velmora
