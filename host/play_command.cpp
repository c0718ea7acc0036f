#include "host/play_command.h"

#include <limits.h>

#include <memory>

#include "host/console.h"
#include "host/effects_output.h"
#include "host/file_reader.h"
#include "host/input.h"
#include "host/last_played.h"
#include "host/notify_window.h"
#include "host/wav_file_output.h"
#include "host/wave_output.h"

namespace velmora {
namespace {

enum class Outcome { kPlayed, kFailed, kInterrupted };

void Describe(const Input& input, const std::wstring& path) {
  wchar_t title[kelvo::kMaxText] = L"";
  kelvo::MediaInfo info = {};
  FileInfo file;
  input.plugin().GetDisplayTitle(title);
  input.plugin().GetMediaInfo(&info);
  input.Ask(path, &file);
  Print(L"%ls\n", title);
  if (file.album[0] != 0) Print(L"  album     %ls\n", file.album);
  if (info.genre[0] != 0) Print(L"  genre     %ls\n", info.genre);
  Print(L"  length    %ls\n", MinutesSeconds(input.plugin().GetLengthMs()).text);
  if (info.bit_rate != 0 || info.sample_rate != 0) {
    Print(L"  bit rate  %u kbit/s, %ls\n", info.bit_rate, input.SampleRate(info).c_str());
  }
}

// Waits for the end message, showing the position.
Outcome WaitForEnd(kelvo::InputPlugin& plugin, const NotifyWindow& window) {
  const MinutesSeconds length(plugin.GetLengthMs());
  for (;;) {
    const Wait wait = window.Wait(200);
    if (wait == Wait::kEndOfPlayback) {
      Print(L"\r  %ls / %ls\n", length.text, length.text);
      return Outcome::kPlayed;
    }
    if (wait == Wait::kInterrupted) {
      Print(L"\n");
      return Outcome::kInterrupted;
    }
    Print(L"\r  %ls / %ls ", MinutesSeconds(plugin.GetPositionMs(0, 0)).text, length.text);
  }
}

// What to play, and from where.
struct Track {
  std::wstring path;
  int start_s;
};

Outcome PlayFile(const Library& library, const Input& input, kelvo::AudioOutput* output,
                 const Track& track) {
  kelvo::InputPlugin& plugin = input.plugin();
  const NotifyWindow window;
  FileReader reader;
  plugin.SetReader(&reader);
  plugin.SetOutput(output);
  Outcome outcome = Outcome::kFailed;
  if (!plugin.Open(track.path.c_str(), 0)) {
    PrintError(L"%ls: cannot be played\n", track.path.c_str());
  } else {
    // Not before: with a window the Windows Media plug-in asks about a name that it refuses.
    input.SetWindow(window.handle());
    Describe(input, track.path);
    // The state tells a failed output apart from a file that has already ended.
    if (plugin.Play() && (plugin.GetState() != kelvo::kStopped || window.EndIsWaiting())) {
      // A position behind the end is refused: then it plays from the start.
      if (track.start_s > 0) {
        plugin.SeekMs(track.start_s > INT_MAX / 1000 ? INT_MAX : track.start_s * 1000);
      }
      outcome = WaitForEnd(plugin, window);
      if (outcome == Outcome::kInterrupted) {
        wchar_t title[kelvo::kMaxText] = L"";
        plugin.GetDisplayTitle(title);
        StoreLastPlayed(library, track.path, plugin.GetPositionMs(0, 0), title);
      }
    } else {
      PrintError(L"%ls: the audio output cannot be opened\n", track.path.c_str());
    }
    plugin.Stop();
    plugin.Close(0, 0);
  }
  plugin.SetOutput(nullptr);
  plugin.SetReader(nullptr);
  input.SetWindow(nullptr);
  return outcome;
}

// song.wav, song-2.wav, song-3.wav: a WAV file has one format, so each file played gets its own.
std::wstring Numbered(const std::wstring& path, size_t index) {
  if (index == 0) return path;
  const size_t point = path.find_last_of(L'.');
  const size_t folder = path.find_last_of(L"\\/");
  const bool has_point =
      point != std::wstring::npos && (folder == std::wstring::npos || point > folder);
  const std::wstring stem = has_point ? path.substr(0, point) : path;
  return stem + L"-" + std::to_wstring(index + 1) + (has_point ? path.substr(point) : L"");
}

// For a plug-in with an output of its own: the desktop's stand-in for the device's sound functions
// looks for these. An empty path is the sound device.
void SendOwnOutputTo(const std::wstring& wav) {
  if (wav.empty()) return;
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", wav.c_str());
  SetEnvironmentVariableW(L"KELVO_AUDIO_PACE", L"fast");
}

// `wav` is empty for the sound device.
Outcome PlayInto(const Library& library, const Track& track, const std::wstring& wav,
                 const SoundSettings& sound) {
  const Input input(library, track.path);
  if (const wchar_t* missing = input.Missing()) {
    PrintError(L"%ls: Kelvo.dll does not offer %ls\n", track.path.c_str(), missing);
    return Outcome::kFailed;
  }
  if (input.has_own_output()) {
    SendOwnOutputTo(wav);
    return PlayFile(library, input, nullptr, track);
  }
  std::unique_ptr<WaveOutput> device;
  std::unique_ptr<WavFileOutput> file;
  kelvo::AudioOutput* output;
  if (wav.empty()) {
    device = std::make_unique<WaveOutput>();
    output = device.get();
  } else {
    file = std::make_unique<WavFileOutput>(wav);
    output = file.get();
  }
  auto* effects = library.Get<kelvo::EffectsProcessor>(kelvo::kFeatureEffects);
  if (!effects || !sound.changes_sound()) return PlayFile(library, input, output, track);
  EffectsOutput through_effects(*output, *effects);
  return PlayFile(library, input, &through_effects, track);
}

}  // namespace

int Play(const Library& library, const PlayOptions& options) {
  if (auto* effects = library.Get<kelvo::EffectsProcessor>(kelvo::kFeatureEffects)) {
    options.sound.Apply(*effects);
  }
  const bool to_file = !options.wav_path.empty() || !WaveOutput::HasDevice();
  const std::wstring wav_path = options.wav_path.empty() ? L"played.wav" : options.wav_path;
  int result = 0;
  for (size_t i = 0; i < options.files.size(); ++i) {
    const std::wstring wav = to_file ? Numbered(wav_path, i) : L"";
    const Track track = {options.files[i], i == 0 ? options.start_s : 0};
    const Outcome outcome = PlayInto(library, track, wav, options.sound);
    if (outcome == Outcome::kFailed) {
      result = 1;
      continue;
    }
    if (to_file) Print(L"  written to %ls\n", wav.c_str());
    if (outcome == Outcome::kInterrupted) return 2;
  }
  return result;
}

}  // namespace velmora
