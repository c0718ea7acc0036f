// What a user does with the stylus on the catalog's pages.
#include "tests/catalog/catalog_window_fixture.h"
#include "tests/catalog/stylus.h"

namespace kelvo {
namespace {

using test::Popup;
using test::Stylus;
using test::WaitFor;

class TapsTest : public test::CatalogWindowTest {
 protected:
  // Every item of the tree can be seen and tapped.
  void ExpandAll() {
    const HWND tree = driver_.Tree();
    for (HTREEITEM item = TreeView_GetRoot(tree); item;
         item = TreeView_GetNextVisible(tree, item)) {
      TreeView_Expand(tree, item, TVE_EXPAND);
    }
  }
  void Enable(int command, bool enabled) {
    SendMessageW(driver_.MenuBar(), TB_ENABLEBUTTON, static_cast<WPARAM>(command),
                 MAKELONG(enabled, 0));
  }
  Stylus stylus_{driver_};
};

TEST_F(TapsTest, BoxesOfGroupsAndFilesHangTogether) {
  ShowAfterScan(1, [&] {
    driver_.Do(ID_FIRST_ORDER);
    ExpandAll();
    const struct {
      const char* tapped;
      UINT part;
      const char* want;  // of Jazz, Sine, Waves, One, Two; Unknown three times, three.mp3
    } taps[] = {
        {"Jazz", TVHT_ONITEMSTATEICON, "xxxxx...."},
        {"Jazz\\Sine\\Waves\\One", TVHT_ONITEMSTATEICON, "....x...."},
        {"Jazz\\Sine\\Waves\\One", TVHT_ONITEMSTATEICON, "...xx...."},
        {"Unknown\\Unknown\\Unknown", TVHT_ONITEMSTATEICON, "...xx..xx"},
        {"Jazz\\Sine", TVHT_ONITEMSTATEICON, ".xxxx..xx"},
        {"Jazz\\Sine\\Waves", TVHT_ONITEMLABEL, ".xxxx..xx"},
        {"Jazz\\Sine\\Waves\\Two", TVHT_ONITEMICON, ".xxxx..xx"},
        {"Jazz", TVHT_ONITEMSTATEICON, "xxxxx..xx"},
        {"Jazz\\Sine\\Waves", TVHT_ONITEMSTATEICON, "...xx..xx"},
        {"Unknown\\Unknown\\Unknown\\three.mp3", TVHT_ONITEMSTATEICON, "...xx...."},
        {"Jazz", TVHT_ONITEMBUTTON, "...xx...."},
    };
    for (const auto& tap : taps) {
      stylus_.TapTree(driver_.Tree(), tap.tapped, tap.part);
      std::string boxes;
      const std::string nodes = driver_.Nodes();
      for (size_t at = 0; (at = nodes.find('\n', at)) != std::string::npos; ++at) {
        boxes += nodes[at - 1] == 'x' && nodes[at - 2] == ' ' ? 'x' : '.';
      }
      EXPECT_EQ(boxes, tap.want) << tap.tapped;
    }
    EXPECT_EQ(
        TreeView_GetItemState(driver_.Tree(), driver_.Node("Jazz"), TVIS_EXPANDED) & TVIS_EXPANDED,
        0u)
        << "its button collapses it";
    stylus_.TapAndSettle(driver_.Tree(), {200, 200});  // beside all items
    driver_.Do(ID_ADD_CHECKED);
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nTwo x\n");
  });
}

TEST_F(TapsTest, LabelAndIconDecideAboutTheFileCommands) {
  ShowAfterScan(1, [&] {
    driver_.Do(ID_FIRST_ORDER + 5);
    ExpandAll();
    const struct {
      const char* tapped;
      UINT part;
      bool is_file;
    } taps[] = {
        {"Sine\\One", TVHT_ONITEMLABEL, true},         {"Sine", TVHT_ONITEMLABEL, false},
        {"Unknown\\three.mp3", TVHT_ONITEMICON, true}, {"Unknown", TVHT_ONITEMICON, false},
        {"Sine\\Two", TVHT_ONITEMICON, true},
    };
    for (const auto& tap : taps) {
      // The second tap selects nothing new: it alone puts right what is shown.
      for (const char* which : {"first", "second"}) {
        SCOPED_TRACE(testing::Message() << tap.tapped << ", " << which);
        for (const int id : {ID_EDIT_TAG, ID_DELETE_FILE}) Enable(id, !tap.is_file);
        stylus_.TapTree(driver_.Tree(), tap.tapped, tap.part);
        for (const int id : {ID_EDIT_TAG, ID_DELETE_FILE}) {
          EXPECT_EQ(driver_.Enabled(id), tap.is_file) << id;
        }
      }
    }
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n three.mp3\n");
  });
}

TEST_F(TapsTest, HoldingAPlaylistOffersItsCommands) {
  ShowAfterScan(0, [&] {
    const std::string commands = "Rename file 40021\nDelete file 40023\n";
    const HWND list = driver_.List();
    stylus_.Hold(list, stylus_.PartOf(list, 1, LVHT_ONITEMLABEL));
    {
      const Popup popup(driver_);
      EXPECT_EQ(popup.Items(), commands);
      EXPECT_EQ(driver_.Items(), "\\Lists\\a.m3u\n\\Lists\\b.pls *\n");
      popup.Choose(1);
    }
    stylus_.Lift();
    driver_.Answer(L"Delete File", IDNO);
    EXPECT_EQ(driver_.BytesOf("\\Lists\\b.pls"), "File1=\\Music\\two.mp3\r\n");

    stylus_.Tap(list, stylus_.PartOf(list, 0, LVHT_ONITEMLABEL), WM_RBUTTONDOWN, WM_RBUTTONUP);
    {
      const Popup popup(driver_);
      EXPECT_EQ(popup.Items(), commands);
      popup.Choose(0);
    }
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    EXPECT_EQ(driver_.Text(entry, IDC_TEXT_ENTRY), "a.m3u");
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, L"c.m3u");
    driver_.Answer(entry, IDOK);
    EXPECT_EQ(driver_.Items(), "\\Lists\\c.m3u *\n\\Lists\\b.pls\n");

    stylus_.Tap(list, stylus_.PartOf(list, 0, LVHT_ONITEMLABEL), WM_RBUTTONDOWN, WM_RBUTTONUP);
    Popup(driver_).Leave();
    stylus_.Hold(list, {100, 150});  // below the items: nothing is selected any more
    driver_.Settle();
    EXPECT_FALSE(Popup::Find(driver_));
    EXPECT_EQ(driver_.Items(), "\\Lists\\c.m3u\n\\Lists\\b.pls\n");
    stylus_.Lift();
  });
}

TEST_F(TapsTest, BoxesAndHeadersOfTheCurrentPlaylist) {
  ShowAfterScan(2, [&] {
    AddLists();
    stylus_.TapList(1, LVHT_ONITEMSTATEICON);
    stylus_.TapList(2, LVHT_ONITEMSTATEICON);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_ENQUEUE);
    stylus_.TapList(0, LVHT_ONITEMSTATEICON);
    for (const int id : {ID_PLAY, ID_ENQUEUE, ID_SAVE_PLAYLIST}) {
      EXPECT_FALSE(driver_.Enabled(id)) << id;
    }
    stylus_.TapList(2, LVHT_ONITEMSTATEICON);
    driver_.Do(ID_ENQUEUE);
    EXPECT_TRUE(driver_.Enabled(ID_PLAY));
    driver_.Do(ID_SELECT_NONE);
    stylus_.TapList(1, LVHT_ONITEMLABEL);
    EXPECT_EQ(driver_.Items(), "One\nthree.mp3 *\nTwo x\n");
    EXPECT_TRUE(driver_.Enabled(ID_MOVE_UP));

    const HWND header = ListView_GetHeader(driver_.List());
    const struct {
      int column;
      const char* want;
    } taps[] = {
        {0, "One\nthree.mp3 *\nTwo x\n"}, {0, "Two x\nthree.mp3 *\nOne\n"},
        {1, "Two x\nOne\nthree.mp3 *\n"}, {1, "three.mp3 *\nTwo x\nOne\n"},
        {0, "One\nthree.mp3 *\nTwo x\n"},
    };
    for (const auto& tap : taps) {
      RECT place = {};
      SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(tap.column),
                   reinterpret_cast<LPARAM>(&place));
      stylus_.TapAndSettle(header, {place.left + 20, (place.top + place.bottom) / 2});
      EXPECT_EQ(driver_.Items(), tap.want) << tap.column;
    }
    driver_.Do(ID_ENQUEUE);
  });
  EXPECT_EQ(driver_.sent(), "\\Music\\one.mp3;end;\\Music\\two.mp3;end;\\Music\\two.mp3;end;");
}

TEST_F(TapsTest, ButtonsOfTheMenuBar) {
  ShowAfterScan(1, [&] {
    const auto tap = [&](int command) {
      const HWND toolbar = GetWindow(driver_.MenuBar(), GW_CHILD);
      const LRESULT index =
          SendMessageW(toolbar, TB_COMMANDTOINDEX, static_cast<WPARAM>(command), 0);
      RECT place = {};
      SendMessageW(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(index),
                   reinterpret_cast<LPARAM>(&place));
      stylus_.Tap(toolbar, {(place.left + place.right) / 2, (place.top + place.bottom) / 2});
    };
    tap(ID_GROUPING);
    {
      const Popup popup(driver_);
      EXPECT_EQ(popup.Items(),
                "Genre\\Artist\\Album 40025\nGenre\\Album\\Artist 40026\nArtist\\Album 40027\n"
                "Album\\Artist 40028\nAlbum Title 40029\nArtist Name 40030\n"
                "Directory\\Filename 40031\n");
      popup.Choose(6);
    }
    driver_.Settle();
    EXPECT_EQ(driver_.Nodes(), "Music\n one.mp3\n three.mp3\n two.mp3\n");
    tap(ID_CHECKS);
    {
      const Popup popup(driver_);
      EXPECT_EQ(popup.Items(), "Check &All 40034\nCheck None 40035\nInvert Check State 40039\n");
      popup.Choose(2);
    }
    driver_.Settle();
    EXPECT_EQ(driver_.Nodes(), "Music x\n one.mp3 x\n three.mp3 x\n two.mp3 x\n");
    tap(ID_DELETE_FILE);  // is disabled: nothing is selected
    tap(ID_ADD_CHECKED);
    driver_.Settle();
    EXPECT_EQ(driver_.Window(L"Playlist Organizer"), driver_.Sheet());
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), kAllSongs);
    tap(ID_SELECTION);
    Popup(driver_).Choose(0);
    driver_.Settle();
    tap(ID_REMOVE_SELECTED);
    driver_.Settle();
    EXPECT_EQ(driver_.Items(), "");
  });
}

}  // namespace
}  // namespace kelvo
