// Equalizer presets.
#include <string.h>

#include "host/check/subject.h"

namespace velmora::check {
namespace {

using Presets = KelvoEqualizerPresets;

constexpr char kSetting[] = "0123456789a";

class PresetsCheck {
 public:
  PresetsCheck(const Subject& subject, Report& report)
      : subject_(subject),
        report_(report),
        base_(subject.work + L"eq"),
        presets_(subject.Get<Presets>(KELVO_FEATURE_EQUALIZER_PRESETS)) {}

  void CheckList();
  void CheckSaving();

 private:
  const KelvoEqualizerPresetsTable& table() const { return *presets_->table; }
  int32_t List() { return table().ListPresets(KELVO_ON(presets_), base_.c_str()); }
  int32_t Find(const wchar_t* name) { return table().FindPreset(KELVO_ON(presets_), name); }
  std::wstring Name(int32_t index) {
    wchar_t name[KELVO_MAX_TEXT] = L"before";
    table().GetPresetName(KELVO_ON(presets_), index, name);
    return name;
  }
  std::string Setting(int32_t index, int32_t* result) {
    uint8_t setting[KELVO_EQUALIZER_SETTING_BYTES] = {};
    *result = table().ReadPreset(KELVO_ON(presets_), index, setting, base_.c_str());
    return {reinterpret_cast<const char*>(setting), sizeof(setting)};
  }
  std::wstring File(const wchar_t* name) const { return base_ + L"\\presets\\" + name; }
  // SavePreset with a user who types the name, or cancels, and answers the question.
  int32_t Save(const char* setting, const wchar_t* name, int answer);
  void Says(const char* sentence, bool holds) { report_.Says(sentence, holds); }

  const Subject& subject_;
  Report& report_;
  const std::wstring base_;
  Presets* const presets_;
  std::wstring offered_;  // the name in the dialog
  bool asked_ = false;
};

void PresetsCheck::CheckList() {
  Says("A base folder without \"presets\" lists none", List() == 0 && presets_->count == 0);
  Says("FindPreset in an empty list is -1", Find(L"Rock") == -1);
  CreateDirectoryW(base_.c_str(), nullptr);
  CreateDirectoryW(File(L"").c_str(), nullptr);
  const std::string head(20, 'n');
  WriteBytes(File(L"Rock.eqf"), head + kSetting);
  WriteBytes(File(L"Short.eqf"), head + std::string(kSetting, 10));
  WriteBytes(File(L"Two.Points.eqf"), head + kSetting);
  WriteBytes(File(L"Other.txt"), "");
  Says("ListPresets lists the .eqf files of \"presets\" and answers their number",
       List() == 3 && presets_->count == 3 && presets_->names[2] && !presets_->names[3]);
  const int32_t rock = Find(L"rOCK");
  Says("FindPreset compares without case, and the list holds the files' names",
       rock >= 0 && wcscmp(presets_->names[rock], L"Rock.eqf") == 0);
  Says("FindPreset of what is not in the list is -1",
       Find(L"None") == -1 && Find(L"Other") == -1 && Find(L"") == -1);
  Says("GetPresetName is the name up to its first point",
       Name(rock) == L"Rock" && Name(Find(L"Two.Points")) == L"Two");
  Says("GetPresetName is empty for an index outside the list",
       Name(-1).empty() && Name(3).empty() && Name(200).empty() && Name(INT32_MAX).empty());
  int32_t result = 0;
  Says("ReadPreset reads eleven bytes behind the twentieth",
       Setting(rock, &result) == kSetting && result == 1);
  const std::string nothing(KELVO_EQUALIZER_SETTING_BYTES, '\0');
  Says("ReadPreset of a file of 30 bytes is 0, and nothing is written",
       Setting(Find(L"short"), &result) == nothing && result == 0);
  bool outside = true;
  for (const int32_t index : {-1, 3, 200, INT32_MIN}) {
    outside &= Setting(index, &result) == nothing && result == 0;
  }
  Says("ReadPreset of an index outside the list is 0, and nothing is written", outside);
  DeleteFileW(File(L"Rock.eqf").c_str());
  Says("ReadPreset of a file that has gone is 0", Setting(rock, &result) == nothing && !result);
  WriteBytes(File(L"Rock.eqf"), head + kSetting);
  Says("ListPresets appends to the list", List() == 6);
  for (int i = 0; i < 70; ++i) List();
  Says("The list holds 200 at most", presets_->count == 200 && presets_->names[199]);
  table().ClearPresets(KELVO_ON(presets_));
  bool null = presets_->count == 0;
  for (const wchar_t* name : presets_->names) null &= !name;
  Says("ClearPresets empties the list, every slot is null", null);
  table().Destroy(KELVO_ON(presets_), 0);
  table().Destroy(KELVO_ON(presets_), 0);
  Says("Slot 6 with flags 0 frees the list, also when repeated", presets_->count == 0);
}

int32_t PresetsCheck::Save(const char* setting, const wchar_t* name, int answer) {
  WindowUser question(L"File Exists", [&](HWND box) {
    wchar_t text[64] = L"";
    GetDlgItemTextW(box, 0xFFFF, text, 64);
    asked_ = wcscmp(text, L"Specified preset already exists. Overwrite?") == 0 &&
             GetParent(box) == subject_.window && GetDlgItem(box, IDYES) && GetDlgItem(box, IDNO);
    PostMessageW(box, WM_COMMAND, answer, 0);
  });
  WindowUser namer(L"Edit File Name", [&](HWND dialog) {
    wchar_t text[64] = L"";
    GetDlgItemTextW(dialog, 1000, text, 64);
    offered_ = text;
    if (name) SetDlgItemTextW(dialog, 1000, name);
    PostMessageW(dialog, WM_COMMAND, name ? IDOK : IDCANCEL, 0);
  });
  const auto* bytes = reinterpret_cast<const uint8_t*>(setting);
  const int32_t result =
      table().SavePreset(KELVO_ON(presets_), bytes, base_.c_str(), subject_.window);
  return namer.acted() && question.acted() == (answer != 0) ? result : -1;
}

void PresetsCheck::CheckSaving() {
  if (!subject_.windows) return report_.LeavesOut("SavePreset shows a dialog (--windows)");
  const auto saved = [&] { return ReadBytes(File(L"Saved.eqf")); };
  Says("SavePreset that is cancelled answers 0 and writes nothing",
       Save(kSetting, nullptr, 0) == 0 && saved().empty());
  Says("It asks for the name in \"Edit File Name\" and offers \"New Preset\"",
       offered_ == L"New Preset");
  Says("SavePreset writes 31 bytes: the name, padded to 20 with zeros, and the setting",
       Save(kSetting, L"Saved", 0) == 1 &&
           saved() == std::string("Saved") + std::string(15, '\0') + kSetting);
  Says("An existing preset is not overwritten after No",
       Save("AAAAAAAAAAA", L"Saved", IDNO) == 0 && saved().substr(20) == kSetting);
  Says("It asks \"Specified preset already exists. Overwrite?\" above the parent, Yes or No",
       asked_);
  Says("An existing preset is overwritten after Yes",
       Save("BBBBBBBBBBB", L"saved", IDYES) == 1 && saved().substr(20) == "BBBBBBBBBBB");
  Says("A name that no file can have answers 0", Save(kSetting, L"a?b", 0) == 0);
  const wchar_t long_name[] = L"A name of 30 characters, or so";
  Save(kSetting, long_name, 0);
  const std::string file = ReadBytes(File((std::wstring(long_name) + L".eqf").c_str()));
  Says("A long name still gives 31 bytes, its first 19 characters and a zero among them",
       file == std::string("A name of 30 charac") + '\0' + kSetting);
  Says("SavePreset leaves the list in memory as it is", presets_->count == 0);
}

}  // namespace

void CheckPresets(const Subject& subject, Report& report) {
  report.Begin("Equalizer presets");
  PresetsCheck check(subject, report);
  check.CheckList();
  check.CheckSaving();
}

}  // namespace velmora::check
