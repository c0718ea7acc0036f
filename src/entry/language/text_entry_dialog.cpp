#include "entry/language/text_entry_dialog.h"

#include "base/memory/heap.h"
#include "entry/language/localized.h"
#include "res/resource_ids.h"

namespace kelvo {

// Outside the dialog object, whose layout is fixed.
class TextEntryDialog::Window final : public ModalDialog {
 public:
  explicit Window(TextEntryDialog& entry) noexcept : entry_(entry) {}

 private:
  bool OnInit() noexcept override {
    const HWND edit = control(IDC_TEXT_ENTRY);
    SendMessageW(edit, EM_LIMITTEXT, kTextCapacity - 1, 0);
    SetWindowTextW(edit, entry_.text_);
    SipShowIM(SIPF_ON);
    SetFocus(edit);
    SendMessageW(edit, EM_SETSEL, 0, -1);  // typing replaces what is offered
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
};

void TextEntryDialog::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) HeapDelete(this);
}

bool TextEntryDialog::Run(HWND parent) noexcept {
  cancelled_ = 1;
  Window window(*this);
  RunDialog(window, IDD_TEXT_ENTRY, parent);
  return cancelled_ == 0;
}

}  // namespace kelvo
