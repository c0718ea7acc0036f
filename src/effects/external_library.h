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

// The StrongARM revisions that the library is built for.
bool SupportsExternalLibrary(const ProcessorIdentity& identity) noexcept;

// Owns the loaded library.
class ExternalLibrary {
 public:
  // Loads the library if the processor fits. `platform` is borrowed; it must outlive this.
  explicit ExternalLibrary(EffectsPlatform& platform) noexcept;
  ~ExternalLibrary() { Unload(); }
  ExternalLibrary(const ExternalLibrary&) = delete;
  ExternalLibrary& operator=(const ExternalLibrary&) = delete;

  void Unload() noexcept;  // once or more often

  // Null without the library or without that entry.
  ExternalEqualizer equalizer() const noexcept { return equalizer_; }
  ExternalBass bass() const noexcept { return bass_; }

 private:
  EffectsPlatform& platform_;
  void* library_ = nullptr;
  ExternalEqualizer equalizer_ = nullptr;
  ExternalBass bass_ = nullptr;
};

}  // namespace kelvo
