#include "host/play_command.h"

#include "host/console.h"
#include "host/last_played.h"
#include "host/milliseconds.h"
#include "host/minutes_seconds.h"
#include "host/notify_window.h"
#include "host/player/playback.h"
#include "host/sound_sink.h"

namespace velmora {
namespace {

enum class Outcome { kPlayed, kFailed, kInterrupted };

void Describe(const Playback& playback) {
  const kelvo::MediaInfo& info = playback.format();
  FileInfo file;
  playback.input().Ask(playback.path(), &file);
  Print(L"%ls\n", playback.title().c_str());
  if (file.album[0] != 0) Print(L"  album     %ls\n", file.album);
  if (info.genre[0] != 0) Print(L"  genre     %ls\n", info.genre);
  Print(L"  length    %ls\n", MinutesSeconds(playback.length_ms()).text);
  if (info.bit_rate != 0 || info.sample_rate != 0) {
    Print(L"  bit rate  %u kbit/s, %ls\n", info.bit_rate,
          playback.input().SampleRate(info).c_str());
  }
}

// Waits for the end message, showing the position.
Outcome WaitForEnd(const Playback& playback, const NotifyWindow& window) {
  const MinutesSeconds length(static_cast<long>(playback.length_ms()));
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
    const MinutesSeconds position(static_cast<long>(playback.position_ms()));
    Print(L"\r  %ls / %ls ", position.text, length.text);
  }
}

// What to play, and from where.
struct TrackStart {
  std::wstring path;
  int start_s;
};

const wchar_t* Complaint(Playback::Start start) {
  return start == Playback::Start::kNoOutput ? L"the audio output cannot be opened"
                                             : L"cannot be played";
}

Outcome PlayFile(const Library& library, const TrackStart& track) {
  const wchar_t* const path = track.path.c_str();
  if (const wchar_t* missing = Input(library, track.path).Missing()) {
    PrintError(L"%ls: Kelvo.dll does not offer %ls\n", path, missing);
    return Outcome::kFailed;
  }
  const NotifyWindow window;
  Playback playback(library, window.handle());
  const Playback::Start start = playback.Play(track.path, ToMilliseconds(track.start_s));
  if (start != Playback::Start::kPlaying) {
    PrintError(L"%ls: %ls\n", path, Complaint(start));
    return Outcome::kFailed;
  }
  Describe(playback);
  const Outcome outcome = WaitForEnd(playback, window);
  if (outcome == Outcome::kInterrupted) {
    StoreLastPlayed(library, track.path, static_cast<int>(playback.position_ms()),
                    playback.title().c_str());
  }
  if (playback.output_failed()) {
    PrintError(L"%ls: the audio output failed\n", path);
    return Outcome::kFailed;
  }
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
  if (auto* effects = library.Get<kelvo::EffectsProcessor>(kelvo::kFeatureEffects)) {
    Apply(options.sound.state(), *effects);
  }
  const bool to_file = !options.wav_path.empty() || !WaveOutput::HasDevice();
  const std::wstring wav_path = options.wav_path.empty() ? L"played.wav" : options.wav_path;
  int result = 0;
  for (size_t i = 0; i < options.files.size(); ++i) {
    const std::wstring wav = to_file ? Numbered(wav_path, i) : L"";
    if (to_file) SendSoundToFile(wav);
    const Outcome outcome = PlayFile(library, {options.files[i], i == 0 ? options.start_s : 0});
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
