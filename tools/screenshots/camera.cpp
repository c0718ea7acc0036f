#include "tools/screenshots/picture.h"

namespace screenshots {
namespace {

constexpr DWORD kStillMs = 120;  // unchanged for so long
constexpr int kTries = 25;

Picture Capture(const std::vector<RECT>& parts) {
  RECT all = {};
  for (const RECT& part : parts) UnionRect(&all, &all, &part);
  Picture picture;
  picture.width = all.right - all.left;
  picture.height = all.bottom - all.top;
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = picture.width;
  info.bmiHeader.biHeight = -picture.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  const RECT whole = {0, 0, picture.width, picture.height};
  FillRect(memory, &whole, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
  for (const RECT& part : parts) {
    BitBlt(memory, part.left - all.left, part.top - all.top, part.right - part.left,
           part.bottom - part.top, screen, part.left, part.top, SRCCOPY);
  }
  GdiFlush();
  const auto* pixels = static_cast<const uint32_t*>(bits);
  picture.pixels.assign(pixels, pixels + picture.width * picture.height);
  for (uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

}  // namespace

Picture Photograph(const std::vector<RECT>& parts) {
  Picture last = Capture(parts);
  for (int i = 0; i < kTries; ++i) {
    Sleep(kStillMs);
    Picture now = Capture(parts);
    if (now.pixels == last.pixels) break;
    last = std::move(now);
  }
  return last;
}

}  // namespace screenshots
