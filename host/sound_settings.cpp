#include "host/sound_settings.h"

#include <stdint.h>
#include <stdio.h>
#include <wchar.h>
#include <windows.h>

#include "host/program_folder.h"

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

constexpr size_t kPresetBytes = 31;
constexpr size_t kPresetSetting = 20;  // preamplifier, then the ten bands

// A preset's path, or the name of one in the folder beside this program.
bool ReadPresetFile(const std::wstring& path, int32_t* preamp, int32_t* bands) {
  FILE* file = _wfopen(path.c_str(), L"rb");
  if (!file) file = _wfopen((ProgramFolder() + L"\\presets\\" + path).c_str(), L"rb");
  if (!file) return false;
  uint8_t bytes[kPresetBytes];
  const bool whole = fread(bytes, 1, kPresetBytes, file) == kPresetBytes;
  fclose(file);
  if (!whole) return false;
  for (size_t i = kPresetSetting; i < kPresetBytes; ++i) {
    if (bytes[i] > kLastSlider) return false;
  }
  *preamp = bytes[kPresetSetting];
  for (int i = 0; i < 10; ++i) bands[i] = bytes[kPresetSetting + 1 + i];
  return true;
}

bool IsPresetName(const std::wstring& text) {
  return text.size() > 4 && lstrcmpiW(text.c_str() + text.size() - 4, L".eqf") == 0;
}

}  // namespace

bool SoundSettings::Take(const std::wstring& option, const std::wstring& value) {
  if (option == L"--bass") return ReadNumbers(value, &bass_, 1, 4);
  bool taken = false;
  if (option == L"--eq") {
    taken = IsPresetName(value) ? ReadPresetFile(value, &preamp_, bands_)
                                : ReadNumbers(value, bands_, 10, kLastSlider);
  }
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
