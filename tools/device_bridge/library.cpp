#include "library.h"

#include <algorithm>

#include "device_functions.h"
#include "engine.h"
#include "faults.h"
#include "kelvo/features.h"

namespace bridge {
namespace {

// The published fields of an input plug-in, in words, and the slots of the longest table: a
// plug-in's.
constexpr int kOutput = 2, kReader = 3;
constexpr int kHostSlots = 18;

std::wstring FileBeside(HMODULE bridge) {
  wchar_t path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(bridge, path, MAX_PATH);
  std::wstring file(path, length);
  return file.substr(0, file.rfind(L'.')) + L"_arm.dll";
}

const Function* FindFunction(uint32_t rva) {
  const Function* const end = kFunctions + kFunctionCount;
  const Function* const found = std::lower_bound(
      kFunctions, end, rva,
      [](const Function& function, uint32_t wanted) { return function.rva < wanted; });
  return found != end && found->rva == rva ? found : nullptr;
}

// The address of an imported function is that of a jump through its slot
// (tools/device/import_stubs.py). Who hands it out means the function.
uint32_t Imported(uint32_t address) {
  constexpr uint32_t kLoadSlot = 0xE59FC000, kJump = 0xE59CF000;
  const auto* code = reinterpret_cast<const uint32_t*>(address);
  const bool jump = address % 4 == 0 && code[0] == kLoadSlot && code[1] == kJump;
  return jump ? *reinterpret_cast<const uint32_t*>(code[2]) : address;
}

}  // namespace

Library* g_library = nullptr;

Library::Library(HMODULE bridge) : image(FileBeside(bridge)) {
  for (const ArmImage::Import& import : image.Imports()) {
    *import.slot = imports.Resolve(import.library, import.name);
  }
  image.Relocate([this](uint32_t address) {
    const Function* function = FindFunction(address - image.base());
    if (function) return stubs.Add({address, function->words, function->convention});
    return image.IsCode(address) ? Imported(address) : address;
  });
  ShowResources(bridge, image);
  image.Protect();
}

void* Library::GetFeature(int32_t id) {
  const uint32_t function = image.Export("GetFeature"), word = static_cast<uint32_t>(id);
  const uint32_t feature = static_cast<uint32_t>(CurrentEngine().Call(function, &word, 1));
  if (feature != 0 && id > 0 && id < kIds && id != kelvo::kFeatureVersionText)
    features_[id] = feature;
  return reinterpret_cast<void*>(feature);
}

bool Library::IsHostMethod(uint32_t target, uint32_t object) const {
  if (object == 0) return false;
  bool known = false;
  for (const uint32_t feature : features_) known = known || feature == object;
  if (const auto* plugin = reinterpret_cast<const uint32_t*>(features_[kelvo::kFeatureOggVorbis])) {
    known = known || object == plugin[kOutput] || object == plugin[kReader];
  }
  if (!known) return false;
  const uint32_t* const slots = *reinterpret_cast<const uint32_t* const*>(object);
  for (int i = 0; i < kHostSlots; ++i) {
    if (slots[i] == target) return true;
  }
  return false;
}

}  // namespace bridge
