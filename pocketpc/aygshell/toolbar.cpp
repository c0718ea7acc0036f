#include "pocketpc/aygshell/menu_bar.h"

#include "pocketpc/aygshell/frame.h"

namespace kelvo {
namespace {

constexpr int kButtonWidth = 23;
constexpr int kEdge = 2;
constexpr int kButtonHeight = kMenuBarHeight - kEdge;
constexpr int kImageSide = 16;
constexpr size_t kLabelRoom = 64;

bool AddButton(HWND toolbar, const MenuBarContent& content, const MenuBarButton& button) noexcept {
  wchar_t label[kLabelRoom];
  TBBUTTON item = {};
  item.iBitmap = button.HasImage() ? button.image : I_IMAGENONE;
  item.idCommand = button.command;
  item.fsState = button.state;
  item.fsStyle = button.style;
  const bool separator = (button.style & BTNS_SEP) != 0;
  if (!separator && !button.HasImage()) {
    item.fsStyle |= BTNS_AUTOSIZE;
    if (LoadStringW(content.module, button.text, label, ARRAYSIZE(label)) > 0) {
      item.iString = reinterpret_cast<INT_PTR>(label);
    }
  } else if (!separator && button.image >= ImageList_GetImageCount(content.images.get())) {
    item.iBitmap = I_IMAGENONE;  // a blank button rather than whatever lies beyond the strip
  }
  return SendMessageW(toolbar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&item)) != FALSE;
}

}  // namespace

HFONT MakeToolbarFont() noexcept {
  LOGFONTW font = {};
  font.lfHeight = -11;
  font.lfWeight = FW_BOLD;
  lstrcpynW(font.lfFaceName, L"Tahoma", ARRAYSIZE(font.lfFaceName));
  return CreateFontIndirectW(&font);
}

HWND CreateToolbar(HWND bar, const MenuBarContent& content, HFONT font) noexcept {
  INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST |
                           TBSTYLE_TOOLTIPS | CCS_NORESIZE | CCS_NODIVIDER | CCS_NOPARENTALIGN;
  const HWND toolbar = CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr, kStyle, 0, 0, 0, 0, bar,
                                       nullptr, ThisModule(), nullptr);
  if (!toolbar) return nullptr;
  SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(toolbar, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageW(toolbar, TB_SETBITMAPSIZE, 0, MAKELPARAM(kImageSide, kImageSide));
  SendMessageW(toolbar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(content.images.get()));
  for (size_t i = 0; i < content.table.count; ++i) {
    if (!AddButton(toolbar, content, content.table.buttons[i])) {
      DestroyWindow(toolbar);
      return nullptr;
    }
  }
  SendMessageW(toolbar, TB_SETBUTTONSIZE, 0, MAKELPARAM(kButtonWidth, kButtonHeight));
  PlaceToolbar(toolbar);
  return toolbar;
}

void PlaceToolbar(HWND toolbar) noexcept {
  RECT room;
  GetClientRect(GetParent(toolbar), &room);
  MoveWindow(toolbar, kEdge, 0, room.right - 2 * kEdge, room.bottom - kEdge, TRUE);
}

}  // namespace kelvo
