/* Feature 4: named equalizer settings, one file "NAME.eqf" each (docs/formats/eqf.md) in the
 * folder "presets" below a base folder that the host names with each call (without backslash
 * at its end).
 *
 * A setting is KELVO_EQUALIZER_SETTING_BYTES bytes of the host's; the library stores them and
 * never looks inside. The list of names is filled by ListPresets and holds at most
 * KELVO_MAX_PRESETS; indices are positions in it, and an index outside the list is an empty
 * slot.
 *
 * Thread: all operations on the host's user-interface thread. Only SavePreset shows anything.
 *
 * Generated from tools/contract/equalizer_presets.txt. */
#ifndef KELVO_C_EQUALIZER_PRESETS_H
#define KELVO_C_EQUALIZER_PRESETS_H

#include "types.h"

#define KELVO_EQUALIZER_SETTING_BYTES 11
#define KELVO_MAX_PRESETS 200

typedef struct KelvoEqualizerPresets KelvoEqualizerPresets;
typedef struct KelvoEqualizerPresetsTable {
  /* Slot 0. The index of the preset whose file is `name` + ".eqf", letters compared without
   * case; the first one, or -1. */
  int32_t(KELVO_METHOD* FindPreset)(KELVO_SELF(KelvoEqualizerPresets), const wchar_t* name);

  /* Slot 1. Asks the user for a name, above the window `parent`, and writes the setting (11
   * bytes) into the preset of that name, after a question when it exists. 1 when it was written;
   * 0 when the user declined or the file could not be written (also: a name that no file can
   * have); a preset that was there is then unchanged. The list in memory does not change. */
  int32_t(KELVO_METHOD* SavePreset)(KELVO_SELF(KelvoEqualizerPresets), const uint8_t* setting,
                                    const wchar_t* base_folder, KelvoWindowHandle parent);

  /* Slot 2. Reads a preset's setting (11 bytes). 1 on success; 0 for an empty slot and for a
   * file that cannot be opened or is too short, `setting` is then untouched. */
  int32_t(KELVO_METHOD* ReadPreset)(KELVO_SELF(KelvoEqualizerPresets), int32_t index,
                                    uint8_t* setting, const wchar_t* base_folder);

  /* Slot 3. Writes the preset's name up to its first point into a buffer of KELVO_MAX_TEXT
   * characters; empty text for an empty slot. */
  void(KELVO_METHOD* GetPresetName)(KELVO_SELF(KelvoEqualizerPresets), int32_t index,
                                    wchar_t* name);

  /* Slot 4. Empties the list. */
  void(KELVO_METHOD* ClearPresets)(KELVO_SELF(KelvoEqualizerPresets));

  /* Slot 5. Appends the presets of the folder to the list, in the file system's order, and
   * returns the list's length. It does not empty the list first. A missing folder holds none.
   * Presets beyond KELVO_MAX_PRESETS are left out, and all from the first one for whose name
   * memory is out. */
  int32_t(KELVO_METHOD* ListPresets)(KELVO_SELF(KelvoEqualizerPresets), const wchar_t* base_folder);

  /* Slot 6. Frees the list; harmless when repeated. Bit 0 of `flags` asks to give the object's
   * own memory back too. For the library's unloading; never to be called by the host on what
   * GetFeature returned. */
  void(KELVO_METHOD* Destroy)(KELVO_SELF(KelvoEqualizerPresets), uint32_t flags);
} KelvoEqualizerPresetsTable;
struct KelvoEqualizerPresets {
  const KelvoEqualizerPresetsTable* table;
  wchar_t* names[200]; /* of the files ("Rock.eqf"); null for an empty slot */
  int32_t count;
};

#endif
