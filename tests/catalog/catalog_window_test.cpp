// The real windows, used by a second thread.
#include "base/windows/registry.h"
#include "kelvo/settings.h"
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

using test::CatalogWindowTest;
using test::SheetDriver;
using test::Utf8;
using test::WaitFor;

TEST_F(CatalogWindowTest, OnlyTheFirstShowingScans) {
  static DWORD scanned;
  driver_.files.before = [](test::MemoryFiles&, const std::string& call) {
    if (call == "list \\*.*") scanned = GetTickCount();
  };
  const DWORD shown = GetTickCount();
  driver_.Show([&] { EXPECT_TRUE(WaitFor([&] { return driver_.Items() == kLists; })); });
  EXPECT_EQ(Scans(), 1);
  EXPECT_GE(scanned - shown, 480u) << "the sheet is to be seen before";
  driver_.Show([&] {
    EXPECT_EQ(driver_.Items(), "\\Lists\\a.m3u\n\\Lists\\b.pls\n");
    Sleep(700);  // longer than the first showing waits
    EXPECT_EQ(Scans(), 1);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(Scans(), 2);
  });
}

TEST_F(CatalogWindowTest, RenamesAndDeletesPlaylists) {
  ShowAfterScan(0, [&] {
    driver_.Post(ID_RENAME);  // nothing is selected
    driver_.Settle();
    driver_.Select(0);
    driver_.Post(ID_RENAME);
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    wchar_t name[100] = L"";
    GetDlgItemTextW(entry, IDC_TEXT_ENTRY, name, 100);
    EXPECT_EQ(Utf8(name), "a.m3u");
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, L"z.m3u");
    driver_.Answer(L"Edit File Name", IDOK);
    EXPECT_TRUE(WaitFor([&] { return driver_.Items() == "\\Lists\\z.m3u *\n\\Lists\\b.pls\n"; }));
    EXPECT_TRUE(driver_.files.Find("\\Lists\\z.m3u"));

    driver_.Post(ID_DELETE_FILE);
    driver_.Answer(L"Delete File", IDNO);
    EXPECT_TRUE(driver_.files.Find("\\Lists\\z.m3u"));
    driver_.files.Find("\\Lists\\z.m3u")->attributes = kAttributeReadOnly;
    driver_.Post(ID_DELETE_FILE);
    driver_.Answer(L"Delete File", IDYES);
    EXPECT_EQ(driver_.Items(), "\\Lists\\z.m3u *\n\\Lists\\b.pls\n") << "could not be deleted";
    driver_.files.Find("\\Lists\\z.m3u")->attributes = kAttributeNormal;
    driver_.Post(ID_DELETE_FILE);
    driver_.Answer(L"Delete File", IDYES);
    EXPECT_TRUE(WaitFor([&] { return driver_.Items() == "\\Lists\\b.pls\n"; }));
    driver_.Select(0);
    driver_.Post(ID_DELETE_FILE);
    driver_.Answer(L"Delete File", IDYES);
    EXPECT_TRUE(WaitFor([&] { return driver_.Items().empty(); }));
    EXPECT_FALSE(driver_.files.Find("\\Lists\\b.pls"));
  });
}

TEST_F(CatalogWindowTest, ChecksPlaylistsAndAddsThemInTheListsOrder) {
  driver_.files.Put("\\A.asx", "<REF HREF = \"\\Music\\two.mp3\">\r\n");
  driver_.Show([&] {
    ScanNow();
    ASSERT_TRUE(WaitFor([&] { return driver_.Items().find("b.pls") != std::string::npos; }));
    const struct {
      int command;
      const char* want;
    } steps[] = {
        {ID_CHECK_ALL, "\\A.asx x\n\\Lists\\a.m3u x\n\\Lists\\b.pls x\n"},
        {ID_INVERT_CHECKS, "\\A.asx\n\\Lists\\a.m3u\n\\Lists\\b.pls\n"},
        {ID_ADD_CHECKED, "\\A.asx\n\\Lists\\a.m3u\n\\Lists\\b.pls\n"},
        {ID_INVERT_CHECKS, "\\A.asx x\n\\Lists\\a.m3u x\n\\Lists\\b.pls x\n"},
        {ID_ADD_CHECKED, "\\A.asx x\n\\Lists\\a.m3u x\n\\Lists\\b.pls x\n"},
        {ID_CHECK_NONE, "\\A.asx\n\\Lists\\a.m3u\n\\Lists\\b.pls\n"},
    };
    for (const auto& step : steps) {
      driver_.Do(step.command);
      EXPECT_EQ(driver_.Items(), step.want) << step.command;
    }
    driver_.Check(1, true);
    driver_.Do(ID_ADD_CHECKED);  // once more: its songs are in the list twice then
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "Two x\nOne x\nthree.mp3 x\nTwo x\nOne x\nthree.mp3 x\n");
  });
}

TEST_F(CatalogWindowTest, TellsTheHostWhatToPlay) {
  ShowAfterScan(2, [&] {
    for (const int id : {ID_PLAY, ID_ENQUEUE, ID_SAVE_PLAYLIST, ID_REMOVE_SELECTED}) {
      EXPECT_FALSE(driver_.Enabled(id)) << id;
    }
    AddLists();
    EXPECT_EQ(driver_.Items(), "One x\nthree.mp3 x\nTwo x\n");
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    EXPECT_FALSE(driver_.Enabled(ID_MOVE_UP));
    driver_.Check(1, false);
    driver_.Do(ID_ENQUEUE);
    driver_.Do(ID_PLAY);
    driver_.Settle();
    driver_.Do(ID_CHECK_NONE);
    EXPECT_FALSE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_PLAY);
    driver_.Settle();
    driver_.Do(ID_ENQUEUE);
    driver_.Do(ID_INVERT_CHECKS);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_CHECK_ALL);
    driver_.Run([&] { driver_.feature.SetHostCallback(nullptr, 42); });
    driver_.Do(ID_PLAY);
    driver_.Settle();
  });
  EXPECT_EQ(SheetDriver::sent(),
            "\\Music\\one.mp3;\\Music\\two.mp3;end;"
            "clear;\\Music\\one.mp3;\\Music\\two.mp3;end;1537;1536;"
            "clear;end;1537;1536;end;");
}

TEST_F(CatalogWindowTest, EditsTheCurrentPlaylist) {
  ShowAfterScan(2, [&] {
    AddLists();
    driver_.Check(1, false);
    driver_.Select(1);
    EXPECT_TRUE(driver_.Enabled(ID_MOVE_UP));
    driver_.Do(ID_MOVE_UP);
    EXPECT_EQ(driver_.Items(), "three.mp3 *\nOne x\nTwo x\n");
    driver_.Do(ID_MOVE_UP);
    EXPECT_EQ(driver_.Items(), "three.mp3 *\nOne x\nTwo x\n");
    driver_.Do(ID_MOVE_DOWN);
    driver_.Do(ID_MOVE_DOWN);
    driver_.Do(ID_MOVE_DOWN);
    EXPECT_EQ(driver_.Items(), "One x\nTwo x\nthree.mp3 *\n");
    driver_.Do(ID_INVERT_SELECTION);
    EXPECT_EQ(driver_.Items(), "One x *\nTwo x *\nthree.mp3\n");
    driver_.Do(ID_SELECT_NONE);
    NMLISTVIEW tap = {};
    tap.hdr = {driver_.List(), IDC_LIST, static_cast<UINT>(LVN_COLUMNCLICK)};
    for (const char* want : {"One x\nthree.mp3\nTwo x\n", "Two x\nthree.mp3\nOne x\n"}) {
      SendMessageW(driver_.Page(), WM_NOTIFY, IDC_LIST, reinterpret_cast<LPARAM>(&tap));
      EXPECT_EQ(driver_.Items(), want);
    }
    driver_.Do(ID_ENQUEUE);
    driver_.Select(0);
    driver_.Select(2);
    driver_.Do(ID_REMOVE_SELECTED);
    EXPECT_EQ(driver_.Items(), "three.mp3\n");
    driver_.Do(ID_SELECT_ALL);
    driver_.Do(ID_REMOVE_SELECTED);
    EXPECT_EQ(driver_.Items(), "");
    EXPECT_FALSE(driver_.Enabled(ID_REMOVE_SELECTED));
  });
  EXPECT_EQ(SheetDriver::sent(), "\\Music\\two.mp3;\\Music\\one.mp3;end;");
}

TEST_F(CatalogWindowTest, GroupsInEveryOrderAndMarksIt) {
  driver_.files.PutFolder("\\Music\\B");
  driver_.files.PutFolder("\\Music\\a");
  driver_.files.Put("\\Music\\B\\one.mp3", test::Id3v1Tag("Eins", "SINE", "Waves", 9));
  driver_.files.Put("\\Music\\a\\two.mp3", test::Id3v1Tag("Zwei", "Sine", "Zeta", 8));
  const char* const want[] = {
      "Jazz\n Sine\n  Waves\n   One\n   Two\n  Zeta\n   Zwei\n"
      "Metal\n SINE\n  Waves\n   Eins\nUnknown\n Unknown\n  Unknown\n   three.mp3\n",
      "Jazz\n Waves\n  Sine\n   One\n   Two\n Zeta\n  Sine\n   Zwei\n"
      "Metal\n Waves\n  SINE\n   Eins\nUnknown\n Unknown\n  Unknown\n   three.mp3\n",
      "Sine\n Waves\n  Eins\n  One\n  Two\n Zeta\n  Zwei\nUnknown\n Unknown\n  three.mp3\n",
      "Unknown\n Unknown\n  three.mp3\nWaves\n Sine\n  Eins\n  One\n  Two\nZeta\n Sine\n  Zwei\n",
      "Unknown\n three.mp3\nWaves\n Eins\n One\n Two\nZeta\n Zwei\n",
      "Sine\n Eins\n One\n Two\n Zwei\nUnknown\n three.mp3\n",
      "Music\n a\n  two.mp3\n B\n  one.mp3\n one.mp3\n three.mp3\n two.mp3\n",
  };
  ShowAfterScan(1, [&] {
    const HMENU menu =
        reinterpret_cast<HMENU>(SendMessageW(driver_.MenuBar(), SHCMBM_GETSUBMENU, 0, ID_GROUPING));
    for (int i = 0; i < 7; ++i) {
      driver_.Do(ID_FIRST_ORDER + i);
      EXPECT_EQ(driver_.Nodes(), want[i]) << i;
      for (int other = 0; other < 7; ++other) {
        const UINT state =
            GetMenuState(menu, static_cast<UINT>(ID_FIRST_ORDER + other), MF_BYCOMMAND);
        EXPECT_EQ((state & MF_CHECKED) != 0, i == other) << i << ", " << other;
      }
      EXPECT_FALSE(driver_.Enabled(ID_EDIT_TAG)) << i;
    }
    driver_.Run([&] { driver_.files.Delete(L"\\Music\\B\\one.mp3"); });
    driver_.Do(ID_RESCAN);  // on this page, too
    EXPECT_EQ(driver_.Nodes(), "Music\n a\n  two.mp3\n one.mp3\n three.mp3\n two.mp3\n");
    driver_.Do(ID_FIRST_ORDER);
  });
}

TEST_F(CatalogWindowTest, KeepsTheOrderInTheRegistry) {
  const RegistryKey settings = RegistryKey::OpenOrCreate(kSettingsKey);
  HKEY key;
  ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_SET_VALUE, &key), ERROR_SUCCESS);
  ShowAfterScan(0, [] {});
  const char* const by_genre =
      "Jazz\n Sine\n  Waves\n   One\n   Two\nUnknown\n Unknown\n  Unknown\n   three.mp3\n";
  const struct {
    const char* name;
    DWORD type;
    DWORD stored;
    const char* nodes;
    uint32_t kept;
  } cases[] = {
      {"none", REG_NONE, 0, by_genre, 1},
      {"artists", REG_DWORD, 6, "Sine\n One\n Two\nUnknown\n three.mp3\n", 6},
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
    });
    uint32_t kept = 0;
    EXPECT_TRUE(settings.ReadNumber(L"CatType", &kept));
    EXPECT_EQ(kept, c.kept);
  }
  RegDeleteValueW(key, L"CatType");
  RegCloseKey(key);
}

TEST_F(CatalogWindowTest, IsShownOnceAtATime) {
  ShowAfterScan(0, [&] {
    driver_.Run(
        [&] { EXPECT_EQ(driver_.feature.ShowCatalog(driver_.host(), driver_.parent()), 0); });
    EXPECT_EQ(driver_.Items(), kLists);
  });
}

TEST_F(CatalogWindowTest, GroupsChecksAndDeletesMedia) {
  ShowAfterScan(1, [&] {
    driver_.Do(ID_FIRST_ORDER + 5);
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n three.mp3\n");
    EXPECT_FALSE(driver_.Enabled(ID_EDIT_TAG));
    driver_.Do(ID_CHECK_ALL);
    EXPECT_EQ(driver_.Nodes(), "Sine x\n One x\n Two x\nUnknown x\n three.mp3 x\n");
    driver_.Do(ID_CHECK_NONE);
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n three.mp3\n");
    driver_.Do(ID_INVERT_CHECKS);
    EXPECT_EQ(driver_.Nodes(), "Sine x\n One x\n Two x\nUnknown x\n three.mp3 x\n");
    driver_.Do(ID_ADD_CHECKED);
    driver_.Do(ID_INVERT_CHECKS);
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n three.mp3\n");

    const HTREEITEM last =
        TreeView_GetNextSibling(driver_.Tree(), TreeView_GetRoot(driver_.Tree()));
    TreeView_SelectItem(driver_.Tree(), last);
    EXPECT_FALSE(driver_.Enabled(ID_DELETE_FILE));
    TreeView_SelectItem(driver_.Tree(), TreeView_GetChild(driver_.Tree(), last));
    EXPECT_TRUE(WaitFor([&] { return driver_.Enabled(ID_DELETE_FILE); }));
    driver_.Post(ID_DELETE_FILE);
    driver_.Answer(L"Delete File", IDNO);
    EXPECT_TRUE(driver_.files.Find("\\Music\\three.mp3"));
    driver_.Post(ID_DELETE_FILE);
    driver_.Answer(L"Delete File", IDYES);
    EXPECT_TRUE(WaitFor([&] { return driver_.Nodes() == "Sine\n One\n Two\n"; }));
    EXPECT_FALSE(driver_.files.Find("\\Music\\three.mp3"));
    driver_.Do(ID_LAST_ORDER);
    EXPECT_EQ(driver_.Nodes(), "Music\n one.mp3\n two.mp3\n");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nTwo x\nthree.mp3 x\n");
  });
  driver_.Show([&] {  // the order was kept
    driver_.GoTo(1);
    EXPECT_EQ(driver_.Nodes(), "Music\n one.mp3\n two.mp3\n");
    driver_.Do(ID_FIRST_ORDER);
  });
}

}  // namespace
}  // namespace kelvo
