#pragma once

#include <windows.h>

#include <string>

#include "host/player/skin/canvas.h"
#include "host/player/skin/skin.h"

namespace velmora {

// Text in one of the system's fonts.
class GdiText final : public TextPainter {
 public:
  // `height` of a capital with its accents and descender, in pixels. An unknown font is replaced by
  // the system.
  GdiText(const std::wstring& font, int height);
  ~GdiText();
  GdiText(const GdiText&) = delete;
  GdiText& operator=(const GdiText&) = delete;

  int Width(std::u16string_view text) override;
  void Draw(Canvas* canvas, Rect area, std::u16string_view text, Colour colour) override;

 private:
  void Reserve(Size size);
  void CopyIn(const Canvas& canvas, Rect area);
  void CopyOut(Canvas* canvas, Rect area);

  HFONT font_;
  HDC dc_;
  HGDIOBJ old_font_;
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ old_bitmap_ = nullptr;
  Colour* pixels_ = nullptr;  // the bitmap's
  Size size_ = {0, 0};
};

// The song's text as a picture of one line for the main window: in the skin's letters, or in the
// system's when the skin lacks some. Text that is too wide for its place gets a gap behind it, so
// that it can scroll round.
Bitmap SongTextPicture(const Skin& skin, const std::wstring& text);

}  // namespace velmora
