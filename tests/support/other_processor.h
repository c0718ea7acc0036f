// A system on which there is no external library for the effects: its processor is another one.
#pragma once

#include "effects/external_library.h"

namespace kelvo::test {

class OtherProcessor final : public EffectsPlatform {
  ProcessorIdentity Identify() noexcept override { return {586, 6, 0}; }
  void* OpenLibrary(const wchar_t*) noexcept override { return nullptr; }
  void* FindEntry(void*, uint32_t) noexcept override { return nullptr; }
  void CloseLibrary(void*) noexcept override {}
};
inline OtherProcessor g_other_processor;

}  // namespace kelvo::test
