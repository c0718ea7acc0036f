// Input of the effects' tests.
#pragma once

#include <stdint.h>

#include <vector>

namespace kelvo::test {

struct Signal {
  const char* name;
  std::vector<int16_t> samples;  // interleaved
};

// A pseudo-random sample for each frame number.
inline int16_t NoiseAt(int f) {
  uint32_t h = static_cast<uint32_t>(f) * 2654435761u + 12345;
  h = (h ^ (h >> 15)) * 2246822519u;
  return static_cast<int16_t>(h >> 13);
}

inline std::vector<Signal> AllSignals(int frames) {
  const struct {
    const char* name;
    int (*left)(int);
    int (*right)(int);
  } kinds[] = {
      {"impulses", [](int f) { return f == 0 ? 32767 : 0; },
       [](int f) { return f == 70 ? -32768 : 0; }},
      {"rails", [](int) { return 32767; }, [](int) { return -32768; }},
      {"fast and slow square", [](int f) { return f % 2 ? -32768 : 32767; },
       [](int f) { return f / 370 % 2 ? -32768 : 32767; }},
      {"noise", [](int f) { return int{NoiseAt(f)}; },
       [](int f) { return int{NoiseAt(f + 1000000)}; }},
  };
  std::vector<Signal> signals;
  for (const auto& kind : kinds) {
    signals.push_back({kind.name, {}});
    for (int f = 0; f < frames; ++f) {
      for (const auto channel : {kind.left, kind.right}) {
        signals.back().samples.push_back(static_cast<int16_t>(channel(f)));
      }
    }
  }
  return signals;
}

}  // namespace kelvo::test
