#include "catalog/windows/catalog_sheet.h"

#include <stddef.h>

#include "base/windows/platform.h"
#include "catalog/lists/device_lists.h"
#include "catalog/windows/catalog_dialogs.h"
#include "catalog/windows/scan_watch.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

constexpr int kTitleCapacity = 65;
constexpr int kTabsId = 0x3020;  // of the tab control in every property sheet

// The device asks for the version of the common controls that the sheet is made for.
constexpr UINT kAskVersion = 3;
constexpr int kControlsVersion = 0x20C;

// The first form of the sheet's records, the only one that the device knows. The pages lie one
// behind the other in this size.
using PageRecord = PROPSHEETPAGEW_V1;
constexpr DWORD kHeaderBytes =
    offsetof(PROPSHEETHEADERW, pfnCallback) + sizeof(PROPSHEETHEADERW::pfnCallback);
static_assert(sizeof(void*) != 4 || (sizeof(PageRecord) == 40 && kHeaderBytes == 40));

int CALLBACK SheetCallback(HWND sheet, UINT message, LPARAM) noexcept {
  if (message == PSCB_INITIALIZED) {
    const HWND tabs = GetDlgItem(sheet, kTabsId);
    SetWindowLongW(tabs, GWL_STYLE, GetWindowLongW(tabs, GWL_STYLE) | TCS_BOTTOM);
  }
  return message == kAskVersion ? kControlsVersion : 0;
}

}  // namespace

bool CatalogSheet::Run() noexcept {
  const LanguageHold hold;  // pages are made of their templates when they are first shown
  struct Page {
    UINT dialog;
    UINT title;
    CatalogPage* page;
  };
  const Page kPages[] = {{IDD_PLAYLISTS, IDS_PLAYLISTS_TITLE, &playlists_},
                         {IDD_MEDIA, IDS_MEDIA_TITLE, &media_},
                         {IDD_CURRENT, IDS_CURRENT_TITLE, &current_}};
  constexpr UINT kCount = 3;
  PageRecord pages[kCount] = {};
  wchar_t titles[kCount][kTitleCapacity];
  for (UINT i = 0; i < kCount; ++i) {
    const wchar_t* name = MAKEINTRESOURCEW(kPages[i].dialog);
    LoadLocalizedString(OwnModule(), kPages[i].title, titles[i], kTitleCapacity);
    pages[i].dwSize = sizeof(pages[i]);
    pages[i].dwFlags = PSP_USETITLE;
    pages[i].hInstance = ModuleWithDialog(OwnModule(), name);
    pages[i].pszTemplate = name;
    pages[i].pszTitle = titles[i];
    pages[i].pfnDlgProc = &CatalogPage::PageProcedure;
    pages[i].lParam = kPages[i].page->parameter();
  }
  wchar_t caption[kTitleCapacity];
  LoadLocalizedString(OwnModule(), IDS_CATALOG_CAPTION, caption, kTitleCapacity);
  PROPSHEETHEADERW header = {};
  header.dwSize = kHeaderBytes;
  header.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | MaximizedSheetFlag();
  header.hwndParent = state_.parent;
  header.hInstance = OwnModule();
  header.pszCaption = caption;
  header.nPages = kCount;
  header.ppsp = reinterpret_cast<const PROPSHEETPAGEW*>(pages);
  header.pfnCallback = &SheetCallback;
  state_.closing = false;
  return PropertySheetW(&header) != -1;
}

void CatalogSheet::Rescan(HWND page) noexcept {
  if (state_.scanning) return;
  const WaitCursor wait;
  state_.scanning = true;
  state_.playlists.Clear();
  state_.media.Clear();
  {
    ScanWatch watch(page, wait, state_.closing);
    ScanFolder(state_.files, state_.information, L"", {&state_.media, &state_.playlists}, watch);
  }
  state_.scanning = false;
  if (state_.closing) return;
  playlists_.Fill();
  media_.RebuildTree();
}

void CatalogSheet::CurrentPlaylistChanged() noexcept {
  current_.Fill();
}

}  // namespace kelvo
