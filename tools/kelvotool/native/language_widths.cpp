#include "tools/kelvotool/language_lint.h"

namespace kelvo::tool {

bool MeasureLanguage(const PeResources&, const PeResources&, Findings*) noexcept {
  return false;
}

}  // namespace kelvo::tool
