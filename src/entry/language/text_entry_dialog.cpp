#include "entry/language/text_entry_dialog.h"

#include "base/memory/heap.h"
#include "entry/language/localized.h"
#include "res/resource_ids.h"

namespace kelvo {

// Outside the dialog object, whose layout is fixed.
class TextEntryDialog::Window final : public ModalDialog {
 public:
  Window(TextEntryDialog& entry, Replaced replaced) noexcept : entry_(entry), replaced_(replaced) {}

 private:
  bool OnInit() noexcept override {
    const HWND edit = control(IDC_TEXT_ENTRY);
    SendMessageW(edit, EM_LIMITTEXT, kTextCapacity - 1, 0);
    SetWindowTextW(edit, entry_.text_);
    SipShowIM(SIPF_ON);
    SetFocus(edit);
    const wchar_t* const point =
        replaced_ == Replaced::kBeforeExtension ? FindLastWide(entry_.text_, L'.') : nullptr;
    SendMessageW(edit, EM_SETSEL, 0, point ? point - entry_.text_ : -1);
    return false;
  }

  Handled OnCommand(int id, int) noexcept override {
    switch (id) {
      case IDOK:
        GetWindowTextW(control(IDC_TEXT_ENTRY), entry_.text_, kTextCapacity);
        if (entry_.text_[0] != 0) {
          entry_.cancelled_ = 0;
          Close(IDOK);
        }
        return Handled::kYes;
      case IDCANCEL:
        entry_.cancelled_ = 1;
        Close(IDCANCEL);
        return Handled::kYes;
      default:
        return Handled::kNo;
    }
  }

  void OnDestroy() noexcept override { SipShowIM(SIPF_OFF); }

  TextEntryDialog& entry_;
  Replaced replaced_;
};

void TextEntryDialog::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) HeapDelete(this);
}

bool TextEntryDialog::Run(HWND parent, Replaced replaced) noexcept {
  cancelled_ = 1;
  Window window(*this, replaced);
  RunDialog(window, IDD_TEXT_ENTRY, parent);
  return cancelled_ == 0;
}

}  // namespace kelvo
