#include "pocketpc/aygshell/frame.h"

namespace kelvo {
namespace {

constexpr LONG kMissing = 3;  // pixels, more than are ever cut off

void DrawEnd(HWND tree, const NMTVCUSTOMDRAW& draw) noexcept {
  if ((draw.nmcd.uItemState & CDIS_SELECTED) != 0 && GetFocus() == tree)
    return;  // a box ends there
  wchar_t label[MAX_PATH] = L"";
  TVITEMW item = {};
  item.mask = TVIF_TEXT;
  item.hItem = reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec);
  item.pszText = label;
  item.cchTextMax = MAX_PATH;
  RECT place = {};
  if (!SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) ||
      !TreeView_GetItemRect(tree, item.hItem, &place, TRUE)) {
    return;
  }
  const HDC dc = draw.nmcd.hdc;
  const int saved = SaveDC(dc);
  SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(tree, WM_GETFONT, 0, 0)));
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  SetBkMode(dc, TRANSPARENT);
  IntersectClipRect(dc, place.right, place.top, place.right + kMissing, place.bottom);
  RECT text = {place.left + 2, place.top, place.right + kMissing, place.bottom};
  DrawTextW(dc, label, -1, &text, DT_SINGLELINE | DT_NOPREFIX | DT_VCENTER);
  RestoreDC(dc, saved);
}

}  // namespace

LRESULT OnTreeDraws(const NMTVCUSTOMDRAW& draw) noexcept {
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      return CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPOSTPAINT:
      DrawEnd(draw.nmcd.hdr.hwndFrom, draw);
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

}  // namespace kelvo
