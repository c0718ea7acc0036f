// Feature 4: named equalizer settings, one file "NAME.eqf" each (docs/formats/eqf.md) in the folder
// "presets" below a base folder that the host names with each call (without backslash at its end).
//
// A setting is kEqualizerSettingBytes bytes of the host's; the library stores them and never looks
// inside. The list of names is filled by ListPresets and holds at most kMaxPresets; indices are
// positions in it, and an index outside the list is an empty slot.
//
// Thread: all operations on the host's user-interface thread. Only SavePreset shows anything.
//
// Generated from tools/contract/equalizer_presets.txt.
#pragma once

#include "kelvo/types.h"

namespace kelvo {

constexpr size_t kEqualizerSettingBytes = 11;
constexpr int32_t kMaxPresets = 200;

// The object's words behind the table of operations, by their places on 32 bits. What follows is
// the library's own; so is changing any of this.
//     4  wchar_t* names[200]: of the files ("Rock.eqf"); null for an empty slot
//   804  int32_t count
class EqualizerPresets {
 public:
  // Slot 0. The index of the preset whose file is `name` + ".eqf", letters compared without case;
  // the first one, or -1.
  virtual int32_t FindPreset(const wchar_t* name) noexcept = 0;

  // Slot 1. Asks the user for a name, above the window `parent`, and writes the setting (11 bytes)
  // into the preset of that name, after a question when it exists. 1 when it was written; 0 when
  // the user declined or the file could not be written (also: a name that no file can have); a
  // preset that was there is then unchanged. The list in memory does not change.
  virtual int32_t SavePreset(const uint8_t* setting, const wchar_t* base_folder,
                             WindowHandle parent) noexcept = 0;

  // Slot 2. Reads a preset's setting (11 bytes). 1 on success; 0 for an empty slot and for a file
  // that cannot be opened or is too short, `setting` is then untouched.
  virtual int32_t ReadPreset(int32_t index, uint8_t* setting,
                             const wchar_t* base_folder) noexcept = 0;

  // Slot 3. Writes the preset's name up to its first point into a buffer of kMaxText characters;
  // empty text for an empty slot.
  virtual void GetPresetName(int32_t index, wchar_t* name) noexcept = 0;

  // Slot 4. Empties the list.
  virtual void ClearPresets() noexcept = 0;

  // Slot 5. Appends the presets of the folder to the list, in the file system's order, and returns
  // the list's length. It does not empty the list first. A missing folder holds none. Presets
  // beyond kMaxPresets are left out, and all from the first one for whose name memory is out.
  virtual int32_t ListPresets(const wchar_t* base_folder) noexcept = 0;

  // Slot 6. Frees the list; harmless when repeated. Bit 0 of `flags` asks to give the object's own
  // memory back too. For the library's unloading; never to be called by the host on what GetFeature
  // returned.
  virtual void Destroy(uint32_t flags) noexcept = 0;

 protected:
  ~EqualizerPresets() = default;
};

}  // namespace kelvo
