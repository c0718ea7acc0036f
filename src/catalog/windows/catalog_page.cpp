#include "catalog/windows/catalog_page.h"

#include "base/windows/feature_dialog.h"
#include "base/windows/resources.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

constexpr int kTabRowHeight = 21;  // pixels; the tabs lie on the page
constexpr int kImagesARow = 5;

HWND CreateBar(HWND page, UINT id) noexcept {
  SHMENUBARINFO info = {};
  info.cbSize = sizeof(info);
  info.hwndParent = page;
  info.nToolBarId = id;
  info.hInstRes = OwnModule();
  info.nBmpId = IDB_MENU_BAR;
  info.cBmpImages = kImagesARow;
  return CreateLocalizedMenuBar(&info) ? info.hwndMB : nullptr;
}

}  // namespace

INT_PTR CALLBACK CatalogPage::PageProcedure(HWND window, UINT message, WPARAM wparam,
                                            LPARAM lparam) noexcept {
  if (message == WM_INITDIALOG) lparam = reinterpret_cast<const PROPSHEETPAGEW_V1*>(lparam)->lParam;
  return Procedure(window, message, wparam, lparam);
}

bool CatalogPage::OnInit() noexcept {
  MakeFullScreen(window(), SHIDIF_SIPDOWN);
  view_ = control(control_id_);
  font_ = MakeListFont();
  SendMessageW(view_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  LayOut();
  menu_bar_language_ = LanguageHold();
  menu_bar_ = CreateBar(window(), menu_bar_id_);
  OnPageInit();
  return true;
}

void CatalogPage::OnDestroy() noexcept {
  OnPageDestroy();
  view_ = nullptr;
  menu_bar_ = nullptr;
}

void CatalogPage::LayOut() noexcept {
  RECT client;
  GetClientRect(window(), &client);
  const int height = client.bottom > kTabRowHeight ? client.bottom - kTabRowHeight : 0;
  MoveWindow(view_, 0, 0, client.right, height, TRUE);
}

ModalDialog::Handled CatalogPage::OnMessage(UINT message, WPARAM wparam, LPARAM lparam,
                                            LRESULT* result) noexcept {
  switch (message) {
    case WM_SIZE:
      LayOut();
      OnPageSize();
      return Handled::kNo;
    case WM_NOTIFY: {
      const NMHDR& header = *reinterpret_cast<const NMHDR*>(lparam);
      if (header.code == static_cast<UINT>(PSN_SETACTIVE)) {
        if (menu_bar_) ShowWindow(menu_bar_, SW_SHOW);
        return Handled::kNo;
      }
      *result = OnNotify(header, lparam);
      return *result != 0 ? Handled::kYes : Handled::kNo;
    }
    default:
      return OnPageMessage(message, wparam) ? Handled::kYes : Handled::kNo;
  }
}

void CatalogPage::EnableButton(int command, bool enabled) noexcept {
  if (!menu_bar_) return;
  SendMessageW(menu_bar_, TB_ENABLEBUTTON, static_cast<WPARAM>(command), MAKELONG(enabled, 0));
}

void CatalogPage::CloseSheet() noexcept {
  state().closing = true;
  PostMessageW(GetParent(window()), PSM_PRESSBUTTON, PSBTN_OK, 0);
}

}  // namespace kelvo
