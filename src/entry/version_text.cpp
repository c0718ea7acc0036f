#include "entry/version_text.h"

#include "base/text/format.h"
#include "base/windows/resources.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

constexpr int32_t kMajor = 2;
constexpr int32_t kMinor = 51;
constexpr int kCapacity = 256;

wchar_t g_version_text[kCapacity];

}  // namespace

const wchar_t* VersionText() noexcept {
  wchar_t format[kCapacity];
  LoadLocalizedString(OwnModule(), IDS_VERSION, format, kCapacity);
  if (!FormatWide(g_version_text, kCapacity, format, {kMajor, kMinor})) {
    // A translation that does not ask for exactly these two numbers.
    const wchar_t* built_in = FindStringResource(OwnModule(), IDS_VERSION, nullptr);
    FormatWide(g_version_text, kCapacity, built_in ? built_in : L"", {kMajor, kMinor});
  }
  return g_version_text;
}

}  // namespace kelvo
