#include "host/player/preset_bank.h"

#include <kelvo/equalizer_presets.h>

#include <algorithm>

namespace velmora {

static_assert(kelvo::kEqualizerSettingBytes == 1 + kEqualizerBands);

PresetBank::PresetBank(const Library& library, const std::wstring& base_folder)
    : presets_(library.Get<kelvo::EqualizerPresets>(kelvo::kFeatureEqualizerPresets)),
      folder_(base_folder) {}

std::vector<std::wstring> PresetBank::List() {
  std::vector<std::wstring> names;
  if (!presets_) return names;
  presets_->ClearPresets();
  const int32_t count = presets_->ListPresets(folder_.c_str());
  for (int32_t i = 0; i < count; ++i) {
    wchar_t name[kelvo::kMaxText] = L"";
    presets_->GetPresetName(i, name);
    names.push_back(name);
  }
  return names;
}

bool PresetBank::Load(size_t index, EqualizerState* state) const {
  uint8_t setting[kelvo::kEqualizerSettingBytes];
  if (!presets_ || !presets_->ReadPreset(static_cast<int32_t>(index), setting, folder_.c_str())) {
    return false;
  }
  if (*std::max_element(std::begin(setting), std::end(setting)) > kLastSlider) return false;
  state->preamp = setting[0];
  std::copy(setting + 1, std::end(setting), state->bands);
  return true;
}

bool PresetBank::Save(const EqualizerState& state, HWND parent) const {
  uint8_t setting[kelvo::kEqualizerSettingBytes];
  setting[0] = state.preamp;
  std::copy(std::begin(state.bands), std::end(state.bands), setting + 1);
  if (!presets_) return false;
  CreateDirectoryW((folder_ + L"\\presets").c_str(), nullptr);
  return presets_->SavePreset(setting, folder_.c_str(), parent) != 0;
}

bool PresetBank::Delete(size_t index) const {
  wchar_t name[kelvo::kMaxText] = L"";
  if (!presets_) return false;
  presets_->GetPresetName(static_cast<int32_t>(index), name);
  if (presets_->FindPreset(name) != static_cast<int32_t>(index)) return false;
  return DeleteFileW((folder_ + L"\\presets\\" + name + L".eqf").c_str()) != FALSE;
}

}  // namespace velmora
