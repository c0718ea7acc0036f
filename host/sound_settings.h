// What the user wants the effects to do.
#pragma once

#include <string>

#include "host/equalizer_state.h"

namespace velmora {

class SoundSettings {
 public:
  // Takes the option and its value: "--eq V,V,..." (ten sliders) or "--eq NAME.eqf" (a preset,
  // which sets the preamplifier too), "--preamp V" (0 to 27, 13 leaves the level), "--bass V" (0 to
  // 4). False for other options, for values out of range and for presets that cannot be read.
  bool Take(const std::wstring& option, const std::wstring& value);

  // Once anything was taken for it, the equalizer is on.
  const EqualizerState& state() const { return state_; }

 private:
  EqualizerState state_;
};

}  // namespace velmora
