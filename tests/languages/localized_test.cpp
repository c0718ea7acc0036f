#include "entry/language/localized.h"

#include <gtest/gtest.h>

#include <cstring>

#include "base/windows/resources.h"
#include "entry/language/modules.h"
#include "entry/language/text_entry_dialog.h"
#include "res/resource_ids.h"
#include "tests/languages/test_resources.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/wide_text.h"

extern "C" BOOL WINAPI KelvoInputPanelState();

namespace kelvo {
namespace {

using test::DialogDriver;
using test::Utf8;

constexpr uint32_t kPartial = 0x0503;

struct Seen {
  std::string title;
  HINSTANCE instance;
};

// Ends at once, and stores what it saw where the parameter points.
INT_PTR CALLBACK Look(HWND window, UINT message, WPARAM, LPARAM lparam) {
  if (message != WM_INITDIALOG) return FALSE;
  wchar_t title[64];
  GetWindowTextW(window, title, 64);
  static Seen ignored;
  Seen& seen = lparam ? *reinterpret_cast<Seen*>(lparam) : ignored;
  seen = {Utf8(title), reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window, GWLP_HINSTANCE))};
  EndDialog(window, seen.title == "Ag enw" ? 8 : 7);
  return FALSE;
}

INT_PTR CALLBACK SwitchToEnglish(HWND window, UINT message, WPARAM, LPARAM) {
  if (message != WM_INITDIALOG) return FALSE;
  LoadLanguageLibrary(0, true);
  EXPECT_TRUE(GetModuleHandleW(L"kv_mui.0503.dll"));
  EXPECT_FALSE(LanguageModule()) << "what opens now is English";
  EndDialog(window, 7);
  return FALSE;
}

class LocalizedTest : public ::testing::Test {
 protected:
  void SetUp() override { SetOwnModule(GetModuleHandleW(nullptr)); }
  void TearDown() override { LoadLanguageLibrary(0, true); }
};

TEST_F(LocalizedTest, FindsTheLibraryByItsName) {
  // The general pattern, and letters among the digits: libraries that nobody else has.
  const wchar_t* const copies[] = {L"mui.0503.dll", L"kv_mui.0ABF.dll"};
  for (const wchar_t* copy : copies) ASSERT_TRUE(CopyFileW(L"kv_mui.0503.dll", copy, FALSE));
  const struct {
    uint32_t id;
    bool own, loads;
    const char* name;
  } kCases[] = {
      {kPartial, true, true, "kv_mui.0503.dll"},
      {kPartial, false, true, "mui.0503.dll"},
      {0x0ABF, true, true, "kv_mui.0ABF.dll"},
      {0x0ABF, false, false, ""},
      {kPartial, true, true, "kv_mui.0503.dll"},
      {0, true, true, ""},
      {1033, true, true, ""},
      {0x0C0B, true, false, ""},
      {0xFFFFFFFF, true, false, ""},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(LoadLanguageLibrary(c.id, c.own), c.loads) << c.id;
    wchar_t path[MAX_PATH] = L"";
    if (LanguageModule()) GetModuleFileNameW(LanguageModule(), path, MAX_PATH);
    const std::string name = Utf8(path);
    EXPECT_EQ(name.substr(name.rfind('\\') + 1), c.name);
  }
  for (const wchar_t* copy : copies) {
    EXPECT_FALSE(GetModuleHandleW(copy));
    EXPECT_TRUE(DeleteFileW(copy));
  }
}

TEST_F(LocalizedTest, FallsBackStringByString) {
  const struct {
    UINT id;
    const char *english, *translated;  // in place: a text that could be overrun is not used
    const char *cut, *cut_translated;  // a copy is terminated
  } kCases[] = {
      {IDS_DELETE_ITEM, "Delete file", "Dileu", "Delete ", "Dileu"},
      {IDS_BUILT_IN_ONLY, "Built in", "Built in", "Built i", "Built i"},
      {IDS_UNTERMINATED, "Terminated", "Terminated", "Termina", "heb ddi"},
      {9999, "", "", "", ""},
  };
  for (bool translated : {false, true}) {
    LoadLanguageLibrary(translated ? kPartial : 0, true);
    for (const auto& c : kCases) {
      EXPECT_EQ(Utf8(LoadLocalizedString(OwnModule(), c.id)),
                translated ? c.translated : c.english);
      wchar_t text[8] = L"old";
      const std::string cut = translated ? c.cut_translated : c.cut;
      EXPECT_EQ(LoadLocalizedString(OwnModule(), c.id, text, 8), static_cast<int>(cut.size()));
      EXPECT_EQ(Utf8(text), cut);
    }
  }
}

TEST_F(LocalizedTest, TakesAMenuBarOnlyAsAWhole) {
  LoadLanguageLibrary(kPartial, true);
  const struct {
    UINT menu;
    int bitmap;
    bool from_language;
  } kCases[] = {{IDM_TEST_BAR, 0, true},
                {IDM_TEST_BAR, 114, false},
                {IDM_NO_TABLE, 0, false},
                {IDM_SHORT_TABLE, 0, false},
                {IDM_LACKS_COMMAND, 0, false},
                {0, 0, false},
                {999, 0, false}};
  const HWND parent =
      CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
  for (const auto& c : kCases) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof(info);
    info.hwndParent = parent;
    info.nToolBarId = c.menu;
    info.hInstRes = OwnModule();
    info.nBmpId = c.bitmap;
    CreateLocalizedMenuBar(&info);
    EXPECT_EQ(info.hInstRes, c.from_language ? LanguageModule() : OwnModule()) << c.menu;
  }
  DestroyWindow(parent);
}

TEST_F(LocalizedTest, RunsEachDialogInTheLanguageThatHasAllOfIt) {
  LoadLanguageLibrary(kPartial, true);
  const struct {
    UINT id;
    const char* title;
    bool from_language;
  } kCases[] = {{IDD_TEXT_ENTRY, "Golygu Enw Ffeil", true},
                {IDD_EXTENDED, "Estynedig", true},
                {IDD_BUILT_IN_ONLY, "Only English", false},
                {IDD_LACKS_BUTTON, "With a button", false}};
  for (const auto& c : kCases) {
    Seen seen = {};
    EXPECT_EQ(LocalizedDialogBox(OwnModule(), c.id, nullptr, Look, reinterpret_cast<LPARAM>(&seen)),
              7);
    EXPECT_EQ(seen.title, c.title);
    EXPECT_EQ(seen.instance, c.from_language ? LanguageModule() : OwnModule()) << c.title;
  }
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), L"NAMED_DIALOG", nullptr, Look), 8);
  LoadLanguageLibrary(0, true);
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), L"NAMED_DIALOG", nullptr, Look), 7);
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), 998, nullptr, Look, 0), -1);
}

TEST_F(LocalizedTest, ADialogKeepsItsLanguageWhileItIsOpen) {
  LoadLanguageLibrary(kPartial, true);
  EXPECT_EQ(LocalizedDialogBox(OwnModule(), IDD_TEXT_ENTRY, nullptr, SwitchToEnglish, 0), 7);
  EXPECT_FALSE(GetModuleHandleW(L"kv_mui.0503.dll"));
}

// The window that has the focus when `dialog` is active. A test beside this one on the same display
// may take the activation, and with it the focus, which comes back where it was.
HWND FocusOnceActive(HWND dialog) {
  GUITHREADINFO focus = {};
  focus.cbSize = sizeof(focus);
  // The test's own time limit is the bound.
  while (GetGUIThreadInfo(GetWindowThreadProcessId(dialog, nullptr), &focus) && !focus.hwndFocus) {
    SetForegroundWindow(dialog);
    Sleep(10);
  }
  return focus.hwndFocus;
}

using Replaced = TextEntryDialog::Replaced;

// One run of the text entry dialog, as the user sees it when it opens; then `typed` goes letter by
// letter to whatever has the focus, and the button is chosen.
std::string Enter(TextEntryDialog& entry, const std::wstring& typed, int button,
                  Replaced replaced = Replaced::kAll) {
  std::string offered;
  DialogDriver driver(L"Edit File Name", [&](HWND dialog) {
    const HWND edit = GetDlgItem(dialog, IDC_TEXT_ENTRY);
    wchar_t text[kTextCapacity];
    GetWindowTextW(edit, text, kTextCapacity);
    offered = Utf8(text);
    EXPECT_TRUE(KelvoInputPanelState());
    EXPECT_EQ(FocusOnceActive(dialog), edit);
    for (const wchar_t letter : typed) SendMessageW(edit, WM_CHAR, letter, 0);
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    if (!IsWindowVisible(dialog)) return;
    offered += ", stays open";
    SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  });
  offered += entry.Run(nullptr, replaced) ? ", confirmed" : ", cancelled";
  EXPECT_FALSE(KelvoInputPanelState());
  return offered;
}

TEST_F(LocalizedTest, TheTextEntryDialogTakesOneLineThatIsNotEmpty) {
  TextEntryDialog entry;
  const auto* raw = reinterpret_cast<const unsigned char*>(&entry) + sizeof(void*);
  uint32_t cancelled = 0;
  std::memcpy(&cancelled, raw + kTextCapacity * sizeof(wchar_t), sizeof(cancelled));
  EXPECT_EQ(cancelled, 1u);
  entry.SetText(L"old name");
  EXPECT_EQ(Utf8(reinterpret_cast<const wchar_t*>(raw)), "old name");

  EXPECT_EQ(Enter(entry, L"\b", IDOK), "old name, stays open, cancelled");
  EXPECT_EQ(Utf8(entry.GetText()), "");
  entry.SetText(L"old name");
  EXPECT_EQ(Enter(entry, L"new", IDOK), "old name, confirmed") << "typing replaces the text";
  EXPECT_EQ(Enter(entry, L"unwanted", IDCANCEL), "new, cancelled");
  EXPECT_EQ(Utf8(entry.GetText()), "new");
  for (const auto& [name, renamed] :
       {std::pair(L"a.b.m3u", "x.m3u"), {L".m3u", "x.m3u"}, {L"no point", "x"}}) {
    entry.SetText(name);
    Enter(entry, L"x", IDOK, Replaced::kBeforeExtension);
    EXPECT_EQ(Utf8(entry.GetText()), renamed);
  }
  entry.SetText(L"new.m3u");
  EXPECT_EQ(Enter(entry, std::wstring(400, L'x'), IDOK), "new.m3u, confirmed");
  EXPECT_EQ(Utf8(entry.GetText()), std::string(259, 'x')) << "what does not fit cannot be typed";
}

}  // namespace
}  // namespace kelvo
