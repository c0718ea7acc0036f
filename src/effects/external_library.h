// The optional signal-processing library "Utility.dll", which exists for one processor family and
// replaces both built-in stages there. What this needs of the system is behind a small interface.
#pragma once

#include <stdint.h>

#include "kelvo/effects_processor.h"

namespace kelvo {

struct ProcessorIdentity {
  uint32_t type = 0;
  uint32_t level = 0;
  uint32_t revision = 0;
};

class EffectsPlatform {
 public:
  virtual ProcessorIdentity Identify() noexcept = 0;
  // Null when there is no such library.
  virtual void* OpenLibrary(const wchar_t* name) noexcept = 0;
  // Null when the library has no such entry.
  virtual void* FindEntry(void* library, uint32_t ordinal) noexcept = 0;
  virtual void CloseLibrary(void* library) noexcept = 0;

 protected:
  ~EffectsPlatform() = default;
};

// The running system; lives for ever. Windows builds only.
EffectsPlatform& SystemEffectsPlatform() noexcept;

// The library's entries take the arguments of the operation that they replace, the object first, in
// C's calling convention, and run without the object's lock.
using ExternalEqualizer = int32_t (*)(EffectsProcessor* processor, int16_t** samples,
                                      int32_t bytes);
using ExternalBass = void (*)(EffectsProcessor* processor, int16_t** samples, int32_t bytes);

struct EffectsState;

// Loads the library if the processor fits, and fills the state's last four fields. Entries are null
// without the library or without that entry.
void LoadExternalLibrary(EffectsPlatform& platform, EffectsState& state) noexcept;
void UnloadExternalLibrary(EffectsPlatform& platform, EffectsState& state) noexcept;

}  // namespace kelvo
