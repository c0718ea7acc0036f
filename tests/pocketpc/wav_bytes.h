#pragma once

#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

#include <string>
#include <vector>

#include "base/bytes/little_endian.h"

namespace kelvo {

// A recording of the sink; `ok` when its header is that of 16-bit PCM and its lengths are right.
struct WavBytes {
  bool ok = false;
  uint32_t channels = 0;
  uint32_t rate = 0;
  std::vector<int16_t> samples;
};

inline WavBytes ReadWav(const std::wstring& path) {
  WavBytes wav;
  FILE* file = _wfopen(path.c_str(), L"rb");
  if (!file) return wav;
  std::vector<uint8_t> bytes(1 << 22);
  bytes.resize(fread(bytes.data(), 1, bytes.size(), file));
  fclose(file);
  if (bytes.size() < 44 || memcmp(bytes.data(), "RIFF", 4) != 0 ||
      memcmp(bytes.data() + 8, "WAVEfmt \x10\0\0\0\1\0", 14) != 0 ||
      memcmp(bytes.data() + 36, "data", 4) != 0) {
    return wav;
  }
  wav.channels = bytes[22];
  wav.rate = LoadU32(bytes.data() + 24);
  wav.samples.resize((bytes.size() - 44) / 2);
  memcpy(wav.samples.data(), bytes.data() + 44, wav.samples.size() * 2);
  wav.ok = LoadU32(bytes.data() + 4) == bytes.size() - 8 &&
           LoadU32(bytes.data() + 40) == bytes.size() - 44 && bytes[34] == 16;
  return wav;
}

// Sends what is played from now on into a file in the current folder (each test uses another name),
// or to "silence".
inline void UseSink(const wchar_t* path, bool fast) {
  DeleteFileW(path);
  SetEnvironmentVariableW(L"KELVO_AUDIO_SINK", path);
  SetEnvironmentVariableW(L"KELVO_AUDIO_PACE", fast ? L"fast" : L"");
}

}  // namespace kelvo
