// Imports: modules and resources, the registry, window messages.
#include <string.h>

#include "fail.h"
#include "process.h"

namespace bench {
namespace {

constexpr uint32_t kLocalMachine = 0x80000002;
constexpr uint32_t kRegText = 1, kRegDword = 4;
constexpr uint32_t kNotImplemented = 0x80004001;
constexpr uint32_t kSuccess = 0, kNotFound = 2, kMoreData = 234;

uint32_t OwnModuleOnly(Process& p, uint32_t module) {
  if (module != p.base()) Fail("resources of the module %#x", module);
  return module;
}

void ProvideResources(Process& process) {
  // No other library is there.
  process.Provide("LoadLibraryW", [](Process& p) {
    p.libraries_asked.push_back(p.machine.Wide(p.Argument(0)));
    return 0u;
  });
  process.Provide("FindResourceW", [](Process& p) {
    OwnModuleOnly(p, p.Argument(0));
    const uint32_t name = p.Argument(1), type = p.Argument(2);
    if (name > 0xFFFF || type > 0xFFFF) Fail("a resource asked for by name");
    const uint32_t entry = p.dll().FindResource(type, name);
    return entry != 0 ? p.base() + entry : 0;
  });
  process.Provide("LoadResource", [](Process& p) {
    OwnModuleOnly(p, p.Argument(0));
    return p.base() + p.machine.Word(p.Argument(1));
  });
  process.Provide("SizeofResource", [](Process& p) {
    OwnModuleOnly(p, p.Argument(0));
    return p.machine.Word(p.Argument(1) + 4);
  });
}

// Keys are handles for their paths below HKEY_LOCAL_MACHINE.
void ProvideRegistry(Process& process) {
  const auto keys = std::make_shared<std::map<uint32_t, std::u16string>>();
  const auto open = [keys](Process& p, const std::u16string& path, uint32_t out) {
    const uint32_t handle = p.NewHandle();
    (*keys)[handle] = path;
    p.machine.SetWord(out, handle);
    return kSuccess;
  };
  process.Provide("RegCreateKeyExW", [open](Process& p) {
    if (p.Argument(0) != kLocalMachine) Fail("RegCreateKeyExW: another root");
    const std::u16string path = p.machine.Wide(p.Argument(1));
    p.registry[path];
    return open(p, path, p.Argument(7));
  });
  process.Provide("RegOpenKeyExW", [open](Process& p) {
    if (p.Argument(0) != kLocalMachine) Fail("RegOpenKeyExW: another root");
    const std::u16string path = p.machine.Wide(p.Argument(1));
    return p.registry.count(path) == 0 ? kNotFound : open(p, path, p.Argument(4));
  });
  process.Provide("RegCloseKey", [keys](Process& p) {
    if (keys->erase(p.Argument(0)) == 0) Fail("RegCloseKey: %#x is no key", p.Argument(0));
    return kSuccess;
  });
  process.Provide("RegQueryValueExW", [keys](Process& p) {
    const auto& values = p.registry[keys->at(p.Argument(0))];
    const auto found = values.find(p.machine.Wide(p.Argument(1)));
    if (found == values.end()) return kNotFound;
    const auto& [type, bytes] = found->second;
    const uint32_t size = static_cast<uint32_t>(bytes.size());
    if (p.Argument(3) != 0) p.machine.SetWord(p.Argument(3), type);
    const uint32_t room = p.machine.Word(p.Argument(5));
    p.machine.SetWord(p.Argument(5), size);
    if (room < size) return kMoreData;
    memcpy(p.machine.At(p.Argument(4), size), bytes.data(), size);
    return kSuccess;
  });
  process.Provide("RegSetValueExW", [keys](Process& p) {
    if (p.Argument(3) != kRegDword || p.Argument(5) != 4) Fail("RegSetValueExW: not a number");
    p.registry[keys->at(p.Argument(0))][p.machine.Wide(p.Argument(1))] =
        p.machine.Word(p.Argument(4));
    return kSuccess;
  });
}

// The processor that the emulator is: StrongARM SA-1110. There is no COM on this machine.
void ProvidePlatform(Process& process) {
  process.Provide("GetSystemInfo", [](Process& p) {
    constexpr uint32_t kWords = 9, kTypeWord = 6, kLevelAndRevisionWord = 8;
    for (uint32_t i = 0; i < kWords; ++i) p.machine.SetWord(p.Argument(0) + 4 * i, 0);
    p.machine.SetWord(p.Argument(0) + 4 * kTypeWord, 2577);
    p.machine.SetWord(p.Argument(0) + 4 * kLevelAndRevisionWord, 4 | 5 << 16);
    return 0u;
  });
  process.Provide("CoInitializeEx", [](Process&) { return kNotImplemented; });
}

}  // namespace

Process::RegistryValue::RegistryValue(uint32_t number) : type(kRegDword), bytes(4) {
  memcpy(bytes.data(), &number, 4);
}

Process::RegistryValue::RegistryValue(const char16_t* text) : type(kRegText) {
  const std::u16string copy = text;
  bytes.resize(2 * (copy.size() + 1));
  memcpy(bytes.data(), copy.c_str(), bytes.size());
}

void ProvideSystem(Process& process) {
  ProvideResources(process);
  ProvideRegistry(process);
  ProvidePlatform(process);
  // One number for all threads: none is switched between a call and the question what failed.
  const auto last_error = std::make_shared<uint32_t>(0);
  process.Provide("SetLastError", [last_error](Process& p) { return *last_error = p.Argument(0); });
  process.Provide("GetLastError", [last_error](Process&) { return *last_error; });
  process.Provide("FreeLibrary", [](Process&) { return 1u; });
  process.Provide("PostMessageW", [](Process& p) {
    p.messages.push_back({p.Argument(0), p.Argument(1), p.Argument(2), p.Argument(3)});
    return 1u;
  });
}

}  // namespace bench
