#include "host/player/windows/gdi_text.h"

#include <algorithm>

namespace velmora {
namespace {

const wchar_t* Wide(std::u16string_view text) {
  return reinterpret_cast<const wchar_t*>(text.data());
}

COLORREF ToColorRef(Colour c) {
  return RGB(c >> 16 & 255, c >> 8 & 255, c & 255);
}

Rect Visible(const Canvas& canvas, Rect area) {
  const int right = std::min(area.right(), canvas.size().width);
  const int bottom = std::min(area.bottom(), canvas.size().height);
  area.x = std::max(area.x, 0);
  area.y = std::max(area.y, 0);
  return {area.x, area.y, right - area.x, bottom - area.y};
}

}  // namespace

GdiText::GdiText(const std::wstring& font, int height)
    : font_(CreateFontW(-height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                        OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                        DEFAULT_PITCH | FF_SWISS, font.c_str())),
      dc_(CreateCompatibleDC(nullptr)),
      old_font_(SelectObject(dc_, font_)) {
  SetBkMode(dc_, TRANSPARENT);
}

GdiText::~GdiText() {
  if (bitmap_) DeleteObject(SelectObject(dc_, old_bitmap_));
  SelectObject(dc_, old_font_);
  DeleteObject(font_);
  DeleteDC(dc_);
}

void GdiText::Reserve(Size size) {
  if (size.width <= size_.width && size.height <= size_.height) return;
  size_ = {std::max(size.width, size_.width), std::max(size.height, size_.height)};
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size_.width;
  info.bmiHeader.biHeight = -size_.height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ before = bitmap ? SelectObject(dc_, bitmap) : nullptr;
  if (!before) {
    size_ = {0, 0};
    return;
  }
  if (bitmap_) {
    DeleteObject(before);
  } else {
    old_bitmap_ = before;
  }
  bitmap_ = bitmap;
  pixels_ = static_cast<Colour*>(bits);
}

void GdiText::CopyIn(const Canvas& canvas, Rect area) {
  GdiFlush();
  for (int y = 0; y < area.height; ++y) {
    std::copy_n(canvas.picture().Row(area.y + y) + area.x, area.width, pixels_ + y * size_.width);
  }
}

void GdiText::CopyOut(Canvas* canvas, Rect area) {
  GdiFlush();
  for (int y = 0; y < area.height; ++y) {
    const Colour* from = pixels_ + y * size_.width;
    std::transform(from, from + area.width, canvas->picture().Row(area.y + y) + area.x,
                   [](Colour c) { return c & 0xFFFFFF; });
  }
}

int GdiText::Width(std::u16string_view text) {
  SIZE size = {};
  GetTextExtentPoint32W(dc_, Wide(text), static_cast<int>(text.size()), &size);
  return size.cx;
}

void GdiText::Draw(Canvas* canvas, Rect area, std::u16string_view text, Colour colour) {
  area = Visible(*canvas, area);
  if (area.empty() || text.empty()) return;
  Reserve({area.width, area.height});
  if (size_.width < area.width || size_.height < area.height) return;  // no memory: no text
  CopyIn(*canvas, area);
  SetTextColor(dc_, ToColorRef(colour));
  RECT place = {0, 0, area.width, area.height};
  DrawTextW(dc_, Wide(text), static_cast<int>(text.size()), &place,
            DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
  CopyOut(canvas, area);
}

}  // namespace velmora
