#include "pocketpc/aygshell/frame.h"

namespace kelvo {
namespace {

constexpr SIZE kDefaultScreen = {240, 320};
constexpr LONG kSmallestSide = 100;
constexpr LONG kLargestSide = 4096;

// Advances *at past the digits; 0 when the number is no side of a screen.
LONG TakeSide(const wchar_t** at) noexcept {
  LONG side = 0;
  for (; **at >= L'0' && **at <= L'9'; ++*at) {
    if (side <= kLargestSide) side = side * 10 + (**at - L'0');
  }
  return side >= kSmallestSide && side <= kLargestSide ? side : 0;
}

}  // namespace

SIZE ScreenSize() noexcept {
  wchar_t text[32];
  const DWORD length = GetEnvironmentVariableW(L"KELVO_SCREEN", text, ARRAYSIZE(text));
  if (length == 0 || length >= ARRAYSIZE(text)) return kDefaultScreen;
  const wchar_t* at = text;
  SIZE size;
  size.cx = TakeSide(&at);
  if (*at != L'x' && *at != L'X') return kDefaultScreen;
  ++at;
  size.cy = TakeSide(&at);
  return size.cx && size.cy && *at == L'\0' ? size : kDefaultScreen;
}

SIZE WorkAreaSize() noexcept {
  SIZE size = ScreenSize();
  size.cy -= kTopBarHeight + kMenuBarHeight;
  return size;
}

}  // namespace kelvo
