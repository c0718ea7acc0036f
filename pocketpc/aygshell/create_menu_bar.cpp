#include "base/windows/pocketpc.h"
#include "pocketpc/aygshell/menu_bar.h"

namespace kelvo {
namespace {

constexpr int kImageSide = 16;
constexpr COLORREF kTransparent = RGB(255, 0, 255);

bool LoadTable(HINSTANCE module, UINT id, MenuBarTable* out) noexcept {
  const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(10) /*RCDATA*/);
  const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
  const void* bytes = loaded ? LockResource(loaded) : nullptr;
  return bytes && ReadMenuBarTable(bytes, SizeofResource(module, found), out);
}

// Every popup that the table names must be there.
bool LoadPopups(HINSTANCE module, const MenuBarTable& table, UniqueMenu* out) noexcept {
  if (table.menu != 0) {
    UniqueMenu menu(LoadMenuW(module, MAKEINTRESOURCEW(table.menu)));
    if (!menu) return false;
    *out = std::move(menu);
  }
  for (size_t i = 0; i < table.count; ++i) {
    const MenuBarButton& button = table.buttons[i];
    if (button.HasPopup() && (!*out || !GetSubMenu(out->get(), button.popup))) return false;
  }
  return true;
}

// The whole strip, also beyond the number of images that the caller declared.
bool LoadImages(HINSTANCE module, int id, UniqueImageList* out) noexcept {
  const HBITMAP strip = static_cast<HBITMAP>(
      LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
  if (!strip) return false;
  UniqueImageList images(ImageList_Create(kImageSide, kImageSide, ILC_COLOR24 | ILC_MASK, 12, 4));
  const bool added = images && ImageList_AddMasked(images.get(), strip, kTransparent) >= 0;
  DeleteObject(strip);
  if (added) *out = std::move(images);
  return added;
}

bool IsId(UINT id) noexcept {
  return id != 0 && id <= 0xFFFF;
}

bool Load(const SHMENUBARINFO& info, MenuBarContent* out) noexcept {
  out->module = info.hInstRes;
  if (info.dwFlags & SHCMBF_EMPTYBAR) return true;
  if (!IsId(info.nToolBarId) || !LoadTable(info.hInstRes, info.nToolBarId, &out->table) ||
      !LoadPopups(info.hInstRes, out->table, &out->menu)) {
    return false;
  }
  if (info.nBmpId == 0) return true;
  return IsId(static_cast<UINT>(info.nBmpId)) &&
         LoadImages(info.hInstRes, info.nBmpId, &out->images);
}

}  // namespace
}  // namespace kelvo

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info) {
  if (!info || info->cbSize != sizeof(*info)) return FALSE;
  info->hwndMB = nullptr;
  if (!IsWindow(info->hwndParent)) return FALSE;
  kelvo::MenuBarContent content;
  if (!kelvo::Load(*info, &content)) return FALSE;
  info->hwndMB = kelvo::CreateMenuBarWindow(info->hwndParent, (info->dwFlags & SHCMBF_HIDDEN) != 0,
                                            std::move(content));
  return info->hwndMB != nullptr;
}

HWND WINAPI SHFindMenuBar(HWND parent) {
  return kelvo::FindMenuBarOf(parent);
}
