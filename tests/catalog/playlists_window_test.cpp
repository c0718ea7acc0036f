// The pages of playlists: those of the device, and the one that is put together.
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

class PlaylistsPageTest : public test::CatalogWindowTest {
 protected:
  void Rename(const std::string& shown, const std::string& name, int answer = IDOK) {
    driver_.Post(ID_RENAME);
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    EXPECT_EQ(driver_.Text(entry, IDC_TEXT_ENTRY), shown);
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, test::Wide(name));
    driver_.Answer(entry, answer);
  }
  void ExpectNothingToPlay() {
    for (const int id : {ID_PLAY, ID_ENQUEUE, ID_SAVE_PLAYLIST}) {
      EXPECT_FALSE(driver_.Enabled(id)) << id;
    }
  }
};

TEST_F(PlaylistsPageTest, ChecksPlaylistsAndAddsThemInTheListsOrder) {
  driver_.files.Put("\\A.asx", "<REF HREF = \"\\Music\\two.mp3\">\r\n");
  ShowAfterScan(0, [&] {
    const std::string none = "\\A.asx\n\\Lists\\a.m3u\n\\Lists\\b.pls\n";
    const std::string all = "\\A.asx x\n\\Lists\\a.m3u x\n\\Lists\\b.pls x\n";
    const struct {
      int command;
      const std::string& want;
    } steps[] = {
        {ID_CHECK_ALL, all},     {ID_INVERT_CHECKS, none}, {ID_ADD_CHECKED, none},
        {ID_INVERT_CHECKS, all}, {ID_ADD_CHECKED, all},    {ID_CHECK_NONE, none},
    };
    for (const auto& step : steps) {
      driver_.Do(step.command);
      EXPECT_EQ(driver_.Items(), step.want) << step.command;
    }
    // Once more; and one that is called like a song now is no playlist, whatever lies there.
    driver_.Select(2);
    Rename("b.pls", "b.mp3");
    driver_.Check(1, true);
    driver_.Check(2, true);
    driver_.Do(ID_ADD_CHECKED);
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "Two x\nOne x\nthree.mp3 x\nTwo x\nOne x\nthree.mp3 x\n");
  });
}

TEST_F(PlaylistsPageTest, LongNamesAreReachable) {
  const std::string longest = "\\Lists\\" + std::string(60, 'w') + "the end.m3u";
  driver_.files.Put(longest, "");
  ShowAfterScan(0, [&] {
    const int wide = ListView_GetColumnWidth(driver_.List(), 0);
    RECT client = {};
    GetClientRect(driver_.List(), &client);
    EXPECT_GE(wide, ListView_GetStringWidth(driver_.List(), test::Wide(longest)));
    EXPECT_GT(wide, client.right);
    driver_.Select(2);
    Rename(longest.substr(7), "c.m3u");
    EXPECT_EQ(ListView_GetColumnWidth(driver_.List(), 0), client.right);
  });
}

WNDPROC g_list_procedure;

LRESULT CALLBACK RefuseTheFirstItem(HWND list, UINT message, WPARAM wparam, LPARAM lparam) {
  const bool first =
      message == LVM_INSERTITEMW && reinterpret_cast<const LVITEMW*>(lparam)->lParam == 0;
  return first ? -1 : CallWindowProcW(g_list_procedure, list, message, wparam, lparam);
}

TEST_F(PlaylistsPageTest, FillingStopsAtAnItemThatFails) {
  ShowAfterScan(0, [&] {
    const auto set_procedure = [&](WNDPROC procedure) {
      driver_.Run([&] {
        g_list_procedure = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(driver_.List(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
      });
    };
    set_procedure(&RefuseTheFirstItem);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Items(), "");
    set_procedure(g_list_procedure);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Items(), kLists);
  });
}

TEST_F(PlaylistsPageTest, ItemsKeepTheirFilesWhenOneGoes) {
  for (const char* name : {"c", "d", "e"}) {
    driver_.files.Put("\\Lists\\" + std::string(name) + ".m3u", "\\Music\\one.mp3\r\n");
  }
  driver_.files.Put("\\Lists\\A0.m3u", "\\Music\\two.mp3\r\n");  // first in the sorted list
  const std::string lists =
      "\\Lists\\A0.m3u\n\\Lists\\b.pls\n\\Lists\\c.m3u\n\\Lists\\d.m3u\n\\Lists\\e.m3u\n";
  ShowAfterScan(0, [&] {
    driver_.Select(1);
    Delete("\\Lists\\A0.m3u", IDNO);
    Rename("A0.m3u", "unused.m3u", IDCANCEL);
    driver_.Run([&] { driver_.files.Find("\\Lists\\A0.m3u")->attributes = kAttributeReadOnly; });
    Delete("\\Lists\\A0.m3u");
    EXPECT_EQ(driver_.Items().substr(0, 32), "\\Lists\\a.m3u\n\\Lists\\A0.m3u *\n\\Li");
    driver_.Select(0);
    Delete("\\Lists\\a.m3u");
    EXPECT_EQ(driver_.Items(), lists);
    driver_.Check(0, true);
    driver_.Check(1, true);
    driver_.Do(ID_ADD_CHECKED);  // each item still stands for its own file
    driver_.Select(4);
    Rename("e.m3u", "zz.m3u");
    EXPECT_TRUE(driver_.Exists("\\Lists\\zz.m3u"));
    driver_.Select(2);
    Delete("\\Lists\\c.m3u");
    driver_.Select(3);
    Delete("\\Lists\\zz.m3u");
    EXPECT_EQ(driver_.Items(), "\\Lists\\A0.m3u x\n\\Lists\\b.pls x\n\\Lists\\d.m3u\n");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "Two x\nTwo x\n");
  });
}

TEST_F(PlaylistsPageTest, ANewNameIsShownEvenWhenTheFileCouldNotMove) {
  ShowAfterScan(0, [&] {
    for (const int command : {ID_RENAME, ID_DELETE_FILE}) {
      driver_.Post(command);
      driver_.Settle();
      EXPECT_FALSE(driver_.AnythingOpened()) << command << ": nothing is selected";
    }
    ListView_SetSelectionMark(driver_.List(), 1);  // counts for a new name alone
    driver_.Post(ID_DELETE_FILE);
    driver_.Settle();
    EXPECT_FALSE(driver_.AnythingOpened());
    Rename("b.pls", "unused", IDCANCEL);
    driver_.Select(0);
    driver_.Post(ID_RENAME);
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, L"");
    SendMessageW(entry, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(IsWindow(entry)) << "an empty name is not taken";
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, L"b.pls");  // there is one
    driver_.Answer(entry, IDOK);
    EXPECT_EQ(driver_.Items(), "\\Lists\\b.pls *\n\\Lists\\b.pls\n");
    EXPECT_TRUE(driver_.Exists("\\Lists\\a.m3u"));
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Items(), kLists);
    driver_.Select(1);
    Rename("b.pls", "0.pls");
    EXPECT_EQ(driver_.Items(), "\\Lists\\a.m3u\n\\Lists\\0.pls *\n") << "where it stood";
    EXPECT_EQ(driver_.BytesOf("\\Lists\\0.pls"), "File1=\\Music\\two.mp3\r\n");
  });
}

TEST_F(PlaylistsPageTest, HoldingAPlaylistOffersItsCommands) {
  ShowAfterScan(0, [&] {
    const std::string commands = "Rename file 40021\nDelete file 40023\n";
    const HWND list = driver_.List();
    const POINT first = driver_.PartOf(list, 0, LVHT_ONITEMLABEL);
    driver_.Hold(list, driver_.PartOf(list, 1, LVHT_ONITEMLABEL));
    EXPECT_EQ(driver_.MenuItems(), commands);
    EXPECT_EQ(driver_.Items(), "\\Lists\\a.m3u\n\\Lists\\b.pls *\n");
    driver_.ChooseMenuItem(1);
    driver_.Lift();
    driver_.Answer(L"Delete File", IDNO);
    EXPECT_TRUE(driver_.Exists("\\Lists\\b.pls"));

    driver_.StartTap(list, first, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_EQ(driver_.MenuItems(), commands);
    driver_.ChooseMenuItem(0);
    driver_.Answer(L"Edit File Name", IDCANCEL);
    driver_.StartTap(list, first, WM_RBUTTONDOWN, WM_RBUTTONUP);
    driver_.LeaveMenu();
    driver_.Hold(list, {100, 150});  // below the items: nothing is selected any more
    driver_.Settle();
    EXPECT_FALSE(driver_.Menu());
    EXPECT_EQ(driver_.Items(), kLists);
    driver_.Lift();
  });
}

class CurrentPageTest : public PlaylistsPageTest {};

TEST_F(CurrentPageTest, TellsTheHostWhatToPlay) {
  ShowAfterScan(2, [&] {
    ExpectNothingToPlay();
    EXPECT_FALSE(driver_.Enabled(ID_REMOVE_SELECTED));
    AddLists();
    EXPECT_EQ(driver_.Items(), kAllSongs);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    EXPECT_FALSE(driver_.Enabled(ID_MOVE_UP));
    driver_.Check(1, false);
    driver_.Do(ID_ENQUEUE);
    driver_.Do(ID_PLAY);
    driver_.Settle();
    driver_.Do(ID_CHECK_NONE);
    ExpectNothingToPlay();
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
  EXPECT_EQ(driver_.sent(),
            "\\Music\\one.mp3;\\Music\\two.mp3;end;"
            "clear;\\Music\\one.mp3;\\Music\\two.mp3;end;1537(0,0);1536(0,0);"
            "clear;end;1537(0,0);1536(0,0);end;");
}

TEST_F(CurrentPageTest, MovesSelectsAndRemoves) {
  ShowAfterScan(2, [&] {
    AddLists();
    driver_.Check(1, false);
    driver_.Select(1);
    EXPECT_TRUE(driver_.Enabled(ID_MOVE_UP));
    const struct {
      int command;
      const char* want;
    } steps[] = {
        {ID_MOVE_UP, "three.mp3 *\nOne x\nTwo x\n"},
        {ID_MOVE_UP, "three.mp3 *\nOne x\nTwo x\n"},
        {ID_MOVE_DOWN, "One x\nthree.mp3 *\nTwo x\n"},
        {ID_MOVE_DOWN, "One x\nTwo x\nthree.mp3 *\n"},
        {ID_MOVE_DOWN, "One x\nTwo x\nthree.mp3 *\n"},
        {ID_INVERT_SELECTION, "One x *\nTwo x *\nthree.mp3\n"},
        {ID_ENQUEUE, "One x *\nTwo x *\nthree.mp3\n"},
        {ID_REMOVE_SELECTED, "three.mp3\n"},
        {ID_SELECT_ALL, "three.mp3 *\n"},
        {ID_SELECT_NONE, "three.mp3\n"},
    };
    for (const auto& step : steps) {
      driver_.Do(step.command);
      EXPECT_EQ(driver_.Items(), step.want) << step.command;
      EXPECT_EQ(driver_.Enabled(ID_REMOVE_SELECTED),
                std::string(step.want).find('*') != std::string::npos);
    }
    ExpectNothingToPlay();
    driver_.Do(ID_SELECT_ALL);
    driver_.Do(ID_REMOVE_SELECTED);
    EXPECT_EQ(driver_.Items(), "");
    EXPECT_FALSE(driver_.Enabled(ID_REMOVE_SELECTED));
  });
  EXPECT_EQ(driver_.sent(), "\\Music\\one.mp3;\\Music\\two.mp3;end;");
}

TEST_F(CurrentPageTest, ColumnsShowAndSortTheirTexts) {
  driver_.files.Put("\\Music\\two.mp3", test::Id3v1Tag("Two", "square", "Alb", 1));
  ShowAfterScan(2, [&] {
    AddLists();
    EXPECT_EQ(driver_.Columns(driver_.List()), "Title 150|Artist 60|Album 150|Genre 80");
    std::string cells;
    for (int i = 0; i < 3; ++i) {
      for (int column = 0; column < 4; ++column) {
        cells += driver_.Cell(driver_.List(), i, column) + "|";
      }
    }
    EXPECT_EQ(cells,
              "One|Sine|Waves|Jazz|three.mp3|Unknown|Unknown|Unknown|Two|square|Alb|Classic Rock|");
    const struct {
      int column;
      const char* want;
    } taps[] = {
        {2, "Two x\nthree.mp3 x\nOne x\n"}, {3, "Two x\nOne x\nthree.mp3 x\n"},
        {3, "three.mp3 x\nOne x\nTwo x\n"}, {1, "One x\nTwo x\nthree.mp3 x\n"},
        {0, "One x\nthree.mp3 x\nTwo x\n"},
    };
    for (const auto& tap : taps) {
      driver_.TapHeader(driver_.List(), tap.column);
      EXPECT_EQ(driver_.Items(), tap.want) << tap.column;
    }
  });
  driver_.Show([&] {  // the second tap on it turns the order round
    driver_.GoTo(2);
    driver_.TapHeader(driver_.List(), 0);
    EXPECT_EQ(driver_.Items(), "Two x\nthree.mp3 x\nOne x\n");
    driver_.Do(ID_ENQUEUE);
  });
  EXPECT_EQ(driver_.sent(), "\\Music\\two.mp3;\\Music\\three.mp3;\\Music\\one.mp3;end;");
}

TEST_F(CurrentPageTest, TapsOnBoxes) {
  ShowAfterScan(2, [&] {
    AddLists();
    driver_.TapList(driver_.List(), 1, LVHT_ONITEMSTATEICON);
    driver_.TapList(driver_.List(), 2, LVHT_ONITEMSTATEICON);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_ENQUEUE);
    driver_.TapList(driver_.List(), 0, LVHT_ONITEMSTATEICON);
    ExpectNothingToPlay();
    driver_.TapList(driver_.List(), 2, LVHT_ONITEMSTATEICON);
    driver_.Do(ID_ENQUEUE);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_SELECT_NONE);
    driver_.TapList(driver_.List(), 1, LVHT_ONITEMLABEL);
    EXPECT_EQ(driver_.Items(), "One\nthree.mp3 *\nTwo x\n");
    EXPECT_TRUE(driver_.Enabled(ID_MOVE_UP));
  });
  EXPECT_EQ(driver_.sent(), "\\Music\\one.mp3;end;\\Music\\two.mp3;end;");
}

}  // namespace
}  // namespace kelvo
