// velmora presets: the equalizer presets of a folder with their settings.
#include <kelvo/equalizer_presets.h>

#include "host/command.h"
#include "host/console.h"
#include "host/program_folder.h"

namespace velmora {

int PresetsCommand(const Library& library, const Words& words) {
  auto* presets = library.Get<kelvo::EqualizerPresets>(kelvo::kFeatureEqualizerPresets);
  if (!presets) {
    PrintError(L"Kelvo.dll does not offer equalizer presets\n");
    return 1;
  }
  if (words.size() > 1) {
    PrintError(L"usage: velmora presets [DIR]\n");
    return 1;
  }
  const std::wstring base = words.empty() ? ProgramFolder() : words[0];
  const wchar_t* const folder = base.c_str();
  presets->ClearPresets();
  const int32_t count = presets->ListPresets(folder);
  for (int32_t i = 0; i < count; ++i) {
    wchar_t name[kelvo::kMaxText];
    uint8_t setting[kelvo::kEqualizerSettingBytes];
    presets->GetPresetName(i, name);
    Print(L"%-20ls", name);
    if (presets->ReadPreset(i, setting, folder)) {
      Print(L"  preamp %2u  bands", setting[0]);
      for (size_t band = 1; band < kelvo::kEqualizerSettingBytes; ++band) {
        Print(L" %2u", setting[band]);
      }
      Print(L"\n");
    } else {
      Print(L"  cannot be read\n");
    }
  }
  return 0;
}

}  // namespace velmora
