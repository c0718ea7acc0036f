#include "tests/languages/lint/dialog_view.h"

#include <commctrl.h>

#include "base/windows/unique_handle.h"
#include "tests/languages/lint/mnemonics.h"
#include "tests/languages/lint/resource_set.h"

namespace kelvo::test {
namespace {

class MeasuringDc {
 public:
  explicit MeasuringDc(HFONT font) : dc_(CreateCompatibleDC(nullptr)) {
    before_ = SelectObject(dc_, font);
    GetTextMetricsW(dc_, &metrics_);
  }
  ~MeasuringDc() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
  }
  int height() const { return metrics_.tmHeight; }

  // Ideographs and kana are as wide as the font is high, in every font that has them; the one here
  // may not, and would measure its substitute.
  int Width(const std::wstring& text) const {
    int width = 0;
    std::wstring run;
    for (const wchar_t c : text) {
      if (c >= 0x2E80) {
        width += metrics_.tmHeight - metrics_.tmInternalLeading;
      } else {
        run += c;
      }
    }
    SIZE size = {};
    GetTextExtentPoint32W(dc_, run.c_str(), static_cast<int>(run.size()), &size);
    return width + size.cx;
  }

 private:
  HDC dc_;
  HGDIOBJ before_;
  TEXTMETRICW metrics_ = {};
};

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
  if (!text.empty()) GetWindowTextW(window, &text[0], static_cast<int>(text.size() + 1));
  return text;
}

// What a control draws around its text.
SIZE Surroundings(const std::wstring& kind) {
  if (kind == L"Static") return {0, 0};
  if (kind == L"Button" || kind == L"Button default") return {8, 6};  // edges, and some air
  return {18, 0};                                                     // a check box and a gap
}

ControlView ViewControl(HWND dialog, HWND window) {
  ControlView view = {};
  wchar_t kind[64] = L"";
  GetClassNameW(window, kind, 64);
  view.id = static_cast<short>(GetDlgCtrlID(window));
  view.kind = kind;
  view.text = TextOf(window);
  GetWindowRect(window, &view.place);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&view.place), 2);
  const DWORD style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
  if (view.kind == L"Button") {
    const DWORD type = style & BS_TYPEMASK;
    if (type == BS_DEFPUSHBUTTON) view.kind += L" default";
    if (type > BS_DEFPUSHBUTTON) view.kind += L" type " + std::to_wstring(type);
  }
  const bool shows_text = view.kind == L"Static" || view.kind.rfind(L"Button", 0) == 0;
  if (!shows_text || view.text.empty()) return view;
  const bool has_mnemonic = view.kind != L"Static" || !(style & SS_NOPREFIX);
  const MeasuringDc dc(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  const SIZE around = Surroundings(view.kind);
  view.needs_width = around.cx + dc.Width(has_mnemonic ? WithoutMnemonic(view.text) : view.text);
  view.needs_height = around.cy + dc.height();
  return view;
}

INT_PTR CALLBACK DoNothing(HWND, UINT, WPARAM, LPARAM) {
  return FALSE;
}

}  // namespace

bool ViewDialog(HMODULE module, UINT id, DialogView* out) {
  std::string bytes = ResourceBytes(module, id, RT_DIALOG);
  if (bytes.size() < sizeof(DLGTEMPLATE)) return false;
  auto* header = reinterpret_cast<DLGTEMPLATE*>(&bytes[0]);
  out->extended = header->style == 0xFFFF0001;  // reads as the start of an extended template
  if (out->extended) return true;
  header->style &= ~static_cast<DWORD>(WS_VISIBLE);
  out->is_page = (header->style & WS_CHILD) != 0;

  const INITCOMMONCONTROLSEX classes = {sizeof(classes),
                                        ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  const HWND parent = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 240, 320, nullptr,
                                      nullptr, nullptr, nullptr);
  const HWND dialog = CreateDialogIndirectParamW(module, header, parent, DoNothing, 0);
  if (dialog) {
    out->caption = TextOf(dialog);
    RECT client = {};
    GetClientRect(dialog, &client);
    out->client = {client.right, client.bottom};
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
      out->controls.push_back(ViewControl(dialog, child));
      out->has_edit |= out->controls.back().kind == L"Edit";
    }
    DestroyWindow(dialog);
  }
  DestroyWindow(parent);
  return dialog != nullptr;
}

int TextWidth(const std::wstring& text, bool bold) {
  LOGFONTW font = {};
  font.lfHeight = -11;
  font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  lstrcpynW(font.lfFaceName, L"Tahoma", LF_FACESIZE);
  const UniqueFont made(CreateFontIndirectW(&font));
  return MeasuringDc(made.get()).Width(text);
}

}  // namespace kelvo::test
