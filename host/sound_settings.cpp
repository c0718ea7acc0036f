#include "host/sound_settings.h"

#include <stdio.h>
#include <wchar.h>
#include <windows.h>

#include <algorithm>

#include "host/program_folder.h"

namespace velmora {
namespace {

// Reads `count` numbers of 0 to `last`, with commas between them and nothing else.
bool ReadNumbers(const std::wstring& text, uint8_t* numbers, int count, uint8_t last) {
  const wchar_t* at = text.c_str();
  for (int i = 0; i < count; ++i) {
    if (i > 0 && *at++ != L',') return false;
    if (*at < L'0' || *at > L'9') return false;
    wchar_t* end;
    const long number = wcstol(at, &end, 10);
    if (number > last) return false;
    numbers[i] = static_cast<uint8_t>(number);
    at = end;
  }
  return *at == 0;
}

constexpr size_t kPresetBytes = 31;
constexpr size_t kPresetSetting = 20;  // preamplifier, then the ten bands

// A preset's path, or the name of one in the folder beside this program.
bool ReadPresetFile(const std::wstring& path, EqualizerState* state) {
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
  state->preamp = bytes[kPresetSetting];
  std::copy_n(bytes + kPresetSetting + 1, kEqualizerBands, state->bands);
  return true;
}

bool IsPresetName(const std::wstring& text) {
  return text.size() > 4 && lstrcmpiW(text.c_str() + text.size() - 4, L".eqf") == 0;
}

}  // namespace

bool SoundSettings::Take(const std::wstring& option, const std::wstring& value) {
  if (option == L"--bass") return ReadNumbers(value, &state_.bass, 1, kMaxBass);
  bool taken = false;
  if (option == L"--eq") {
    taken = IsPresetName(value) ? ReadPresetFile(value, &state_)
                                : ReadNumbers(value, state_.bands, kEqualizerBands, kLastSlider);
  }
  if (option == L"--preamp") taken = ReadNumbers(value, &state_.preamp, 1, kLastSlider);
  state_.on = state_.on || taken;
  return taken;
}

}  // namespace velmora
