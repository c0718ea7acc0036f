// Every text has room where it is shown: measured in the dialogs themselves, in the device's font
// and on its screen.
#include <windows.h>

#include <commctrl.h>

#include "base/text/format.h"
#include "base/text/wide.h"
#include "base/windows/unique_handle.h"
#include "res/resource_ids.h"
#include "tools/kelvotool/language_lint.h"

namespace kelvo::tool {
namespace {

// The screen is 240 by 320 pixels; its top bar and the menu bar have 26 each, the input panel 80.
constexpr LONG kScreen = 240;
constexpr LONG kHeightWithoutPanel = 268;
constexpr LONG kHeightAbovePanel = 188;
// Beside a caption: the start button and the Done button. Beside a menu item: its check mark and
// the arrow of a popup. Beside a menu bar's labels: the button of the input panel.
constexpr int kCaption = kScreen - 2 * 26;
constexpr int kMenuItem = kScreen - 40;
constexpr int kLabels = kScreen - 36;
constexpr int kLabelEdges = 12;
constexpr int kTip = kScreen - 8;
constexpr int kTabEdges = 6;
constexpr int kColumnEdges = 12;
// A button has edges, and some air.
constexpr int kButtonEdges = 8;
constexpr int kButtonRims = 6;

// Texts that are shown elsewhere than in their own dialog or menu.
constexpr struct {
  uint16_t id;
  int room;
  bool is_bold;
} kRooms[] = {
    {IDS_TITLE, 150 - kColumnEdges, false},        {IDS_COLUMN_ARTIST, 60 - kColumnEdges, false},
    {IDS_COLUMN_ALBUM, 150 - kColumnEdges, false}, {IDS_COLUMN_GENRE, 80 - kColumnEdges, false},
    {IDS_TIME, 45 - kColumnEdges, false},          {IDS_CATALOG_CAPTION, kCaption, true},
    {IDS_DELETE_CAPTION, kCaption, true},          {IDS_FILE_EXISTS, kCaption, true},
    {IDS_RENAME_FILE, kMenuItem, false},           {IDS_DELETE_ITEM, kMenuItem, false},
};
// The line that is shown while the device is scanned, which has a border, with its number.
constexpr int kScanLine = kScreen - 2;
constexpr int kMostFiles = 999999;
constexpr uint16_t kTabs[] = {IDS_MEDIA_TITLE, IDS_PLAYLISTS_TITLE, IDS_CURRENT_TITLE};

class Ruler {
 public:
  explicit Ruler(HFONT font) noexcept
      : dc_(CreateCompatibleDC(nullptr)), before_(SelectObject(dc_, font)) {
    GetTextMetricsW(dc_, &metrics_);
  }
  Ruler(const Ruler&) = delete;
  Ruler& operator=(const Ruler&) = delete;
  ~Ruler() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
  }
  int height() const noexcept { return metrics_.tmHeight; }

  // Ideographs and kana are as wide as the font is high, in every font that has them; the one here
  // may not, and would measure its substitute. The mark of a mnemonic is not drawn.
  int Width(const wchar_t* text, bool has_mnemonic = true) const noexcept {
    int width = 0, length = 0;
    wchar_t run[kLongestStoredText];
    for (; *text != 0; ++text) {
      if (*text >= 0x2E80) {
        width += metrics_.tmHeight - metrics_.tmInternalLeading;
      } else if (*text != L'&' || !has_mnemonic) {
        run[length++] = *text;
      }
    }
    SIZE size = {};
    GetTextExtentPoint32W(dc_, run, length, &size);
    return width + size.cx;
  }

 private:
  HDC dc_;
  HGDIOBJ before_;
  TEXTMETRICW metrics_ = {};
};

HFONT Tahoma(bool bold) noexcept {
  return CreateFontW(-11, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                     L"Tahoma");
}

class Measuring {
 public:
  Measuring(const PeResources& built_in, const PeResources& language, Findings* findings) noexcept
      : built_in_(built_in), language_(language), findings_(*findings) {}
  void Run() noexcept;

 private:
  // Empty where the language has no such string: the finding is another one.
  const wchar_t* Text(uint16_t id) noexcept {
    StoredText stored;
    text_[0] = 0;
    if (language_.FindString(id, &stored)) CopyStored(stored, text_);
    return text_;
  }
  void Fit(const char* kind, int id, const wchar_t* text, int width, int room) noexcept {
    if (width > room) findings_.AddWidth(kind, id, text, width, room);
  }
  void MeasureTip(uint16_t id) noexcept {
    if (!IsTip(built_in_, id)) return;
    const wchar_t* const text = Text(id);
    Fit("string", id, text, plain_.Width(text), kTip);
  }
  void MeasureBar(uint16_t id) noexcept;
  void MeasureMenu(uint16_t id, HMENU menu) noexcept;
  void MeasureDialog(uint16_t id) noexcept;
  void MeasureControl(uint16_t id, HWND dialog, HWND control) noexcept;

  const PeResources& built_in_;
  const PeResources& language_;
  Findings& findings_;
  wchar_t text_[kLongestStoredText];
  const UniqueFont plain_font_{Tahoma(false)};
  const UniqueFont bold_font_{Tahoma(true)};
  const Ruler plain_{plain_font_.get()};
  const Ruler bold_{bold_font_.get()};
};

void Measuring::Run() noexcept {
  for (const auto& room : kRooms) {
    const wchar_t* const text = Text(room.id);
    Fit("string", room.id, text, (room.is_bold ? bold_ : plain_).Width(text), room.room);
  }
  wchar_t scanning[kLongestStoredText];
  if (FormatWide(scanning, kLongestStoredText, Text(IDS_SCANNING), {kMostFiles})) {
    Fit("string", IDS_SCANNING, scanning, plain_.Width(scanning), kScanLine);
  }
  int tabs = 0;
  for (const uint16_t id : kTabs) tabs += kTabEdges + plain_.Width(Text(id));
  Fit("string", kTabs[0], L"the catalog's tabs", tabs, kScreen);
  uint16_t id;
  for (size_t i = 0; built_in_.IdAt(ResourceKind::kStrings, i, &id); ++i) {
    for (int k = 0; k < 16; ++k) MeasureTip(static_cast<uint16_t>((id - 1) * 16 + k));
  }
  for (size_t i = 0; built_in_.IdAt(ResourceKind::kMenu, i, &id); ++i) MeasureBar(id);
  for (size_t i = 0; built_in_.IdAt(ResourceKind::kDialog, i, &id); ++i) MeasureDialog(id);
}

void Measuring::MeasureMenu(uint16_t id, HMENU menu) noexcept {
  for (int i = 0, count = GetMenuItemCount(menu); i < count; ++i) {
    wchar_t text[256] = L"";
    GetMenuStringW(menu, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
    Fit("menu", id, text, plain_.Width(text), kMenuItem);
    if (const HMENU popup = GetSubMenu(menu, i)) MeasureMenu(id, popup);
  }
}

void Measuring::MeasureBar(uint16_t id) noexcept {
  ResourceBytes own, bytes, table;
  // What is not used is not shown, and a template that is cut is nothing for the system to read.
  if (!built_in_.Find(ResourceKind::kMenu, id, &own) ||
      !language_.Find(ResourceKind::kMenu, id, &bytes) ||
      !HasAllOf(MenuItems(own.bytes, own.size), MenuItems(bytes.bytes, bytes.size))) {
    return;
  }
  if (const HMENU menu = LoadMenuIndirectW(bytes.bytes)) {
    MeasureMenu(id, menu);
    DestroyMenu(menu);
  }
  if (!language_.Find(ResourceKind::kData, id, &table)) return;
  int labels = 0;
  MenuBarButtons buttons(table);
  for (MenuBarButton button; buttons.Next(&button);) {
    if (button.is_label) labels += kLabelEdges + bold_.Width(Text(button.text));
  }
  Fit("menu", id, L"the labels of its bar", labels, kLabels);
}

void Measuring::MeasureControl(uint16_t id, HWND dialog, HWND control) noexcept {
  wchar_t kind[64] = L"", text[256] = L"";
  GetClassNameW(control, kind, 64);
  GetWindowTextW(control, text, 256);
  const bool is_label = lstrcmpiW(kind, L"Static") == 0;
  if (text[0] == 0 || (!is_label && lstrcmpiW(kind, L"Button") != 0)) return;
  RECT place = {};
  GetWindowRect(control, &place);
  const LONG style = GetWindowLongW(control, GWL_STYLE);
  const Ruler ruler(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
  Fit("dialog", id, text,
      ruler.Width(text, !is_label || !(style & SS_NOPREFIX)) + (is_label ? 0 : kButtonEdges),
      place.right - place.left);
  Fit("dialog", id, text, ruler.height() + (is_label ? 0 : kButtonRims), place.bottom - place.top);
  RECT client = {}, common;
  GetClientRect(dialog, &client);
  MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
  if (!IntersectRect(&common, &place, &client) || !EqualRect(&common, &place)) {
    findings_.Add("dialog", id, "reaches outside", text);
  }
  for (HWND other = GetWindow(dialog, GW_CHILD); other; other = GetWindow(other, GW_HWNDNEXT)) {
    RECT taken = {};
    GetWindowRect(other, &taken);
    if (other != control && IntersectRect(&common, &place, &taken)) {
      findings_.Add("dialog", id, "lies over another control", text);
    }
  }
}

void Measuring::MeasureDialog(uint16_t id) noexcept {
  ResourceBytes own, bytes;
  if (!built_in_.Find(ResourceKind::kDialog, id, &own) ||
      !language_.Find(ResourceKind::kDialog, id, &bytes) ||
      !HasAllOf(DialogControls(own.bytes, own.size), DialogControls(bytes.bytes, bytes.size))) {
    return;
  }
  Array<DWORD> copy;  // aligned; the style is changed
  if (bytes.size < sizeof(DLGTEMPLATE) || !copy.Resize(bytes.size / sizeof(DWORD) + 1)) return;
  memcpy(copy.data(), bytes.bytes, bytes.size);
  DLGTEMPLATE* const header = reinterpret_cast<DLGTEMPLATE*>(copy.data());
  header->style &= ~static_cast<DWORD>(WS_VISIBLE);
  const HWND parent = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, kScreen, 320, nullptr,
                                      nullptr, nullptr, nullptr);
  const HWND dialog = CreateDialogIndirectParamW(
      GetModuleHandleW(nullptr), header, parent,
      [](HWND, UINT, WPARAM, LPARAM) CALLBACK -> INT_PTR { return 0; }, 0);
  if (dialog) {
    wchar_t caption[256] = L"";
    GetWindowTextW(dialog, caption, 256);
    if (!(header->style & WS_CHILD)) Fit("dialog", id, caption, bold_.Width(caption), kCaption);
    RECT client = {};
    GetClientRect(dialog, &client);
    const bool has_edit = FindWindowExW(dialog, nullptr, L"Edit", nullptr) != nullptr;
    Fit("dialog", id, L"its width", client.right, kScreen);
    Fit("dialog", id, L"its height", client.bottom,
        has_edit ? kHeightAbovePanel : kHeightWithoutPanel);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
      MeasureControl(id, dialog, child);
    }
    DestroyWindow(dialog);
  }
  DestroyWindow(parent);
}

}  // namespace

bool MeasureLanguage(const PeResources& built_in, const PeResources& language,
                     Findings* findings) noexcept {
  const INITCOMMONCONTROLSEX classes = {sizeof(classes),
                                        ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&classes);
  Measuring(built_in, language, findings).Run();
  return true;
}

}  // namespace kelvo::tool
