// Input signals of the effects tests: name and interleaved samples.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelvo::test {

struct Signal {
  std::string name;
  std::vector<int16_t> samples;
};

inline Signal MakeSignal(const char* name, int frames, int16_t (*left)(int),
                         int16_t (*right)(int)) {
  Signal signal{name, {}};
  for (int f = 0; f < frames; ++f) {
    signal.samples.push_back(left(f));
    signal.samples.push_back(right(f));
  }
  return signal;
}

// A pseudo-random sample for each frame number.
inline int16_t NoiseAt(int f) {
  uint32_t h = static_cast<uint32_t>(f) * 2654435761u + 12345;
  h = (h ^ (h >> 15)) * 2246822519u;
  return static_cast<int16_t>(h >> 13);
}

inline std::vector<Signal> AllSignals(int frames) {
  const auto silence = [](int) -> int16_t { return 0; };
  const auto impulse = [](int f) -> int16_t { return f == 0 ? 32767 : 0; };
  const auto late_impulse = [](int f) -> int16_t { return f == 70 ? -32768 : 0; };
  const auto top = [](int) -> int16_t { return 32767; };
  const auto bottom = [](int) -> int16_t { return -32768; };
  const auto fast_square = [](int f) -> int16_t { return f % 2 ? -32768 : 32767; };
  const auto slow_square = [](int f) -> int16_t { return f / 370 % 2 ? -32768 : 32767; };
  const auto other_noise = [](int f) -> int16_t { return NoiseAt(f + 1000000); };
  return {
      MakeSignal("silence", frames, silence, silence),
      MakeSignal("impulses", frames, impulse, late_impulse),
      MakeSignal("rails", frames, top, bottom),
      MakeSignal("fast and slow square", frames, fast_square, slow_square),
      MakeSignal("slow square and silence", frames, slow_square, silence),
      MakeSignal("noise", frames, NoiseAt, other_noise),
  };
}

}  // namespace kelvo::test
