#include "library.h"

#include <algorithm>

#include "engine.h"
#include "fail.h"
#include "kelvo/features.h"
#include "resources.h"

namespace bridge {
namespace {

// The published fields of an input plug-in, in words, and the slots of an output, which has more
// than a reader.
constexpr int kOutput = 2, kReader = 3;
constexpr int kHostSlots = 14;

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

}  // namespace

Library* g_library = nullptr;

Library::Library(HMODULE bridge) : image(FileBeside(bridge)) {
  image.Relocate([this](uint32_t address) {
    const Function* function = FindFunction(address - image.base());
    return function ? stubs.Add({address, function->words, function->convention}) : address;
  });
  for (const ArmImage::Import& import : image.Imports()) {
    *import.slot = imports.Resolve(import.library, import.name);
  }
  ShowResources(bridge, image);
  image.Protect();
}

void* Library::GetFeature(int32_t id) {
  const uint32_t function = image.Export("GetFeature"), word = static_cast<uint32_t>(id);
  const uint32_t feature = static_cast<uint32_t>(CurrentEngine().Call(function, &word, 1));
  if (id == kelvo::kFeatureOggVorbis) ogg_vorbis_ = reinterpret_cast<const uint32_t*>(feature);
  return reinterpret_cast<void*>(feature);
}

bool Library::IsHostMethod(uint32_t target, uint32_t object) const {
  if (!ogg_vorbis_ || object == 0 ||
      (object != ogg_vorbis_[kOutput] && object != ogg_vorbis_[kReader])) {
    return false;
  }
  const uint32_t* const slots = *reinterpret_cast<const uint32_t* const*>(object);
  for (int i = 0; i < kHostSlots; ++i) {
    if (slots[i] == target) return true;
  }
  return false;
}

}  // namespace bridge
