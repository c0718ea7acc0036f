// The sheet: when it scans, how its pages are laid out, which order and language it opens in.
#include "base/windows/registry.h"
#include "bookmarks/bookmarks_feature.h"
#include "kelvo/settings.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/catalog/catalog_window_fixture.h"
#include "tests/language/test_resources.h"
#include "tests/support/faults.h"
#include "tests/support/owned_objects.h"

namespace kelvo {
namespace {

using test::SheetDriver;
using test::Utf8;

class CatalogSheetTest : public test::CatalogWindowTest {};

TEST_F(CatalogSheetTest, OnlyTheFirstShowingScans) {
  static DWORD scanned;
  driver_.files.before = [](test::MemoryFiles&, const std::string& call) {
    if (call == "list \\*.*") scanned = GetTickCount();
  };
  const DWORD shown = GetTickCount();
  driver_.Show([&] { EXPECT_TRUE(test::WaitFor([&] { return driver_.Items() == kLists; })); });
  EXPECT_EQ(Scans(), 1);
  EXPECT_GE(scanned - shown, 480u) << "the sheet is to be seen before";
  driver_.Show([&] {
    EXPECT_EQ(driver_.Items(), kLists);
    Sleep(700);  // longer than the first showing waits
    EXPECT_EQ(Scans(), 1);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(Scans(), 2);
  });
}

// What the host or the user does while a scan runs: no second one, and the tree stays.
TEST_F(CatalogSheetTest, NothingIsRebuiltDuringAScan) {
  static HWND page, tree;
  static std::string seen;
  ShowMediaBy(kArtists, [&] {
    page = driver_.Page();
    tree = driver_.Tree();
    driver_.files.before = [](test::MemoryFiles&, const std::string& call) {
      if (call != "list \\*.*") return;
      const LRESULT before = SendMessageW(tree, TVM_GETCOUNT, 0, 0);
      SendMessageW(page, WM_COMMAND, ID_RESCAN, 0);
      SendMessageW(page, WM_COMMAND, kFolders, 0);
      const bool waits = GetCursor() == LoadCursorW(nullptr, IDC_WAIT);
      seen = std::to_string(before) + " " + std::to_string(SendMessageW(tree, TVM_GETCOUNT, 0, 0)) +
             (waits ? " waits" : "");
    };
    driver_.Do(ID_RESCAN);
    driver_.files.before = nullptr;
    EXPECT_EQ(seen, "5 5 waits");
    EXPECT_EQ(Scans(), 2);
    EXPECT_EQ(driver_.Nodes(), "Music\n one.mp3\n three.mp3\n two.mp3\n");
    driver_.Do(ID_FIRST_ORDER);
  });
}

TEST_F(CatalogSheetTest, PagesFillTheSheetAboveItsTabs) {
  const struct {
    int control;
    const char* title;
    const char* buttons;  // command, image and tip
  } pages[] = {
      {IDC_LIST, "Playlist Catalog",
       "40019 0 Rescan Media Info|40021 4 Rename|40023 2 Delete Selected Files|40033 5 |"
       "40040 7 Add checked items to current playlist|"},
      {IDC_TREE, "Media Catalog",
       "40019 0 Rescan Media Info|40032 1 |40042 4 Edit media description|"
       "40023 2 Delete Selected Files|40033 5 |40040 7 Add checked items to current playlist|"},
      {IDC_LIST, "Curr. Playlist",
       "40024 3 Play checked items in Velmora|40044 8 Enqueue checked items in Velmora|"
       "40038 6 Save playlist|40036 2 Remove selected song(s) from list|"
       "40046 9 Move selected items up|40048 10 Move selected items down|40033 5 |40050 11 |"},
  };
  ShowAfterScan(0, [&] {
    const auto tabs =
        reinterpret_cast<HWND>(SendMessageW(driver_.Sheet(), PSM_GETTABCONTROL, 0, 0));
    EXPECT_TRUE(GetWindowLongW(tabs, GWL_STYLE) & TCS_BOTTOM);
    for (int i = 2; i >= 0; --i) {
      SCOPED_TRACE(pages[i].title);
      driver_.GoTo(i);
      driver_.Run([&] {
        wchar_t title[100] = L"";
        TCITEMW tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = title;
        tab.cchTextMax = 100;
        SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tab));
        EXPECT_EQ(Utf8(title), pages[i].title);
        const HWND control = driver_.Control(pages[i].control);
        RECT page, place;
        GetWindowRect(driver_.Page(), &page);
        GetWindowRect(control, &place);
        EXPECT_EQ(place.bottom, page.bottom - 21);
        EXPECT_EQ(place.right - place.left, page.right - page.left);
        LOGFONTW font = {};
        const auto set = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
        GetObjectW(set, sizeof(font), &font);
        EXPECT_EQ(Utf8(font.lfFaceName), "Tahoma");
        EXPECT_EQ(abs(font.lfHeight), 12);
        EXPECT_EQ(font.lfWeight, FW_NORMAL);
        if (pages[i].control == IDC_LIST) {
          EXPECT_EQ(SendMessageW(control, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0),
                    LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
        }
      });
      const HWND bar = driver_.MenuBar();
      std::string buttons;
      driver_.Run([&] {
        TBBUTTON button = {};
        for (WPARAM at = 0; SendMessageW(bar, TB_GETBUTTON, at, reinterpret_cast<LPARAM>(&button));
             ++at) {
          NMTTDISPINFOW tip = {};
          tip.hdr.code = static_cast<UINT>(TTN_GETDISPINFOW);
          tip.hdr.idFrom = static_cast<UINT_PTR>(button.idCommand);
          SendMessageW(bar, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&tip));
          buttons += std::to_string(button.idCommand) + " " + std::to_string(button.iBitmap) + " " +
                     Utf8(tip.szText) + "|";
        }
      });
      EXPECT_EQ(buttons, pages[i].buttons);
      // Brought up again, the page shows the bar that somebody had hidden.
      driver_.Run([&] { ShowWindow(bar, SW_HIDE); });
      driver_.GoTo((i + 1) % 3);
      driver_.GoTo(i);
      EXPECT_EQ(driver_.MenuBar(), bar);
    }
  });
}

TEST_F(CatalogSheetTest, KeepsTheOrderInTheRegistry) {
  HKEY key;
  ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSettingsKey, 0, nullptr, 0, KEY_ALL_ACCESS,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  ShowAfterScan(0, [] {});
  const char* const by_genre =
      "Jazz\n Sine\n  Waves\n   One\n   Two\nUnknown\n Unknown\n  Unknown\n   three.mp3\n";
  const struct {
    const char* name;
    DWORD type, stored;
    const char* nodes;
    DWORD kept;
  } cases[] = {
      {"none", REG_NONE, 0, by_genre, 1},
      {"four bytes", REG_BINARY, 5, "Unknown\n three.mp3\nWaves\n One\n Two\n", 5},
      {"zero", REG_DWORD, 0, by_genre, 1},
      {"too many", REG_DWORD, 8, by_genre, 1},
      {"folders", REG_DWORD, 7, "Music\n one.mp3\n three.mp3\n two.mp3\n", 7},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    RegDeleteValueW(key, L"CatType");
    if (c.type != REG_NONE) {
      RegSetValueExW(key, L"CatType", 0, c.type, reinterpret_cast<const BYTE*>(&c.stored), 4);
    }
    driver_.Show([&] {
      driver_.GoTo(1);
      EXPECT_EQ(driver_.Nodes(), c.nodes);
      const auto menu = reinterpret_cast<HMENU>(
          SendMessageW(driver_.MenuBar(), SHCMBM_GETSUBMENU, 0, ID_GROUPING));
      for (UINT order = 1; order <= 7; ++order) {
        EXPECT_EQ(GetMenuState(menu, ID_FIRST_ORDER + order - 1, MF_BYCOMMAND),
                  order == c.kept ? MF_CHECKED : MF_UNCHECKED)
            << order;
      }
    });
    DWORD kept = 0, bytes = 4;
    RegQueryValueExW(key, L"CatType", nullptr, nullptr, reinterpret_cast<BYTE*>(&kept), &bytes);
    EXPECT_EQ(kept, c.kept);
  }
  RegDeleteValueW(key, L"CatType");
  RegCloseKey(key);

  // A key that cannot be opened, below one that does not last, leaves the order that there was.
  HKEY volatile_key;
  RegCreateKeyExW(HKEY_CURRENT_USER, L"KelvoVolatile", 0, nullptr, REG_OPTION_VOLATILE,
                  KEY_ALL_ACCESS, nullptr, &volatile_key, nullptr);
  ASSERT_EQ(RegOverridePredefKey(HKEY_LOCAL_MACHINE, volatile_key), ERROR_SUCCESS);
  SheetDriver fresh;
  EXPECT_FALSE(RegistryKey::OpenOrCreate(kSettingsKey));
  fresh.Show([&] {
    fresh.Run([&] { SendMessageW(fresh.Page(), WM_TIMER, 1, 0); });
    fresh.Settle();
    fresh.GoTo(1);
    EXPECT_EQ(fresh.Nodes(), kByArtist);
  });
  RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
  RegCloseKey(volatile_key);
  RegDeleteKeyW(HKEY_CURRENT_USER, L"KelvoVolatile");
}

TEST_F(CatalogSheetTest, IsShownOnceAtATime) {
  ShowAfterScan(0, [&] {
    driver_.Run(
        [&] { EXPECT_EQ(driver_.feature.ShowCatalog(driver_.host(), driver_.parent()), 0); });
    EXPECT_EQ(driver_.Items(), kLists);
  });
}

// The bookmarks window and the dialog for saving a playlist exclude each other.
TEST_F(CatalogSheetTest, OneFeatureDialogIsOpenAtATime) {
  test::FixedFolder folder;
  BookmarksShell shell;
  BookmarksFeature bookmarks(driver_.files, folder, &shell);
  ShowAfterScan(2, [&] {
    AddLists();
    const HWND page = driver_.Page();
    for (int round = 0; round < 2; ++round) {
      int32_t result = -1;
      driver_.Start([&] { result = bookmarks.ShowBookmarks(driver_.parent()); });
      const HWND window = driver_.WaitForWindow(L"Velmora Bookmarks");
      SendMessageW(page, WM_COMMAND, ID_SAVE_PLAYLIST, 0);  // comes back: nothing has opened
      EXPECT_EQ(result, -1);
      driver_.Answer(window, IDOK);
      EXPECT_EQ(result, 0);

      PostMessageW(page, WM_COMMAND, ID_SAVE_PLAYLIST, 0);
      const HWND dialog = driver_.WaitForWindow(L"Save Playlist");
      driver_.Run([&] { EXPECT_EQ(bookmarks.ShowBookmarks(driver_.parent()), 1); });
      EXPECT_TRUE(IsWindowEnabled(dialog));
      driver_.Answer(dialog, IDCANCEL);
    }
  });
}

// Languages whose libraries are not complete, or not right.
class CatalogLanguageTest : public test::CatalogWindowTest {
 protected:
  static constexpr uint32_t kPartial = 0x0503;
  static constexpr uint32_t kHostile = 0x0504;
  void TearDown() override {
    LoadLanguageLibrary(0, true);
    CatalogWindowTest::TearDown();
  }
};

TEST_F(CatalogLanguageTest, WhatIsTranslatedIsShownTheRestIsEnglish) {
  ASSERT_TRUE(LoadLanguageLibrary(kPartial, true));
  driver_.sheet_caption = L"Trefnydd";
  ShowAfterScan(0, [&] {
    driver_.Select(0);
    driver_.Post(ID_DELETE_FILE);
    const HWND question = driver_.WaitForWindow(L"Delete File");
    EXPECT_EQ(driver_.BoxText(question), "Dileu \"\\Lists\\a.m3u\" am byth?");
    driver_.Answer(question, IDNO);
    const HWND list = driver_.List();
    driver_.StartTap(list, driver_.PartOf(list, 0, LVHT_ONITEMLABEL), WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_EQ(driver_.MenuItems(), "Rename file 40021\nDileu 40023\n");
    driver_.ChooseMenuItem(0);
    driver_.Answer(L"Golygu Enw Ffeil", IDCANCEL);

    driver_.GoTo(1);  // the menu is there without its images: both are the built-in ones
    EXPECT_EQ(SendMessageW(driver_.MenuBar(), TB_BUTTONCOUNT, 0, 0), 6);
    AddLists();  // the page's dialog is the translated one and works
    EXPECT_EQ(driver_.Text(driver_.Page(), IDC_LANGUAGE), "Cymraeg");
    EXPECT_EQ(driver_.Items(), kAllSongs);
    EXPECT_EQ(driver_.Columns(driver_.List()).substr(0, 20), "Teitl 150|Artist 60|");

    driver_.GoTo(1);
    driver_.Do(kArtists);
    driver_.SelectNode("Sine\\One");
    driver_.files.Find("\\Music\\one.mp3")->locked = true;
    driver_.Post(ID_EDIT_TAG);
    const HWND editor = driver_.WaitForWindow(L"Edit Media Description");
    PostMessageW(editor, WM_COMMAND, IDC_TAG_UPDATE, 0);
    const HWND box = driver_.WaitForWindow(L"");
    EXPECT_EQ(driver_.BoxText(box), "Gwall!");
    driver_.Answer(box, IDOK);
    driver_.Answer(editor, IDCANCEL);
  });
}

TEST_F(CatalogLanguageTest, ThePagesKeepTheirLanguageWhileTheSheetIsOpen) {
  ASSERT_TRUE(LoadLanguageLibrary(kPartial, true));
  driver_.sheet_caption = L"Trefnydd";
  driver_.Show([&] {
    driver_.Run([] { LoadLanguageLibrary(0, true); });
    driver_.GoTo(2);  // made only now, of a template in the library
    EXPECT_EQ(driver_.Text(driver_.Page(), IDC_LANGUAGE), "Cymraeg");
  });
  EXPECT_FALSE(GetModuleHandleW(L"kv_mui.0503.dll"));
}

TEST_F(CatalogLanguageTest, AWrongFormatIsReplacedByTheBuiltInText) {
  ASSERT_TRUE(LoadLanguageLibrary(kHostile, true));
  driver_.sheet_caption = L"1234567890123456789012345678901234567890123456789012345678901234";
  ShowAfterScan(0, [&] {
    driver_.Select(1);
    Delete("\\Lists\\b.pls", IDNO);
  });
}

TEST_F(CatalogSheetTest, OpensWithoutAnyMemory) {
  auto faults = std::make_unique<test::HeapFaults>(0, test::HeapFaults::Mode::kFromThenOn);
  ShowAfterScan(0, [&] {
    EXPECT_EQ(Scans(), 0) << "no memory for a folder";
    for (int page = 0; page < 3; ++page) {
      driver_.GoTo(page);
      for (const int id : {ID_CHECK_ALL, ID_ADD_CHECKED, ID_INVERT_CHECKS}) driver_.Do(id);
    }
    EXPECT_EQ(driver_.Items(), "");
    driver_.Run([&] { faults.reset(); });
    driver_.GoTo(0);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Items(), kLists);
    AddLists();
    EXPECT_EQ(driver_.Items(), kAllSongs);
  });
}

TEST_F(CatalogSheetTest, ManyOpeningsLeaveNothingBehind) {
  // The editor and the save dialog are opened and closed, too.
  const auto open = [&](bool everything) {
    driver_.Show([&] {
      driver_.GoTo(1);
      if (everything) {
        driver_.Do(kArtists);
        driver_.SelectNode("Sine\\One");
        driver_.Post(ID_EDIT_TAG);
        driver_.Answer(L"Edit Media Description", IDCANCEL);
      }
      driver_.GoTo(2);
      if (!everything) return;
      driver_.Post(ID_SAVE_PLAYLIST);
      const HWND dialog = driver_.WaitForWindow(L"Save Playlist");
      driver_.Settle();
      driver_.Answer(dialog, IDCANCEL);
    });
    driver_.files.log.clear();
    driver_.files.log.shrink_to_fit();
  };
  ShowAfterScan(1, [] {});
  for (int i = 0; i < 3; ++i) open(true);  // what the system keeps from the first times on
  const test::Owned before = test::CountOwned();
  for (int i = 0; i < 30; ++i) open(i >= 24);
  EXPECT_EQ(test::Grown(before, 30), "");
}

}  // namespace
}  // namespace kelvo
