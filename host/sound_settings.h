// What the user wants the effects to do.
#pragma once

#include <kelvo/effects_processor.h>

#include <string>

namespace velmora {

class SoundSettings {
 public:
  // Takes the option and its value: "--eq V,V,..." (ten sliders) or "--eq NAME.eqf" (a preset,
  // which sets the preamplifier too), "--preamp V" (0 to 27, 13 leaves the level), "--bass V" (0 to
  // 4). False for other options, for values out of range and for presets that cannot be read.
  bool Take(const std::wstring& option, const std::wstring& value);

  // The equalizer starts switched on, with an offset on every sample and a quarter of the level: it
  // is switched off unless it was asked for.
  void Apply(kelvo::EffectsProcessor& effects) const;
  bool changes_sound() const { return equalizer_ || bass_ != 0; }

 private:
  bool equalizer_ = false;
  int32_t preamp_ = 13;
  int32_t bands_[10] = {14, 14, 14, 14, 14, 14, 14, 14, 14, 14};
  int32_t bass_ = 0;
};

}  // namespace velmora
