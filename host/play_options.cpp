#include "host/command.h"

#include <wchar.h>

#include <algorithm>

#include "host/player/preset_bank.h"
#include "host/system.h"

namespace velmora {
namespace {

// Reads `count` numbers of 0 to `last`, with commas between them and nothing else.
bool ReadNumbers(const std::wstring& text, uint8_t* numbers, size_t count, uint8_t last) {
  const wchar_t* at = text.c_str();
  for (size_t i = 0; i < count; ++i) {
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

// "Rock" or "Rock.eqf".
bool ReadPreset(const Library& library, std::wstring name, EqualizerState* state) {
  const size_t point = name.find(L'.');
  if (point != std::wstring::npos && lstrcmpiW(name.c_str() + point, L".eqf") == 0) {
    name.resize(point);
  }
  PresetBank presets(library, ProgramFolder());
  const std::vector<std::wstring> names = presets.List();
  for (size_t i = 0; i < names.size(); ++i) {
    if (lstrcmpiW(names[i].c_str(), name.c_str()) == 0) return presets.Load(i, state);
  }
  return false;
}

bool ReadSound(const Library& library, const std::wstring& option, const std::wstring& value,
               EqualizerState* state) {
  if (option == L"--bass") return ReadNumbers(value, &state->bass, 1, kMaxBass);
  const bool known =
      option == L"--preamp"
          ? ReadNumbers(value, &state->preamp, 1, kLastSlider)
          : option == L"--eq" && (ReadNumbers(value, state->bands, kEqualizerBands, kLastSlider) ||
                                  ReadPreset(library, value, state));
  state->on = state->on || known;
  return known;
}

}  // namespace

bool ParsePlayOptions(const Library& library, const std::vector<std::wstring>& words,
                      PlayOptions* options) {
  for (size_t i = 0; i < words.size(); ++i) {
    const std::wstring& option = words[i];
    if (option.compare(0, 2, L"--") != 0) {
      options->files.push_back(option);
      continue;
    }
    const std::vector<std::wstring> known = {L"--wav", L"--eq", L"--preamp", L"--bass"};
    if (std::find(known.begin(), known.end(), option) == known.end()) {
      PrintError(L"velmora: there is no option %ls%ls\n", option.c_str(),
                 DidYouMean(option, known).c_str());
      return false;
    }
    if (i + 1 == words.size()) {
      PrintError(L"velmora: %ls needs a value\n", option.c_str());
      return false;
    }
    const std::wstring& value = words[++i];
    if (option == L"--wav") {
      options->wav_path = value;
    } else if (!ReadSound(library, option, value, &options->sound)) {
      PrintError(L"velmora: %ls cannot be \"%ls\"%ls\n", option.c_str(), value.c_str(),
                 option == L"--eq" ? L": ten numbers from 0 to 27, or the name of a preset" : L"");
      return false;
    }
  }
  if (!options->files.empty()) return true;
  PrintError(L"usage: velmora play [OPTIONS] FILE...\n");
  return false;
}

}  // namespace velmora
