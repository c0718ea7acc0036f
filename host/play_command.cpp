#include "host/play_command.h"

#include <kelvo/messages.h>
#include <kelvo/ogg_vorbis_input.h>
#include <limits.h>

#include <memory>

#include "host/console.h"
#include "host/file_reader.h"
#include "host/last_played.h"
#include "host/notify_window.h"
#include "host/wav_file_output.h"
#include "host/wave_output.h"

namespace velmora {
namespace {

enum class Outcome { kPlayed, kFailed, kInterrupted };

void Describe(kelvo::OggVorbisInput& plugin, const std::wstring& path) {
  wchar_t title[kelvo::kMaxText] = L"";
  wchar_t album[kelvo::kMaxText] = L"";
  kelvo::MediaInfo info = {};
  plugin.GetDisplayTitle(title);
  plugin.GetFileInfo(path.c_str(), nullptr, album, nullptr, nullptr, nullptr, nullptr, nullptr);
  plugin.GetMediaInfo(&info);
  Print(L"%ls\n", title);
  if (album[0] != 0) Print(L"  album     %ls\n", album);
  if (info.genre[0] != 0) Print(L"  genre     %ls\n", info.genre);
  Print(L"  length    %ls\n", MinutesSeconds(plugin.GetLengthMs()).text);
  Print(L"  bit rate  %u kbit/s, %u Hz\n", info.bit_rate, info.sample_rate);
}

// Waits for the end message, showing the position.
Outcome WaitForEnd(kelvo::OggVorbisInput& plugin, const NotifyWindow& window) {
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

Outcome PlayFile(const Library& library, kelvo::OggVorbisInput& plugin, kelvo::AudioOutput& output,
                 const std::wstring& path, int start_s) {
  FileReader reader;
  plugin.SetReader(&reader);
  if (!plugin.Open(path.c_str(), 0)) {
    PrintError(L"%ls: not a playable Ogg Vorbis file\n", path.c_str());
    return Outcome::kFailed;
  }
  Describe(plugin, path);
  const NotifyWindow window;
  plugin.SetNotifyWindow(window.handle());
  plugin.SetOutput(&output);
  Outcome outcome = Outcome::kFailed;
  // The state tells a failed output apart from a file that has already ended.
  if (plugin.Play() && (plugin.GetState() != kelvo::kStopped || window.EndIsWaiting())) {
    // A position behind the end is refused: then it plays from the start.
    if (start_s > 0) plugin.SeekMs(start_s > INT_MAX / 1000 ? INT_MAX : start_s * 1000);
    outcome = WaitForEnd(plugin, window);
    if (outcome == Outcome::kInterrupted) {
      wchar_t title[kelvo::kMaxText] = L"";
      plugin.GetDisplayTitle(title);
      StoreLastPlayed(library, path, plugin.GetPositionMs(0, 0), title);
    }
  } else {
    PrintError(L"%ls: the audio output cannot be opened\n", path.c_str());
  }
  plugin.Stop();
  plugin.Close(0, 0);
  plugin.SetNotifyWindow(nullptr);
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

}  // namespace

int Play(const Library& library, const PlayOptions& options) {
  auto* plugin = library.Get<kelvo::OggVorbisInput>(kelvo::kFeatureOggVorbis);
  if (!plugin) {
    PrintError(L"Kelvo.dll does not offer Ogg Vorbis\n");
    return 1;
  }
  const bool to_file = !options.wav_path.empty() || !WaveOutput::HasDevice();
  const std::wstring wav_path = options.wav_path.empty() ? L"played.wav" : options.wav_path;
  int result = 0;
  for (size_t i = 0; i < options.files.size(); ++i) {
    const std::wstring wav = Numbered(wav_path, i);
    std::unique_ptr<WaveOutput> device;
    std::unique_ptr<WavFileOutput> file;
    kelvo::AudioOutput* output;
    if (to_file) {
      file = std::make_unique<WavFileOutput>(wav);
      output = file.get();
    } else {
      device = std::make_unique<WaveOutput>();
      output = device.get();
    }
    const Outcome outcome =
        PlayFile(library, *plugin, *output, options.files[i], i == 0 ? options.start_s : 0);
    plugin->SetOutput(nullptr);
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
