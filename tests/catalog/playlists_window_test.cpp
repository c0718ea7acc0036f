// The pages of playlists: those of the device, and the one that is put together.
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

class PlaylistsPageTest : public test::CatalogWindowTest {
 protected:
  // Answers the dialog for a new name, which shows the old one; false when it stays open.
  bool Rename(const std::string& shown, const std::string& name, int answer = IDOK) {
    Post(ID_RENAME);
    const HWND entry = WaitForWindow(L"Edit File Name");
    EXPECT_EQ(Text(entry, IDC_TEXT_ENTRY), shown);
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, test::Wide(name));
    SendMessageW(entry, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    if (IsWindow(entry) && IsWindowVisible(entry)) return Answer(entry, IDCANCEL), false;
    Settle();
    return true;
  }
};

TEST_F(PlaylistsPageTest, ChecksPlaylistsAndAddsThemInTheListsOrder) {
  files_.Put("\\A.asx", "<REF HREF = \"\\Music\\two.mp3\">\r\n");
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
      Do(step.command);
      EXPECT_EQ(Items(), step.want) << step.command;
    }
    // Once more; and one that is called like a song now is no playlist, whatever lies there.
    Select(2);
    Rename("b.pls", "b.mp3");
    Check(1);
    Check(2);
    Do(ID_ADD_CHECKED);
    GoTo(2);
    EXPECT_EQ(Items(), "Two x\nOne x\nthree.mp3 x\nTwo x\nOne x\nthree.mp3 x\n");
  });
}

TEST_F(PlaylistsPageTest, LongNamesAreReachable) {
  const std::string longest = "\\Lists\\" + std::string(60, 'w') + "the end.m3u";
  files_.Put(longest, "");
  ShowAfterScan(0, [&] {
    const int wide = ListView_GetColumnWidth(List(), 0);
    RECT client = {};
    GetClientRect(List(), &client);
    EXPECT_GE(wide, ListView_GetStringWidth(List(), test::Wide(longest)));
    EXPECT_GT(wide, client.right);
    Select(2);
    Rename(longest.substr(7), "c.m3u");
    EXPECT_EQ(ListView_GetColumnWidth(List(), 0), client.right);
  });
}

TEST_F(PlaylistsPageTest, ItemsKeepTheirFilesWhenOneGoes) {
  for (const char* name : {"c", "d", "e"}) {
    files_.Put("\\Lists\\" + std::string(name) + ".m3u", "\\Music\\one.mp3\r\n");
  }
  files_.Put("\\Lists\\A0.m3u", "\\Music\\two.mp3\r\n");  // first in the sorted list
  ShowAfterScan(0, [&] {
    Select(1);
    Delete("\\Lists\\A0.m3u", IDNO);
    Guard("\\Lists\\A0.m3u");
    Delete("\\Lists\\A0.m3u");
    EXPECT_EQ(Items().substr(0, 32), "\\Lists\\a.m3u\n\\Lists\\A0.m3u *\n\\Li");
    Select(0);
    Delete("\\Lists\\a.m3u");
    EXPECT_EQ(Items(),
              "\\Lists\\A0.m3u\n\\Lists\\b.pls\n\\Lists\\c.m3u\n\\Lists\\d.m3u\n\\Lists\\e.m3u\n");
    Check(0);
    Check(1);
    Do(ID_ADD_CHECKED);  // each item still stands for its own file
    Select(4);
    Rename("e.m3u", "zz.m3u");
    EXPECT_TRUE(Exists("\\Lists\\zz.m3u"));
    Select(2);
    Delete("\\Lists\\c.m3u");
    Select(3);
    Delete("\\Lists\\zz.m3u");
    EXPECT_EQ(Items(), "\\Lists\\A0.m3u x\n\\Lists\\b.pls x\n\\Lists\\d.m3u\n");
    GoTo(2);
    EXPECT_EQ(Items(), "Two x\nTwo x\n");
  });
}

TEST_F(PlaylistsPageTest, ANewNameIsShownEvenWhenTheFileCouldNotMove) {
  ShowAfterScan(0, [&] {
    for (const int command : {ID_RENAME, ID_DELETE_FILE}) ExpectIgnored(command);
    ListView_SetSelectionMark(List(), 1);  // counts for a new name alone
    ExpectIgnored(ID_DELETE_FILE);
    EXPECT_TRUE(Rename("b.pls", "unused", IDCANCEL));
    Select(0);
    EXPECT_FALSE(Rename("a.m3u", "")) << "an empty name is not taken";
    EXPECT_TRUE(Rename("a.m3u", "b.pls"));  // there is one
    EXPECT_EQ(Items(), "\\Lists\\b.pls *\n\\Lists\\b.pls\n");
    EXPECT_TRUE(Exists("\\Lists\\a.m3u"));
    Do(ID_RESCAN);
    EXPECT_EQ(Items(), kLists);
    Select(1);
    Rename("b.pls", "0.pls");
    EXPECT_EQ(Items(), "\\Lists\\a.m3u\n\\Lists\\0.pls *\n") << "where it stood";
    EXPECT_EQ(BytesOf("\\Lists\\0.pls"), "File1=\\Music\\two.mp3\r\n");
    Post(ID_RENAME);
    const HWND entry = WaitForWindow(L"Edit File Name");
    for (const wchar_t letter : {L'm', L'i', L'x'}) {
      SendDlgItemMessageW(entry, IDC_TEXT_ENTRY, WM_CHAR, letter, 0);
    }
    Answer(entry, IDOK);
    EXPECT_TRUE(Exists("\\Lists\\mix.pls")) << "what is typed leaves the extension";
  });
}

TEST_F(PlaylistsPageTest, HoldingAPlaylistOffersItsCommands) {
  ShowAfterScan(0, [&] {
    const std::string commands = "Rename file 40021\nDelete file 40023\n";
    const POINT first = PartOf(List(), 0, LVHT_ONITEMLABEL);
    Hold(List(), PartOf(List(), 1, LVHT_ONITEMLABEL));
    EXPECT_EQ(MenuItems(), commands);
    EXPECT_EQ(Items(), "\\Lists\\a.m3u\n\\Lists\\b.pls *\n");
    ChooseMenuItem(1);
    Lift();
    Answer(L"Delete File", IDNO);
    EXPECT_TRUE(Exists("\\Lists\\b.pls"));

    StartTap(List(), first, WM_RBUTTONDOWN, WM_RBUTTONUP);
    EXPECT_EQ(MenuItems(), commands);
    ChooseMenuItem(0);
    Answer(L"Edit File Name", IDCANCEL);
    PostMessageW(List(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(List()), -1);  // by a key
    EXPECT_EQ(MenuItems(), commands);
    LeaveMenu();
    Hold(List(), {100, 150});  // below the items: nothing is selected any more
    Settle();
    EXPECT_FALSE(Menu());
    EXPECT_EQ(Items(), kLists);
    Lift();
  });
}

class CurrentPageTest : public PlaylistsPageTest {
 protected:
  // The items, and which of the commands are there: to play, to move, to remove.
  std::string Shown() const {
    for (const int id : {ID_ENQUEUE, ID_SAVE_PLAYLIST}) EXPECT_EQ(Enabled(id), Enabled(ID_PLAY));
    return Items() + (Enabled(ID_PLAY) ? "P" : "") + (Enabled(ID_MOVE_UP) ? "M" : "") +
           (Enabled(ID_REMOVE_SELECTED) ? "R" : "");
  }
};

TEST_F(CurrentPageTest, CommandsFollowWhatIsCheckedAndSelected) {
  ShowAfterScan(2, [&] {
    EXPECT_EQ(Shown(), "");
    AddLists();
    EXPECT_EQ(Shown(), std::string(kAllSongs) + "P");
    constexpr UINT kBox = LVHT_ONITEMSTATEICON, kLabel = LVHT_ONITEMLABEL;
    const struct {
      int command;  // or an item, of which a part is tapped
      UINT part;
      const char* want;
    } steps[] = {
        {1, kBox, "One x\nthree.mp3\nTwo x\nP"},
        {1, kLabel, "One x\nthree.mp3 *\nTwo x\nPMR"},
        {ID_MOVE_UP, 0, "three.mp3 *\nOne x\nTwo x\nPMR"},
        {ID_MOVE_DOWN, 0, "One x\nthree.mp3 *\nTwo x\nPMR"},
        {ID_MOVE_DOWN, 0, "One x\nTwo x\nthree.mp3 *\nPMR"},
        {0, kBox, "One\nTwo x\nthree.mp3 *\nPMR"},
        {1, kBox, "One\nTwo\nthree.mp3 *\nMR"},
        {ID_INVERT_CHECKS, 0, "One x\nTwo x\nthree.mp3 x *\nPMR"},
        {ID_CHECK_NONE, 0, "One\nTwo\nthree.mp3 *\nMR"},
        {ID_CHECK_ALL, 0, "One x\nTwo x\nthree.mp3 x *\nPMR"},
        {ID_INVERT_SELECTION, 0, "One x *\nTwo x *\nthree.mp3 x\nPMR"},
        {ID_REMOVE_SELECTED, 0, "three.mp3 x\nP"},
        {0, VK_RETURN, "three.mp3\n"},
        {0, WM_LBUTTONDBLCLK, "three.mp3 x\nP"},
        {ID_SELECT_ALL, 0, "three.mp3 x *\nPMR"},
        {ID_SELECT_NONE, 0, "three.mp3 x\nP"},
        {ID_SELECT_ALL, 0, "three.mp3 x *\nPMR"},
        {ID_REMOVE_SELECTED, 0, ""},
    };
    for (const auto& step : steps) {
      if (step.part == VK_RETURN) {
        Key(List(), VK_RETURN);
        Settle();
      } else if (step.part == WM_LBUTTONDBLCLK) {
        StartTap(List(), PartOf(List(), step.command, kLabel), WM_LBUTTONDBLCLK);
        Settle();
      } else {
        step.part ? TapList(step.command, step.part) : Do(step.command);
      }
      EXPECT_EQ(Shown(), step.want) << step.command;
    }
  });
}

TEST_F(CurrentPageTest, WhatMovesStaysInSight) {
  std::string list;
  for (int i = 0; i < 60; ++i) list += "\\Music\\one.mp3\r\n";
  files_.Put("\\Lists\\a.m3u", list);
  ShowAfterScan(2, [&] {
    AddLists();
    const int last = ListView_GetItemCount(List()) - 1;
    const struct {
      int command, from, rest;  // both are selected; `from` goes ahead
      int in_sight;             // before: the other end
      int want;                 // -1: nothing moves
    } cases[] = {{ID_MOVE_UP, 40, last, 0, 39},
                 {ID_MOVE_DOWN, 20, 0, last, 21},
                 {ID_MOVE_UP, 0, 20, last, -1},
                 {ID_MOVE_DOWN, last, 40, 0, -1}};
    for (const auto& c : cases) {
      Do(ID_SELECT_NONE);
      for (const int item : {c.from, c.rest}) Select(item);
      ListView_EnsureVisible(List(), c.in_sight, FALSE);
      const int before = ListView_GetTopIndex(List());
      Do(c.command);
      const int top = ListView_GetTopIndex(List());
      const int want = c.want < 0 ? before : c.want;
      EXPECT_LE(top, want) << c.from;
      EXPECT_LT(want, top + (c.want < 0 ? 1 : ListView_GetCountPerPage(List()))) << c.from;
    }
  });
}

TEST_F(CurrentPageTest, TellsTheHostWhatToPlay) {
  ShowAfterScan(2, [&] {
    AddLists();
    Check(1, false);
    Do(ID_ENQUEUE);
    for (const int checks : {0, ID_CHECK_NONE}) {
      if (checks) Do(checks);
      Do(ID_PLAY);
      Settle();
    }
    Do(ID_ENQUEUE);
    Do(ID_CHECK_ALL);
    Run([&] { feature_.SetHostCallback(nullptr, 42); });
    Do(ID_PLAY);
    Settle();
  });
  EXPECT_EQ(sent(),
            "\\Music\\one.mp3;\\Music\\two.mp3;end;"
            "clear;\\Music\\one.mp3;\\Music\\two.mp3;end;1537(0,0);1536(0,0);"
            "clear;end;1537(0,0);1536(0,0);end;");
}

TEST_F(CurrentPageTest, ColumnsShowAndSortTheirTexts) {
  files_.Put("\\Music\\two.mp3", test::Id3v1Tag("Two", "square", "Alb", 1));
  ShowAfterScan(2, [&] {
    AddLists();
    EXPECT_EQ(Columns(List()), "Title 150|Artist 60|Album 150|Genre 80");
    EXPECT_TRUE(GetWindowLongW(Sheet(), GWL_STYLE) & WS_THICKFRAME) << "the user may enlarge it";
    RECT was = {};
    GetWindowRect(Sheet(), &was);
    Run([&] { MoveWindow(Sheet(), 0, 0, 700, 400, TRUE); });
    int all = 0;
    for (int i = 0; i < 4; ++i) all += ListView_GetColumnWidth(List(), i);
    RECT list = {};
    GetWindowRect(List(), &list);
    EXPECT_EQ(all, list.right - list.left - GetSystemMetrics(SM_CXVSCROLL)) << "they use the room";
    EXPECT_GT(ListView_GetColumnWidth(List(), 1), 100);
    Run([&] { MoveWindow(Sheet(), 0, 0, was.right - was.left, was.bottom - was.top, TRUE); });
    EXPECT_EQ(Columns(List()), "Title 150|Artist 60|Album 150|Genre 80");
    std::string cells;
    for (int i = 0; i < 12; ++i) cells += Cell(List(), i / 4, i % 4) + "|";
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
      TapHeader(List(), tap.column);
      EXPECT_EQ(Items(), tap.want) << tap.column;
    }
  });
  Show([&] {  // the second tap on it turns the order round
    GoTo(2);
    TapHeader(List(), 0);
    EXPECT_EQ(Items(), "Two x\nthree.mp3 x\nOne x\n");
    Do(ID_ENQUEUE);
  });
  EXPECT_EQ(sent(), "\\Music\\two.mp3;\\Music\\three.mp3;\\Music\\one.mp3;end;");
}

}  // namespace
}  // namespace kelvo
