#pragma once

#include "base/files/file_system.h"
#include "base/memory/heap_text.h"
#include "base/text/wide.h"
#include "kelvo/equalizer_presets.h"

namespace kelvo {

// The two questions that saving asks; the shell has the real ones. Both run modally above `parent`.
class PresetPrompts {
 public:
  // Lets the user type a name, starting from the localized "New Preset"; the input panel's button
  // is shown meanwhile, because the host's full screen hides it. False when the user cancelled.
  virtual bool AskName(WindowHandle parent, wchar_t (&name)[kTextCapacity]) noexcept = 0;

  // "Specified preset already exists. Overwrite?" True for yes.
  virtual bool ConfirmOverwrite(WindowHandle parent) noexcept = 0;

 protected:
  ~PresetPrompts() = default;
};

// As dialogs on the screen: src/eq/windows.
class PresetQuestions final : public PresetPrompts {
 public:
  bool AskName(WindowHandle parent, wchar_t (&name)[kTextCapacity]) noexcept override;
  bool ConfirmOverwrite(WindowHandle parent) noexcept override;
};

// What hosts find in the feature's object, in this order, behind its table of operations: the names
// of the files ("Rock.eqf") of one folder or several.
struct PresetNames {
  HeapText files[kMaxPresets];
  int32_t count = 0;
};

// Feature 4. One object, static in the library; user-interface thread only.
class PresetsFeature final : public EqualizerPresets {
 public:
  // Both are borrowed and must outlive the object.
  PresetsFeature(FileSystem& files, PresetPrompts& prompts) noexcept
      : files_(files), prompts_(prompts) {}

  int32_t FindPreset(const wchar_t* name) noexcept override;
  int32_t SavePreset(const uint8_t* setting, const wchar_t* base_folder,
                     WindowHandle parent) noexcept override;
  int32_t ReadPreset(int32_t index, uint8_t* setting, const wchar_t* base_folder) noexcept override;
  void GetPresetName(int32_t index, wchar_t* name) noexcept override;
  void ClearPresets() noexcept override;
  int32_t ListPresets(const wchar_t* base_folder) noexcept override;
  void Destroy(uint32_t flags) noexcept override;

 private:
  // Null for an empty slot; every index is allowed.
  const wchar_t* FileAt(int32_t index) const noexcept;

  PresetNames names_;
  FileSystem& files_;
  PresetPrompts& prompts_;
};

}  // namespace kelvo
