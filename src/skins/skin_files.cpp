#include "skins/skin_files.h"

namespace kelvo {

const char* SkinFileName(int32_t number) noexcept {
  static constexpr const char* kNames[kSkinFileCount] = {
      "balance.bmp", "cbuttons.bmp", "eq_ex.bmp",    "eqmain.bmp",   "main.bmp",   "monoster.bmp",
      "numbers.bmp", "nums_ex.bmp",  "playpaus.bmp", "pledit.bmp",   "pledit.txt", "posbar.bmp",
      "shufrep.bmp", "text.bmp",     "titlebar.bmp", "viscolor.txt", "volume.bmp"};
  return number >= 1 && number <= kSkinFileCount ? kNames[number - 1] : nullptr;
}

}  // namespace kelvo
