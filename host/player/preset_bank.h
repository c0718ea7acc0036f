#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/sound_state.h"

namespace kelvo {
class EqualizerPresets;
}

namespace velmora {

// The equalizer presets in the folder "presets" below a base folder.
class PresetBank {
 public:
  PresetBank(const Library& library, const std::wstring& base_folder);

  // Reads the folder anew. Names are shown up to their first point, so two may look alike.
  std::vector<std::wstring> List();
  // An index into the last list. Sets preamplifier and bands and leaves the rest; false, and
  // nothing changes, when the file cannot be read or holds no slider positions.
  bool Load(size_t index, EqualizerState* state) const;
  // Why no file can be written where presets are; empty: one can.
  std::wstring WhyNotSaved() const;
  // Lets the user name it, above `parent`.
  bool Save(const EqualizerState& state, HWND parent) const;
  // False for a preset whose file cannot be told from its name.
  bool Delete(size_t index) const;

 private:
  kelvo::EqualizerPresets* const presets_;
  const std::wstring folder_;
};

}  // namespace velmora
