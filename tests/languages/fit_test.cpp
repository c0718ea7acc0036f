// Every text of every language has room where it is shown: measured in the built library's dialogs,
// in the device's font and on its screen. What the texts alone tell is check_texts.py's.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <string>

#include "base/windows/resources.h"
#include "base/windows/unique_handle.h"
#include "res/resource_ids.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Utf8;

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

class Ruler {
 public:
  explicit Ruler(HFONT font) : dc_(CreateCompatibleDC(nullptr)), before_(SelectObject(dc_, font)) {
    GetTextMetricsW(dc_, &metrics_);
  }
  ~Ruler() {
    SelectObject(dc_, before_);
    DeleteDC(dc_);
  }
  int height() const { return metrics_.tmHeight; }

  // Ideographs and kana are as wide as the font is high, in every font that has them; the one here
  // may not, and would measure its substitute. The mark of a mnemonic is not drawn.
  int Width(const std::wstring& text, bool has_mnemonic = true) const {
    int width = 0;
    std::wstring run;
    for (const wchar_t c : text) {
      if (c >= 0x2E80) {
        width += metrics_.tmHeight - metrics_.tmInternalLeading;
      } else if (c != L'&' || !has_mnemonic) {
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

HFONT Tahoma(bool bold) {
  return CreateFontW(-11, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0,
                     L"Tahoma");
}

std::wstring TextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
  if (!text.empty()) GetWindowTextW(window, text.data(), static_cast<int>(text.size() + 1));
  return text;
}

class EachLanguage : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const INITCOMMONCONTROLSEX classes = {sizeof(classes),
                                          ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES};
    InitCommonControlsEx(&classes);
    // Not read as a file: the bridge shows the resources of another file than its own.
    module_.Reset(LoadLibraryA(GetParam()));
    ASSERT_TRUE(module_) << GetParam();
  }
  std::wstring Text(UINT id) {
    const wchar_t* text = FindStringResource(module_.get(), id, nullptr);
    EXPECT_TRUE(text) << id;
    return text ? text : L"";
  }
  void ExpectFits(const std::wstring& text, int room, bool bold = false) {
    EXPECT_LE((bold ? bold_ : plain_).Width(text), room) << Utf8(text.c_str());
  }
  void MeasureMenu(HMENU menu) {
    for (int i = 0, count = GetMenuItemCount(menu); i < count; ++i) {
      wchar_t text[256] = L"";
      GetMenuStringW(menu, static_cast<UINT>(i), text, 256, MF_BYPOSITION);
      ExpectFits(text, kMenuItem);
      if (const HMENU popup = GetSubMenu(menu, i)) MeasureMenu(popup);
    }
  }
  void MeasureDialog(UINT id);
  void MeasureControl(HWND dialog, HWND control);

  UniqueModule module_;
  const UniqueFont plain_font_{Tahoma(false)};
  const UniqueFont bold_font_{Tahoma(true)};
  const Ruler plain_{plain_font_.get()};
  const Ruler bold_{bold_font_.get()};
};
INSTANTIATE_TEST_SUITE_P(Fit, EachLanguage, testing::Values("Kelvo.dll", KELVO_LANGUAGES),
                         [](const auto& tested) {
                           const std::string name = tested.param;
                           return name == "Kelvo.dll" ? "english" : name.substr(7, 4);
                         });

TEST_P(EachLanguage, HeadingsCaptionsAndTabsFit) {
  const struct {
    UINT text;
    int room;
    bool bold;
  } rooms[] = {
      {IDS_TITLE, 150 - kColumnEdges, false},        {IDS_COLUMN_ARTIST, 60 - kColumnEdges, false},
      {IDS_COLUMN_ALBUM, 150 - kColumnEdges, false}, {IDS_COLUMN_GENRE, 80 - kColumnEdges, false},
      {IDS_TIME, 45 - kColumnEdges, false},          {IDS_CATALOG_CAPTION, kCaption, true},
      {IDS_DELETE_CAPTION, kCaption, true},          {IDS_FILE_EXISTS, kCaption, true},
      {IDS_RENAME_FILE, kMenuItem, false},           {IDS_DELETE_ITEM, kMenuItem, false},
  };
  for (const auto& room : rooms) ExpectFits(Text(room.text), room.room, room.bold);
  int tabs = 0;
  for (const UINT id : {IDS_MEDIA_TITLE, IDS_PLAYLISTS_TITLE, IDS_CURRENT_TITLE}) {
    tabs += kTabEdges + plain_.Width(Text(id));
  }
  EXPECT_LE(tabs, kScreen);
}

TEST_P(EachLanguage, MenusTipsAndLabelsOfMenuBarsFit) {
  for (const UINT bar : {IDR_PLAYLISTS_BAR, IDR_MEDIA_BAR, IDR_CURRENT_BAR, IDM_BOOKMARKS}) {
    const HMENU menu = LoadMenuW(module_.get(), MAKEINTRESOURCEW(bar));
    MeasureMenu(menu);
    DestroyMenu(menu);
    // The table: its number, the count of buttons, and seven words for each of them.
    size_t bytes = 0;
    const WORD* words = static_cast<const WORD*>(
        FindResourceBytes(module_.get(), MAKEINTRESOURCEW(bar), RT_RCDATA, &bytes));
    ASSERT_TRUE(words);
    int labels = 0;
    for (const WORD* button = words + 2; button < words + 2 + 7 * words[1]; button += 7) {
      const UINT text = button[4];
      if (text == 0) continue;
      const bool is_label = button[0] == 0xFFFE;
      if (is_label) labels += kLabelEdges + bold_.Width(Text(text));
      if (!is_label) ExpectFits(Text(text), kTip);
    }
    EXPECT_LE(labels, kLabels) << bar;
  }
}

void EachLanguage::MeasureControl(HWND dialog, HWND control) {
  wchar_t kind[64] = L"";
  GetClassNameW(control, kind, 64);
  const bool is_label = lstrcmpiW(kind, L"Static") == 0;
  const std::wstring text = TextOf(control);
  if (text.empty() || (!is_label && lstrcmpiW(kind, L"Button") != 0)) return;
  RECT place = {};
  GetWindowRect(control, &place);
  const LONG style = GetWindowLongW(control, GWL_STYLE);
  const Ruler ruler(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
  // A button has edges, and some air.
  const int width = ruler.Width(text, !is_label || !(style & SS_NOPREFIX)) + (is_label ? 0 : 8);
  const int height = ruler.height() + (is_label ? 0 : 6);
  EXPECT_LE(width, place.right - place.left) << Utf8(text.c_str());
  EXPECT_LE(height, place.bottom - place.top) << Utf8(text.c_str());
  RECT client = {};
  GetClientRect(dialog, &client);
  MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&client), 2);
  RECT common;
  EXPECT_TRUE(IntersectRect(&common, &place, &client) && EqualRect(&common, &place))
      << Utf8(text.c_str()) << " reaches outside";
  for (HWND other = GetWindow(dialog, GW_CHILD); other; other = GetWindow(other, GW_HWNDNEXT)) {
    RECT taken = {};
    GetWindowRect(other, &taken);
    EXPECT_FALSE(other != control && IntersectRect(&common, &place, &taken))
        << Utf8(text.c_str()) << " overlaps " << Utf8(TextOf(other).c_str());
  }
}

void EachLanguage::MeasureDialog(UINT id) {
  SCOPED_TRACE(id);
  size_t bytes = 0;
  const void* found = FindResourceBytes(module_.get(), MAKEINTRESOURCEW(id), RT_DIALOG, &bytes);
  ASSERT_TRUE(found);
  std::string copy(static_cast<const char*>(found), bytes);
  DLGTEMPLATE* header = reinterpret_cast<DLGTEMPLATE*>(copy.data());
  header->style &= ~static_cast<DWORD>(WS_VISIBLE);
  const HWND parent = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, kScreen, 320, nullptr,
                                      nullptr, nullptr, nullptr);
  const HWND dialog = CreateDialogIndirectParamW(
      module_.get(), header, parent,
      [](HWND, UINT, WPARAM, LPARAM) CALLBACK -> INT_PTR { return 0; }, 0);
  ASSERT_TRUE(dialog);
  if (!(header->style & WS_CHILD)) ExpectFits(TextOf(dialog), kCaption, true);
  RECT client = {};
  GetClientRect(dialog, &client);
  const bool has_edit = FindWindowExW(dialog, nullptr, L"Edit", nullptr) != nullptr;
  EXPECT_LE(client.right, kScreen);
  EXPECT_LE(client.bottom, has_edit ? kHeightAbovePanel : kHeightWithoutPanel);
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    MeasureControl(dialog, child);
  }
  DestroyWindow(dialog);
  DestroyWindow(parent);
}

TEST_P(EachLanguage, DialogsFit) {
  for (const UINT id : {IDD_TEXT_ENTRY, IDD_PLAYLISTS, IDD_MEDIA, IDD_CURRENT, IDD_TAG_EDITOR,
                        IDD_BOOKMARKS, IDD_EDIT_BOOKMARK}) {
    MeasureDialog(id);
  }
}

}  // namespace
}  // namespace kelvo
