#include "host/player/windows/tips.h"

#include <commctrl.h>

#include "host/texts.h"

namespace velmora {

void Tips::Show(HWND window, const std::vector<Tip>& tips, int scale) {
  if (!tips_) {
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX, 0, 0,
                            0, 0, window, nullptr, nullptr, nullptr);
  }
  TTTOOLINFOW tool = {};
  tool.cbSize = TTTOOLINFOW_V2_SIZE;
  tool.uFlags = TTF_SUBCLASS;
  tool.hwnd = window;
  for (; count_ > 0; --count_) {
    tool.uId = count_;
    SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
  for (const Tip& tip : tips) {
    std::wstring text = Text(tip.text);
    const Rect& place = tip.place;
    tool.uId = ++count_;
    tool.rect = {place.x * scale, place.y * scale, place.right() * scale, place.bottom() * scale};
    tool.lpszText = text.data();
    SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

void Tips::Forget() {
  if (tips_) DestroyWindow(tips_);
  tips_ = nullptr;
  count_ = 0;
}

}  // namespace velmora
