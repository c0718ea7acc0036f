// What the player plays while this lives goes into WAV files, a new one for each file that it
// plays.
#pragma once

#include <windows.h>

#include <string>

#include "tests/player/program/player_process.h"
#include "tests/pocketpc/wav_bytes.h"

namespace velmora::test {

class Recordings {
 public:
  Recordings(const Installed& installed, bool fast) : base_(installed.Path(L"sound")) {
    kelvo::UseSink((base_ + L".wav").c_str(), fast);
  }
  ~Recordings() {
    SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", nullptr);
    SetEnvironmentVariableW(L"KELVO_AUDIO_PACE", nullptr);
  }
  Recordings(const Recordings&) = delete;
  Recordings& operator=(const Recordings&) = delete;

  // The n-th since the player's start, from 1.
  std::wstring Path(int n) const {
    return base_ + (n > 1 ? L"-" + std::to_wstring(n) : L"") + L".wav";
  }
  // Samples in it so far; 0 before it is there.
  size_t Count(int n) const {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(Path(n).c_str(), GetFileExInfoStandard, &data)) return 0;
    return data.nFileSizeLow > kHeaderBytes ? (data.nFileSizeLow - kHeaderBytes) / 2 : 0;
  }
  bool WaitForSamples(PlayerProcess& player, int n, size_t count) const {
    return player.WaitFor(std::to_string(count) + " samples of recording " + std::to_string(n),
                          [&] { return Count(n) >= count; });
  }
  // Longer than any change takes to be heard.
  bool WaitForMore(PlayerProcess& player, int n) const {
    return WaitForSamples(player, n, Count(n) + 10 * 8192);
  }
  std::vector<int16_t> Read(int n) const {
    const kelvo::WavBytes wav = kelvo::ReadWav(Path(n));
    EXPECT_TRUE(wav.ok) << "recording " << n;
    return wav.samples;
  }
  // For the next start of the player, which counts from 1 again.
  void Delete() const {
    for (int n = 1; DeleteFileW(Path(n).c_str()); ++n) {
    }
  }

 private:
  static constexpr DWORD kHeaderBytes = 44;
  const std::wstring base_;
};

}  // namespace velmora::test
