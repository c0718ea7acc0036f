#include "base/memory/heap.h"
#include "effects/effects_processor.h"
#include "effects/external_library.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/effects_check.h"

namespace kelvo::tool {
namespace {

class NoExternalLibrary final : public EffectsPlatform {
  ProcessorIdentity Identify() noexcept override { return {}; }
  void* OpenLibrary(const wchar_t*) noexcept override { return nullptr; }
  void* FindEntry(void*, uint32_t) noexcept override { return nullptr; }
  void CloseLibrary(void*) noexcept override {}
} g_platform;

}  // namespace

EffectsProcessor* LoadEffects(const wchar_t* path) noexcept {
  if (path) {
    PrintError(path, "this program checks what is linked into it, under Windows also a Kelvo.dll");
    return nullptr;
  }
  static FixedPointEffects effects(g_platform);
  return &effects;
}

}  // namespace kelvo::tool
