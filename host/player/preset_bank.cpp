#include "host/player/preset_bank.h"

#include <kelvo/equalizer_presets.h>

#include <algorithm>

#include "host/system.h"
#include "host/texts.h"

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

std::wstring PresetBank::WhyNotSaved() const {
  if (!presets_) return Text(TEXT_HINT_NO_PRESETS);
  const std::wstring folder = folder_ + L"\\presets";
  CreateDirectoryW(folder.c_str(), nullptr);
  const HANDLE file =
      CreateFileW((folder + L"\\velmora.new").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return SystemReason();
  CloseHandle(file);
  return std::wstring();
}

bool PresetBank::Save(const EqualizerState& state, HWND parent) const {
  uint8_t setting[kelvo::kEqualizerSettingBytes];
  setting[0] = state.preamp;
  std::copy(std::begin(state.bands), std::end(state.bands), setting + 1);
  if (!presets_) return false;
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
