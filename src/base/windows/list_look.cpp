#include "base/windows/list_look.h"

#include "base/text/wide.h"

namespace kelvo {

UniqueIconList LoadIconList(HMODULE module, const int* ids, int count) noexcept {
  constexpr int kSide = 16;
  // The default depth is 16 colours.
  UniqueIconList list(ImageList_Create(kSide, kSide, ILC_COLORDDB | ILC_MASK, count, 0));
  for (int i = 0; list && i < count; ++i) {
    const HICON icon = static_cast<HICON>(
        LoadImageW(module, MAKEINTRESOURCEW(ids[i]), IMAGE_ICON, kSide, kSide, 0));
    const bool added = icon && ImageList_ReplaceIcon(list.get(), -1, icon) == i;
    if (icon) DestroyIcon(icon);
    if (!added) list.Reset();
  }
  return list;
}

UniqueFont MakeListFont() noexcept {
  LOGFONTW font = {};
  font.lfHeight = 12;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  CopyWide(font.lfFaceName, LF_FACESIZE, L"Tahoma");
  return UniqueFont(CreateFontIndirectW(&font));
}

}  // namespace kelvo
