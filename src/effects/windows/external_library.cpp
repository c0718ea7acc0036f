#include "effects/external_library.h"

#include <windows.h>

namespace kelvo {
namespace {

class SystemPlatform final : public EffectsPlatform {
 public:
  ProcessorIdentity Identify() noexcept override {
    SYSTEM_INFO info = {};
    GetSystemInfo(&info);
    ProcessorIdentity identity;
    identity.type = info.dwProcessorType;
    identity.level = info.wProcessorLevel;
    identity.revision = info.wProcessorRevision;
    return identity;
  }

  void* OpenLibrary(const wchar_t* name) noexcept override { return LoadLibraryW(name); }

  // An ordinal takes the place of the name, whose type differs between desktop and device.
  void* FindEntry(void* library, uint32_t ordinal) noexcept override {
    return Find(&GetProcAddress, static_cast<HMODULE>(library), ordinal);
  }

  void CloseLibrary(void* library) noexcept override { FreeLibrary(static_cast<HMODULE>(library)); }

 private:
  template <class Name>
  static void* Find(FARPROC(WINAPI* find)(HMODULE, Name), HMODULE module,
                    uint32_t ordinal) noexcept {
    return reinterpret_cast<void*>(
        find(module, reinterpret_cast<Name>(static_cast<uintptr_t>(ordinal))));
  }
};

SystemPlatform g_system;

}  // namespace

EffectsPlatform& SystemEffectsPlatform() noexcept {
  return g_system;
}

}  // namespace kelvo
