// The real windows, used by a second thread.
#include "tests/catalog/catalog_window_fixture.h"
#include "tests/support/gdi_objects.h"

namespace kelvo {
namespace {

using test::CatalogWindowTest;
using test::SheetDriver;
using test::Utf8;
using test::WaitFor;

TEST_F(CatalogWindowTest, OnlyTheFirstShowingScans) {
  ShowAfterScan(0, [] {});
  EXPECT_EQ(Scans(), 1);
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
    driver_.Do(ID_CHECK_NONE);
    EXPECT_FALSE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_INVERT_CHECKS);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
  });
  EXPECT_EQ(SheetDriver::sent(),
            "\\Music\\one.mp3;\\Music\\two.mp3;end;"
            "clear;\\Music\\one.mp3;\\Music\\two.mp3;end;1537;1536;");
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

TEST_F(CatalogWindowTest, GroupsChecksAndDeletesMedia) {
  ShowAfterScan(1, [&] {
    driver_.Do(ID_FIRST_ORDER + 5);
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n three.mp3\n");
    EXPECT_FALSE(driver_.Enabled(ID_EDIT_TAG));
    const HMENU menu =
        reinterpret_cast<HMENU>(SendMessageW(driver_.MenuBar(), SHCMBM_GETSUBMENU, 0, ID_GROUPING));
    for (UINT id = ID_FIRST_ORDER; id <= ID_LAST_ORDER; ++id) {
      EXPECT_EQ((GetMenuState(menu, id, MF_BYCOMMAND) & MF_CHECKED) != 0, id == 40030) << id;
    }
    driver_.Do(ID_CHECK_ALL);
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

TEST_F(CatalogWindowTest, EditsTags) {
  ShowAfterScan(1, [&] {
    AddLists();
    driver_.GoTo(1);
    driver_.Do(ID_FIRST_ORDER + 5);
    const HTREEITEM artist = TreeView_GetRoot(driver_.Tree());
    TreeView_SelectItem(driver_.Tree(), artist);
    driver_.Do(ID_EDIT_TAG);  // a group: nothing opens
    TreeView_SelectItem(driver_.Tree(), TreeView_GetChild(driver_.Tree(), artist));
    driver_.Post(ID_EDIT_TAG);
    const HWND editor = driver_.WaitForWindow(L"Edit Media Description");
    wchar_t text[100] = L"";
    GetDlgItemTextW(editor, IDC_TAG_TITLE, text, 100);
    EXPECT_EQ(Utf8(text), "One");
    GetDlgItemTextW(editor, IDC_TAG_FILE, text, 100);
    EXPECT_EQ(Utf8(text), "one.mp3");
    EXPECT_EQ(SendDlgItemMessageW(editor, IDC_TAG_GENRE, CB_GETCOUNT, 0, 0), 148);
    EXPECT_EQ(SendDlgItemMessageW(editor, IDC_TAG_GENRE, CB_GETCURSEL, 0, 0), 8);
    SetDlgItemTextW(editor, IDC_TAG_TITLE, L"Uno");
    SetDlgItemTextW(editor, IDC_TAG_TRACK, L"300");
    const std::string before = driver_.files.Find("\\Music\\one.mp3")->bytes;
    ASSERT_TRUE(driver_.files.Move(L"\\Music\\one.mp3", L"\\gone"));
    PostMessageW(editor, WM_COMMAND, IDC_TAG_UPDATE, 0);
    driver_.Answer(L"", IDOK);  // the message has no caption
    EXPECT_TRUE(IsWindow(editor));
    ASSERT_TRUE(driver_.files.Move(L"\\gone", L"\\Music\\one.mp3"));
    driver_.Answer(L"Edit Media Description", IDC_TAG_UPDATE);
    EXPECT_TRUE(WaitFor([&] { return driver_.Nodes().find(" Uno\n") != std::string::npos; }));
    const std::string& bytes = driver_.files.Find("\\Music\\one.mp3")->bytes;
    ASSERT_EQ(bytes.size(), before.size());
    EXPECT_EQ(bytes.substr(1, 6), "TAGUno");
    EXPECT_EQ(bytes[bytes.size() - 2], 30);
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "Uno x\nthree.mp3 x\nTwo x\n");
  });
}

TEST_F(CatalogWindowTest, SavesPlaylists) {
  driver_.files.PutFolder("\\Lists\\Deep");  // only folders with folders in them can be expanded
  ShowAfterScan(2, [&] {
    AddLists();
    const auto open = [&] {
      driver_.Post(ID_SAVE_PLAYLIST);
      const HWND dialog = driver_.WaitForWindow(L"Save Playlist");
      const HWND tree = GetDlgItem(dialog, 1000);
      EXPECT_TRUE(WaitFor([&] { return TreeView_GetCount(tree) == 3; }));
      return dialog;
    };
    const auto line = [](HWND dialog) {
      wchar_t text[300] = L"";
      GetDlgItemTextW(dialog, 1003, text, 300);
      return Utf8(text);
    };
    HWND dialog = open();
    EXPECT_EQ(line(dialog), "");
    SetDlgItemTextW(dialog, 1001, L"mix");
    EXPECT_EQ(line(dialog), "\\mix.m3u");
    SetDlgItemTextW(dialog, 1001, L"mix.txt");
    EXPECT_EQ(line(dialog), "\\mix.txt");
    SetDlgItemTextW(dialog, 1001, L"mix");
    const HWND tree = GetDlgItem(dialog, 1000);
    const HTREEITEM lists = TreeView_GetChild(tree, TreeView_GetRoot(tree));
    TreeView_Expand(tree, lists, TVE_EXPAND);
    EXPECT_EQ(TreeView_GetCount(tree), 6u) << "the folder in it, and two playlists";
    driver_.Answer(L"Save Playlist", 1002);
    ASSERT_TRUE(WaitFor([&] { return driver_.files.Find("\\mix.m3u") != nullptr; }));
    SendMessageW(driver_.Page(), WM_NULL, 0, 0);  // the file is complete
    EXPECT_EQ(driver_.files.Find("\\mix.m3u")->bytes,
              "#EXTM3U:\r\n#EXTINF:-1,Sine - One\r\n\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n"
              "#EXTINF:-1,Sine - Two\r\n\\Music\\two.mp3\r\n");
    driver_.files.Find("\\mix.m3u")->bytes = "old";
    driver_.Post(ID_SAVE_PLAYLIST);
    dialog = driver_.WaitForWindow(L"Save Playlist");
    driver_.Answer(L"Save Playlist", IDOK);  // Done: nothing is saved
    EXPECT_EQ(driver_.files.Find("\\mix.m3u")->bytes, "old");
  });
}

TEST_F(CatalogWindowTest, LeavesNothingBehind) {
  ShowAfterScan(1, [] {});
  DWORD first = 0;
  for (int i = 0; i < 4; ++i) {
    driver_.Show([&] {
      driver_.GoTo(1);
      driver_.GoTo(2);
    });
    if (i == 1) first = test::GdiObjects();
  }
  EXPECT_LE(test::GdiObjects(), first);
}

}  // namespace
}  // namespace kelvo
