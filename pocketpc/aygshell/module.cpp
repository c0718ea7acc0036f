#include "pocketpc/aygshell/menu_bar.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's

namespace kelvo {

HINSTANCE ThisModule() noexcept {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

}  // namespace kelvo
