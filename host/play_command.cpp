// velmora play: files on the console, one after the other.
#include <kelvo/messages.h>

#include <optional>

#include "host/command.h"
#include "host/player/file_search.h"
#include "host/player/playback.h"
#include "host/text.h"
#include "host/texts.h"
#include "host/trouble.h"

namespace velmora {
namespace {

enum class Outcome { kPlayed, kFailed, kInterrupted };

// An invisible window that receives the plug-ins' end-of-playback message.
class NotifyWindow {
 public:
  NotifyWindow()
      : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                GetModuleHandleW(nullptr), nullptr)) {}
  ~NotifyWindow() { DestroyWindow(window_); }
  NotifyWindow(const NotifyWindow&) = delete;
  NotifyWindow& operator=(const NotifyWindow&) = delete;

  HWND handle() const { return window_; }

  // Handles messages until playback ends or Ctrl-C; nothing when the time is over first.
  std::optional<Outcome> Wait(DWORD milliseconds) const {
    const DWORD start = GetTickCount();
    for (;;) {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.hwnd == window_ && message.message == kelvo::kMessageEndOfPlayback) {
          return Outcome::kPlayed;
        }
        DispatchMessageW(&message);
      }
      const DWORD passed = GetTickCount() - start;
      if (passed >= milliseconds) return std::nullopt;
      const HANDLE interrupt = InterruptEvent();
      if (MsgWaitForMultipleObjects(1, &interrupt, FALSE, milliseconds - passed, QS_ALLINPUT) ==
          WAIT_OBJECT_0) {
        return Outcome::kInterrupted;
      }
    }
  }

 private:
  HWND window_;
};

void Describe(const Playback& playback) {
  const kelvo::MediaInfo& info = playback.format();
  FileInfo file;
  playback.input().GetInfo(playback.path(), &file);
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
  const MinutesSeconds length(playback.length_ms());
  for (;;) {
    const std::optional<Outcome> outcome = window.Wait(200);
    if (outcome == Outcome::kPlayed) Print(L"\r  %ls / %ls\n", length.text, length.text);
    if (outcome == Outcome::kInterrupted) Print(L"\n");
    if (outcome) return *outcome;
    Print(L"\r  %ls / %ls ", MinutesSeconds(playback.position_ms()).text, length.text);
  }
}

Outcome PlayFile(const Library& library, const std::wstring& path) {
  const wchar_t* const name = path.c_str();
  if (const wchar_t* missing = Input(library, path).Missing()) {
    PrintError(L"%ls: Kelvo.dll does not offer %ls\n", name, missing);
    return Outcome::kFailed;
  }
  // Known without trying, and without the plug-in's message boxes, which nobody may see here.
  const Trouble trouble = TroubleOf(library, path);
  if (trouble != Trouble::kDamaged) {
    PrintError(L"%ls: %ls\n", name, Describe(trouble).c_str());
    return Outcome::kFailed;
  }
  const NotifyWindow window;
  Playback playback(library, window.handle());
  const Playback::Start start = playback.Play(path, 0);
  if (start != Playback::Start::kPlaying) {
    const std::wstring why =
        start == Playback::Start::kNoOutput ? Text(TEXT_TROUBLE_OUTPUT) : Describe(trouble);
    PrintError(L"%ls: %ls\n", name, why.c_str());
    return Outcome::kFailed;
  }
  Describe(playback);
  const Outcome outcome = WaitForEnd(playback, window);
  if (playback.output_failed()) {
    PrintError(L"%ls: the audio output failed\n", name);
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

// Folders become what they hold. False: one holds nothing to play, which is said.
bool ExpandFolders(const std::vector<std::wstring>& words, std::vector<std::wstring>* files) {
  bool all = true;
  for (const std::wstring& word : words) {
    const DWORD attributes = GetFileAttributesW(word.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
      files->push_back(word);
      continue;
    }
    const size_t before = files->size();
    FileSearch search({word});
    while (search.Step(files)) {
    }
    if (files->size() > before) continue;
    PrintError(L"%ls: no .ogg or .wma in this folder\n", word.c_str());
    all = false;
  }
  return all;
}

}  // namespace

int PlayCommand(const Library& library, const Words& words) {
  PlayOptions options;
  if (!ParsePlayOptions(library, words, &options)) return 1;
  if (auto* effects = library.Get<kelvo::EffectsProcessor>(kelvo::kFeatureEffects)) {
    Apply(options.sound, *effects);
  }
  const bool to_file = !options.wav_path.empty();
  if (!to_file && !WaveOutput::HasDevice()) {
    PrintError(L"velmora: no sound device; --wav OUT writes the music into a file\n");
    return 1;
  }
  std::vector<std::wstring> files;
  int result = ExpandFolders(options.files, &files) ? 0 : 1;
  for (size_t i = 0; i < files.size(); ++i) {
    const std::wstring wav = to_file ? Numbered(options.wav_path, i) : L"";
    if (to_file) SendSoundToFile(wav);
    const Outcome outcome = PlayFile(library, files[i]);
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
