#include "base/windows/fonts.h"

#include "base/text/wide.h"

namespace kelvo {

UniqueFont MakeListFont() noexcept {
  LOGFONTW font = {};
  font.lfHeight = 12;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  CopyWide(font.lfFaceName, LF_FACESIZE, L"Tahoma");
  return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace kelvo
