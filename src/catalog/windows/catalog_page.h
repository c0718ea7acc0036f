#pragma once

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include "base/windows/dialog.h"
#include "base/windows/unique_handle.h"
#include "catalog/windows/catalog_feature.h"
#include "entry/language/modules.h"

namespace kelvo {

// The images of a check box, in lists and in the tree.
inline constexpr UINT kUncheckedImage = 1;
inline constexpr UINT kCheckedImage = 2;

// Of a tap that is being told of; on the screen.
inline POINT LastMessagePoint() noexcept {
  const DWORD at = GetMessagePos();
  return {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
}

// A control draws nothing while this lives, then all of itself once.
class RedrawPause {
 public:
  explicit RedrawPause(HWND control) noexcept : control_(control) {
    SendMessageW(control_, WM_SETREDRAW, FALSE, 0);
  }
  ~RedrawPause() {
    SendMessageW(control_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(control_, nullptr, TRUE);
  }
  RedrawPause(const RedrawPause&) = delete;
  RedrawPause& operator=(const RedrawPause&) = delete;

 private:
  HWND control_;
};

// One page of the sheet: a control that fills it above the row of tabs, and a menu bar. The object
// outlives the sheet.
class CatalogPage : public ModalDialog {
 public:
  // For the page's record in the sheet, with the object as its parameter.
  static INT_PTR CALLBACK PageProcedure(HWND window, UINT message, WPARAM wparam,
                                        LPARAM lparam) noexcept;

 protected:
  CatalogPage(CatalogState& state, CatalogSheetEvents& events, int control_id,
              UINT menu_bar_id) noexcept
      : state_(state), events_(events), control_id_(control_id), menu_bar_id_(menu_bar_id) {}
  ~CatalogPage() = default;

  virtual void OnPageInit() noexcept = 0;
  virtual LRESULT OnNotify(const NMHDR& header, LPARAM lparam) noexcept = 0;
  virtual void OnPageDestroy() noexcept {}
  virtual void OnPageSize() noexcept {}  // the control has got another size
  // Messages other than those that all pages handle.
  virtual bool OnPageMessage(UINT message, WPARAM wparam) noexcept {
    static_cast<void>(message);
    static_cast<void>(wparam);
    return false;
  }

  bool is_open() const noexcept { return window() != nullptr; }
  HWND view() const noexcept { return view_; }
  HWND menu_bar() const noexcept { return menu_bar_; }
  CatalogState& state() noexcept { return state_; }
  CatalogSheetEvents& events() noexcept { return events_; }
  void EnableButton(int command, bool enabled) noexcept;
  // Ends the sheet; for Done.
  void CloseSheet() noexcept;

 private:
  bool OnInit() noexcept final;
  void OnDestroy() noexcept final;
  Handled OnMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT* result) noexcept final;
  void LayOut() noexcept;

  CatalogState& state_;
  CatalogSheetEvents& events_;
  int control_id_;
  UINT menu_bar_id_;
  HWND view_ = nullptr;
  HWND menu_bar_ = nullptr;
  UniqueFont font_;
  LanguageHold menu_bar_language_;  // the bar reads its tips when they are wanted
};

}  // namespace kelvo
