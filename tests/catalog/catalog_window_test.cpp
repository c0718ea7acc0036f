// The sheet: when it scans, how its pages are laid out, which order and language it opens in.
#include "bookmarks/bookmarks_feature.h"
#include "kelvo/host_resources.h"
#include "kelvo/settings.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/catalog/catalog_window_fixture.h"
#include "tests/languages/test_resources.h"
#include "tests/support/faults.h"
#include "tests/support/owned_objects.h"

namespace kelvo {
namespace {

using test::Utf8;

class CatalogSheetTest : public test::CatalogWindowTest {};

TEST_F(CatalogSheetTest, OnlyTheFirstShowingScans) {
  static DWORD scanned;
  files_.before = [](test::MemoryFiles&, const std::string& call) {
    if (call == "list \\*.*") scanned = GetTickCount();
  };
  const DWORD shown = GetTickCount();
  Show([&] { EXPECT_TRUE(test::WaitFor([&] { return Items() == kLists; })); });
  EXPECT_EQ(Listings(""), 1);
  EXPECT_GE(scanned - shown, 480u) << "the sheet is to be seen before";
  Show([&] {
    EXPECT_EQ(Items(), kLists);
    Sleep(700);  // longer than the first showing waits
    EXPECT_EQ(Listings(""), 1);
    Do(ID_RESCAN);
    EXPECT_EQ(Listings(""), 2);
  });
}

// What the host or the user does while a scan runs: no second one, and the tree stays.
TEST_F(CatalogSheetTest, NothingIsRebuiltDuringAScan) {
  static HWND page, tree;
  static std::string seen;
  ShowMediaBy(kArtists, [&] {
    page = Page();
    tree = Tree();
    files_.before = [](test::MemoryFiles&, const std::string& call) {
      if (call != "list \\*.*") return;
      const LRESULT before = SendMessageW(tree, TVM_GETCOUNT, 0, 0);
      SendMessageW(page, WM_COMMAND, ID_RESCAN, 0);
      SendMessageW(page, WM_COMMAND, kFolders, 0);
      const bool waits = GetCursor() == LoadCursorW(nullptr, IDC_WAIT);
      seen = std::to_string(before) + " " + std::to_string(SendMessageW(tree, TVM_GETCOUNT, 0, 0)) +
             (waits ? " waits" : "");
    };
    Do(ID_RESCAN);
    files_.before = nullptr;
    EXPECT_EQ(seen, "5 5 waits");
    EXPECT_EQ(Listings(""), 2);
    EXPECT_EQ(Nodes(), "Music\n one.mp3\n three.mp3\n two.mp3\n");
    Do(ID_FIRST_ORDER);
  });
}

// Before the second folder is listed the scan takes long enough to look around.
TEST_F(CatalogSheetTest, AScanTellsWhatItFindsAndEndsWithATapOnThatEscapeOrDone) {
  static HWND page, sheet;
  static std::string label;
  static int step;
  step = 0;
  ShowAfterScan(0, [&] {
    page = Page();
    files_.before = [](test::MemoryFiles&, const std::string& call) {
      if (call == "list \\Music\\*.*") {
        Sleep(150);
        PostMessageW(page, WM_COMMAND, ID_CHECK_ALL, 0);  // not for what was there before
        PostMessageW(page, WM_KEYDOWN, VK_SPACE, 0);
        if (step == 1) PostMessageW(page, WM_KEYDOWN, VK_ESCAPE, 0);
        if (step == 2) PostMessageW(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
      } else if (call == "open \\Music\\one.mp3") {
        Sleep(150);
        const HWND line = FindWindowExW(page, nullptr, L"Static", nullptr);
        const bool is_seen = SendMessageW(line, WM_NCHITTEST, 0, 0) != HTTRANSPARENT;
        const HWND tapped = step == 3 && is_seen ? line : page;
        PostMessageW(tapped, WM_LBUTTONDOWN, MK_LBUTTON, 0);
        PostMessageW(tapped, WM_LBUTTONUP, 0, 0);
      } else if (call == "attributes \\Music\\two.mp3" || call == "open \\Music\\two.mp3") {
        label = Text(FindWindowExW(page, nullptr, L"Static", nullptr));
        label += GetCursor() == LoadCursorW(nullptr, IDC_WAIT) ? " waits" : "";
      }
    };
    Do(ID_RESCAN);
    EXPECT_EQ(label, "Scanning: 3 files. Tap here to stop. waits");
    EXPECT_FALSE(FindWindowExW(page, nullptr, L"Static", nullptr));
    EXPECT_EQ(Items(), kLists);
    Do(kArtists);
    step = 1;
    Do(ID_RESCAN);
    EXPECT_EQ(Items(), kLists);
    GoTo(1);
    EXPECT_EQ(Nodes(), "");
    Do(kArtists);
    step = 0;
    Do(ID_RESCAN);
    EXPECT_EQ(Nodes(), kByArtist);
    step = 3;
    page = Page();
    Do(ID_RESCAN);
    EXPECT_EQ(Nodes(), "Sine\n One\n");
    step = 2;
    sheet = Sheet();
    Post(ID_RESCAN);
    Wait("the sheet's end", [] { return !IsWindow(sheet); });
    files_.before = nullptr;
  });
  Show([&] {
    EXPECT_EQ(Items(), kLists);
    GoTo(1);
    EXPECT_EQ(Nodes(), "");
    Do(ID_FIRST_ORDER);
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
    const auto tabs = reinterpret_cast<HWND>(SendMessageW(Sheet(), PSM_GETTABCONTROL, 0, 0));
    EXPECT_TRUE(GetWindowLongW(tabs, GWL_STYLE) & TCS_BOTTOM);
    for (int i = 2; i >= 0; --i) {
      SCOPED_TRACE(pages[i].title);
      GoTo(i);
      Run([&] {
        wchar_t title[100] = L"";
        TCITEMW tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = title;
        tab.cchTextMax = 100;
        SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tab));
        EXPECT_EQ(Utf8(title), pages[i].title);
        const HWND control = Control(pages[i].control);
        RECT page, place;
        GetWindowRect(Page(), &page);
        GetWindowRect(control, &place);
        EXPECT_EQ(place.bottom, page.bottom - 21);
        EXPECT_EQ(place.right - place.left, page.right - page.left);
        if (pages[i].control == IDC_LIST) {
          EXPECT_EQ(SendMessageW(control, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0),
                    LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE);
        }
      });
      const HWND bar = MenuBar();
      std::string buttons;
      Run([&] {
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
      Run([&] { ShowWindow(bar, SW_HIDE); });
      GoTo((i + 1) % 3);
      GoTo(i);
      EXPECT_EQ(MenuBar(), bar);
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
    Show([&] {
      GoTo(1);
      EXPECT_EQ(Nodes(), c.nodes);
      const auto menu =
          reinterpret_cast<HMENU>(SendMessageW(MenuBar(), SHCMBM_GETSUBMENU, 0, ID_GROUPING));
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
}

TEST_F(CatalogSheetTest, IsShownOnceAtATime) {
  ShowAfterScan(0, [&] {
    Run([&] { EXPECT_EQ(feature_.ShowCatalog(host_, parent_), 0); });
    EXPECT_EQ(Items(), kLists);
  });
}

// The bookmarks window and the dialog for saving a playlist exclude each other.
TEST_F(CatalogSheetTest, OneFeatureDialogIsOpenAtATime) {
  test::FixedFolder folder;
  BookmarksShell shell;
  BookmarksFeature bookmarks(files_, folder, &shell);
  ShowAfterScan(2, [&] {
    AddLists();
    int32_t result = -1;
    Start([&] { result = bookmarks.ShowBookmarks(parent_); });
    const HWND page = Page(Sheet()), window = WaitForWindow(L"Velmora Bookmarks");
    SendMessageW(page, WM_COMMAND, ID_SAVE_PLAYLIST, 0);  // comes back: nothing has opened
    EXPECT_EQ(result, -1);
    Answer(window, IDOK);
    EXPECT_EQ(result, 0);
    Post(ID_SAVE_PLAYLIST);
    const HWND dialog = WaitForWindow(L"Save Playlist");
    Run([&] { EXPECT_EQ(bookmarks.ShowBookmarks(parent_), 1); });
    EXPECT_TRUE(IsWindowEnabled(dialog));
    Answer(dialog, IDCANCEL);
  });
}

// A language library that is not complete.
TEST_F(CatalogSheetTest, WhatIsTranslatedIsShownTheRestIsEnglish) {
  ASSERT_TRUE(LoadLanguageLibrary(0x0503, true));
  sheet_caption_ = L"Trefnydd";
  ShowAfterScan(0, [&] {
    Select(0);
    Post(ID_DELETE_FILE);
    const HWND question = WaitForWindow(L"Delete File");
    EXPECT_EQ(BoxText(question), "Dileu \"\\Lists\\a.m3u\" am byth?");
    Answer(question, IDNO);
    StartTap(List(), PartOf(List(), 0, LVHT_ONITEMLABEL), WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_EQ(MenuItems(), "Rename file 40021\nDileu 40023\n");
    ChooseMenuItem(0);
    Answer(L"Golygu Enw Ffeil", IDCANCEL);

    GoTo(1);  // the menu is there without its images: both are the built-in ones
    EXPECT_EQ(SendMessageW(MenuBar(), TB_BUTTONCOUNT, 0, 0), 6);
    AddLists();  // the page's dialog is the translated one and works
    EXPECT_EQ(Text(Page(), IDC_LANGUAGE), "Cymraeg");
    EXPECT_EQ(Items(), kAllSongs);
    EXPECT_EQ(Columns(List()).substr(0, 20), "Teitl 150|Artist 60|");
    // What is the host's stays the host's: the translation has the same numbers.
    Post(ID_SAVE_PLAYLIST);
    const HWND dialog = WaitForWindow(L"Save Playlist");
    Settle();
    EXPECT_EQ(SendMessageW(MenuBar(), TB_BUTTONCOUNT, 0, 0), 1);
    PostMessageW(dialog, WM_COMMAND, KELVO_HOST_SAVE_BUTTON, 0);
    const HWND box = NextDialog(dialog);
    EXPECT_EQ(BoxText(box), "Choose a folder or enter a name first.");
    Answer(box, IDOK);
    Answer(dialog, IDCANCEL);
  });
  Show([&] {
    Run([] { LoadLanguageLibrary(0, true); });
    GoTo(2);  // made only now, of a template in the library that the sheet holds
    EXPECT_EQ(Text(Page(), IDC_LANGUAGE), "Cymraeg");
  });
  EXPECT_FALSE(GetModuleHandleW(L"kv_mui.0503.dll"));
}

TEST_F(CatalogSheetTest, OpensWithoutAnyMemory) {
  auto faults = std::make_unique<test::HeapFaults>(0, test::HeapFaults::Mode::kFromThenOn);
  ShowAfterScan(0, [&] {
    EXPECT_EQ(Listings(""), 0) << "no memory for a folder";
    for (int page = 0; page < 3; ++page) {
      GoTo(page);
      for (const int id : {ID_CHECK_ALL, ID_ADD_CHECKED, ID_INVERT_CHECKS}) Do(id);
    }
    EXPECT_EQ(Items(), "");
    Run([&] { faults.reset(); });
    GoTo(0);
    Do(ID_RESCAN);
    EXPECT_EQ(Items(), kLists);
    AddLists();
    EXPECT_EQ(Items(), kAllSongs);
  });
}

TEST_F(CatalogSheetTest, ManyOpeningsLeaveNothingBehind) {
  // The editor and the save dialog are opened and closed, too.
  const auto open = [&](bool everything) {
    Show([&] {
      GoTo(1);
      if (everything) {
        Do(kArtists);
        SelectNode("Sine\\One");
        Post(ID_EDIT_TAG);
        Answer(L"Edit Media Description", IDCANCEL);
      }
      GoTo(2);
      if (!everything) return;
      Post(ID_SAVE_PLAYLIST);
      const HWND dialog = WaitForWindow(L"Save Playlist");
      Settle();
      Answer(dialog, IDCANCEL);
    });
    files_.log.clear();
    files_.log.shrink_to_fit();
  };
  ShowAfterScan(1, [] {});
  for (int i = 0; i < 3; ++i) open(true);  // what the system keeps from the first times on
  const test::Owned before = test::CountOwned();
  for (int i = 0; i < 30; ++i) open(i >= 24);
  EXPECT_EQ(test::Grown(before, 30), "");
}

}  // namespace
}  // namespace kelvo
