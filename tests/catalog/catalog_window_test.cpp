// The real windows, used by a second thread.
#include "tests/catalog/catalog_window_fixture.h"

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

}  // namespace
}  // namespace kelvo
