#pragma once

#include <stdint.h>

#include <string>
#include <vector>

namespace kelvo {

// A recording of the sink; `ok` when its header is that of 16-bit PCM and its lengths are right.
struct WavBytes {
  bool ok = false;
  uint32_t channels = 0;
  uint32_t rate = 0;
  std::vector<int16_t> samples;
};

WavBytes ReadWav(const std::wstring& path);

// Sends what is played from now on into a file in the current folder; each test uses another name.
void UseSink(const wchar_t* path, bool fast);

}  // namespace kelvo
