// The questions of the equalizer presets.
#include <kelvo/equalizer_presets.h>
#include <windows.h>

#include "tools/screenshots/shot.h"
#include "tools/screenshots/studio.h"
#include "tools/screenshots/user.h"

namespace screenshots {
namespace {

void Open(Studio& session) {
  const uint8_t setting[kelvo::kEqualizerSettingBytes] = {};
  CreateDirectoryW(L"\\presets", nullptr);
  session.Get<kelvo::EqualizerPresets>(kelvo::kFeatureEqualizerPresets)
      ->SavePreset(setting, L"", session.window());
}

void AskName(User&) {}

void Confirm(User& user) {
  user.CloseBy(IDOK);
}

// The preset is there from the showing before.
void AskOverwrite(User& user) {
  user.OpenByCommand(IDOK);
}

void AnswerNo(User& user) {
  user.CloseBy(IDNO);
}

constexpr Shot kNameShots[] = {{L"preset-name", AskName, Confirm}};
constexpr Shot kOverwriteShots[] = {{L"preset-overwrite", AskOverwrite, AnswerNo}};

}  // namespace

const Group kPresetNameGroup = MakeGroup(Open, kNameShots, nullptr);
const Group kPresetOverwriteGroup = MakeGroup(Open, kOverwriteShots, nullptr);

}  // namespace screenshots
