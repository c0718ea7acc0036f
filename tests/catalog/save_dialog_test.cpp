// The dialog for saving the current playlist, with the reference host's resources.
#include "playlist/save_dialog.h"
#include "base/windows/feature_dialog.h"
#include "kelvo/host_resources.h"
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

using test::WaitFor;

constexpr int kTree = KELVO_HOST_SAVE_TREE, kName = KELVO_HOST_SAVE_NAME;
constexpr int kSave = KELVO_HOST_SAVE_BUTTON, kLine = KELVO_HOST_SAVE_PATH;

class SaveDialogTest : public test::CatalogWindowTest {
 protected:
  SaveDialogTest() {
    files_.PutFolder("\\Lists\\Deep");
    files_.PutFolder("\\Lists\\Deep\\Deeper");
    files_.Put("\\Lists\\Deep\\x.M3U", "old");
    files_.Put("\\Lists\\c.asx", "");
    files_.Put("\\Lists\\pls", "");
    files_.Put("\\top.pls", "");
  }
  void ShowWithSongs(const std::function<void()>& use) {
    ShowAfterScan(0, [&] {
      AddLists();
      use();
    });
  }
  // The dialog, when its tree is there.
  void Open() {
    Post(ID_SAVE_PLAYLIST);
    dialog_ = WaitForWindow(L"Save Playlist");
    Settle();
  }
  HWND Tree() { return GetDlgItem(dialog_, kTree); }
  HTREEITEM Node(const std::string& path) { return User::Node(Tree(), path); }
  std::string Line() { return Text(dialog_, kLine); }
  void Type(const wchar_t* name) { SetDlgItemTextW(dialog_, kName, name); }
  bool IsOpen() { return IsWindow(dialog_) && IsWindowVisible(dialog_); }
  // The box that the button brings up says this.
  HWND SaveAndRead(UINT text) {
    PostMessageW(dialog_, WM_COMMAND, kSave, 0);
    const HWND box = NextDialog(dialog_);
    wchar_t want[200] = L"";  // the wording is the host's own affair
    EXPECT_GT(LoadStringW(host_, text, want, 200), 0) << text;
    EXPECT_EQ(BoxText(box), test::Utf8(want));
    return box;
  }
  void SaveAndAnswer(UINT text, int answer) { Answer(SaveAndRead(text), answer); }
  // "\ 1+" a line: indented label, image, "+" when it can be expanded.
  std::string Items(HTREEITEM from, int depth) {
    std::string all;
    for (HTREEITEM item = from; item; item = TreeView_GetNextSibling(Tree(), item)) {
      TVITEMW node = {};
      node.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
      node.hItem = item;
      SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
      EXPECT_EQ(node.iImage, node.iSelectedImage);
      EXPECT_EQ(node.lParam, reinterpret_cast<LPARAM>(item));
      all += std::string(static_cast<size_t>(depth), ' ') + Label(Tree(), item) + " " +
             std::to_string(node.iImage) + (node.cChildren ? "+\n" : "\n");
      all += Items(TreeView_GetChild(Tree(), item), depth + 1);
    }
    return all;
  }
  std::string Items() {
    std::string all;
    Run([&] { all = Items(TreeView_GetRoot(Tree()), 0); });
    return all;
  }

  static constexpr char kSaved[] =
      "#EXTM3U:\r\n#EXTINF:-1,Sine - One\r\n\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n"
      "#EXTINF:-1,Sine - Two\r\n\\Music\\two.mp3\r\n";

  HWND dialog_ = nullptr;
};

TEST_F(SaveDialogTest, FillsAFolderWhenItIsFirstExpanded) {
  ShowWithSongs([&] {
    Open();
    EXPECT_EQ(Items(), "\\ 1+\n Lists 0+\n Music 0\n top.pls 3\n");
    const long before = Listings("\\Lists\\Deep");
    const auto tap_button = [&] { TapTree(Tree(), "\\\\Lists", TVHT_ONITEMBUTTON); };
    tap_button();
    const std::string expanded =
        "\\ 1+\n Lists 1+\n  Deep 0+\n  a.m3u 3\n  b.pls 3\n Music 0\n top.pls 3\n";
    EXPECT_EQ(Items(), expanded);
    EXPECT_EQ(Listings("\\Lists\\Deep"), before + 1) << "once, for its mark";
    tap_button();
    EXPECT_EQ(Items().substr(0, 14), "\\ 1+\n Lists 0+");
    const long lists = Listings("\\Lists");
    tap_button();
    EXPECT_EQ(Items(), expanded);
    EXPECT_EQ(Listings("\\Lists"), lists) << "filled once";
    TreeView_Expand(Tree(), Node("\\\\Lists\\Deep"), TVE_EXPAND);
    EXPECT_TRUE(Node("\\\\Lists\\Deep\\Deeper") && Node("\\\\Lists\\Deep\\x.M3U"));
    Key(Tree(), VK_RETURN);
    Settle();
    EXPECT_TRUE(IsOpen()) << "Enter closes nothing";
    Answer(dialog_, IDCANCEL);
  });
}

// A root without folders is open, too; and what a host finds behind the dialog's parameter.
TEST_F(SaveDialogTest, ShowsAndReturnsItsState) {
  test::MemoryFiles files;
  files.Put("\\top.m3u", "");
  ShowAfterScan(0, [&] {
    for (const int command : {kSave, IDCANCEL}) {
      SaveDialogState state;
      bool saves = false;
      Start([&] { saves = AskWhereToSave(files, host_, Sheet(), &state); });
      dialog_ = WaitForWindow(L"Save Playlist");
      Settle();
      EXPECT_EQ(Items(), "\\ 1\n top.m3u 3\n");
      RECT place;
      EXPECT_TRUE(TreeView_GetItemRect(Tree(), Node("\\\\top.m3u"), &place, FALSE)) << "to be seen";
      Type(L"mix");
      EXPECT_EQ(state.host_module, host_);
      EXPECT_EQ(state.tree, Tree());
      EXPECT_EQ(state.dialog, dialog_);
      EXPECT_EQ(state.menu_bar, MenuBar());
      Answer(dialog_, command);
      EXPECT_EQ(saves, command == kSave);
      EXPECT_EQ(state.succeeded, saves);
      EXPECT_EQ(test::Utf8(state.path), saves ? "\\mix.m3u" : "");
      EXPECT_FALSE(state.tree || state.dialog || state.menu_bar);
    }
  });
}

TEST_F(SaveDialogTest, TapsAndTypingMakeThePath) {
  ShowWithSongs([&] {
    Open();
    TreeView_Expand(Tree(), Node("\\\\Lists"), TVE_EXPAND);
    TreeView_Expand(Tree(), Node("\\\\Lists\\Deep"), TVE_EXPAND);
    const struct {
      UINT part;           // 0: type the text
      const char* tapped;  // or typed
      const char* line;
    } steps[] = {
        {0, "mix", "\\mix.m3u"},
        {TVHT_ONITEMLABEL, "\\\\Lists", "\\Lists\\mix.m3u"},
        {0, "mix.txt", "\\Lists\\mix.txt"},
        {TVHT_ONITEMICON, "\\\\Lists\\Deep\\Deeper", "\\Lists\\Deep\\Deeper\\mix.txt"},
        {TVHT_ONITEMICON, "\\\\Lists\\Deep\\x.M3U", "\\Lists\\Deep\\x.M3U"},
        {TVHT_ONITEMLABEL, "\\", "\\x.M3U"},
        {TVHT_ONITEMBUTTON, "\\\\Lists\\Deep", "\\x.M3U"},
        {0, "", "\\"},
        {TVHT_ONITEMLABEL, "\\\\Music", "\\Music\\"},
        {TVHT_ONITEMLABEL, "\\\\top.pls", "\\top.pls"},
    };
    EXPECT_EQ(Line(), "");
    for (const auto& step : steps) {
      step.part ? TapTree(Tree(), step.tapped, step.part) : Type(test::Wide(step.tapped));
      EXPECT_EQ(Line(), step.line);
    }
    EXPECT_EQ(Text(dialog_, kName), "top.pls");
    Answer(dialog_, IDOK);
  });
}

TEST_F(SaveDialogTest, AsksAndTellsBeforeItSaves) {
  ShowWithSongs([&] {
    Open();
    SaveAndAnswer(KELVO_HOST_TEXT_EMPTY_PATH, IDOK);  // neither tapped nor typed
    EXPECT_TRUE(IsOpen());
    TreeView_Expand(Tree(), Node("\\\\Lists"), TVE_EXPAND);
    TapTree(Tree(), "\\\\Lists\\a.m3u", TVHT_ONITEMLABEL);
    SaveAndAnswer(KELVO_HOST_TEXT_OVERWRITE, IDNO);
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(BytesOf("\\Lists\\a.m3u"), "\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n");

    Guard("\\Lists\\a.m3u");
    for (const wchar_t* name : {L"a.m3u", L""}) {  // the latter stands for the folder
      Type(name);
      EXPECT_EQ(Line(), "\\Lists\\" + test::Utf8(name));
      PostMessageW(SaveAndRead(KELVO_HOST_TEXT_OVERWRITE), WM_COMMAND, IDYES, 0);
      EXPECT_NE(BoxText(WaitForWindow(L"")), "");  // no caption
      Answer(L"", IDOK);
      EXPECT_TRUE(IsOpen());
    }
    Type(L"no\\such\\folder");
    SaveAndAnswer(KELVO_HOST_TEXT_NOT_CREATED, IDOK);
    EXPECT_TRUE(IsOpen());

    Run([&] { files_.Find("\\Lists\\a.m3u")->attributes = kAttributeNormal; });
    Type(L"a");
    SaveAndAnswer(KELVO_HOST_TEXT_OVERWRITE, IDYES);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(BytesOf("\\Lists\\a.m3u"), kSaved);
    const struct {
      int command;
      const wchar_t* name;
      const char* want;
    } lists[] = {{ID_CHECK_NONE, L"unchecked", kSaved},  // all entries, whatever their checks
                 {ID_SELECT_ALL, L"selected", kSaved},
                 {ID_REMOVE_SELECTED, L"empty", "#EXTM3U:\r\n"}};
    for (const auto& list : lists) {
      Do(list.command);
      Open();
      EXPECT_EQ(Line(), "") << "nothing is kept of the last one";
      Type(list.name);
      Answer(dialog_, kSave);
      EXPECT_EQ(BytesOf("\\" + test::Utf8(list.name) + ".m3u"), list.want);
    }
  });
}

TEST_F(SaveDialogTest, DoneAndCancelSaveNothing) {
  ShowWithSongs([&] {
    for (const char* way : {"key", "Done", "menu bar"}) {
      SCOPED_TRACE(way);
      Open();
      Type(L"mix");
      Run([&] { files_.log.clear(); });
      if (*way == 'k') SendMessageW(dialog_, WM_COMMAND, IDCANCEL, 0);
      if (*way == 'D') Done();
      if (*way == 'm') SendMessageW(MenuBar(), WM_COMMAND, IDCANCEL, 0);
      EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog_); }));
      Settle();
      Run([&] { EXPECT_TRUE(files_.log.empty()); });
    }
  });
}

TEST_F(SaveDialogTest, TheLayoutFollowsTheWindow) {
  ShowWithSongs([&] {
    Open();
    const struct {
      SIZE size;         // 0: as it opens, between caption and menu bar
      const char* want;  // the dialog; tree, line, name, button
    } cases[] = {
        {{0, 0}, "0,0,240,268 0,0,241,228 2,228,240,243 3,245,165,266 170,245,233,266 "},
        {{300, 200}, "0,0,294,175 0,0,295,135 2,135,294,150 3,152,165,173 170,152,233,173 "},
        {{200, 400}, "0,0,194,375 0,0,195,335 2,335,194,350 3,352,165,373 170,352,233,373 "},
        {{240, 30}, "0,0,234,5 0,0,235,0 2,0,234,15 3,-18,165,3 170,-18,233,3 "},
    };
    for (const auto& c : cases) {
      if (c.size.cx) SetWindowPos(dialog_, nullptr, 0, 0, c.size.cx, c.size.cy, SWP_NOZORDER);
      std::string places;
      for (const int id : {0, kTree, kLine, kName, kSave}) {
        RECT place = {};
        if (id == 0) GetClientRect(dialog_, &place);
        if (id != 0) GetWindowRect(GetDlgItem(dialog_, id), &place);
        if (id != 0) MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&place), 2);
        places += std::to_string(place.left) + "," + std::to_string(place.top) + "," +
                  std::to_string(place.right) + "," + std::to_string(place.bottom) + " ";
      }
      EXPECT_EQ(places, c.want);
    }
    Answer(dialog_, IDCANCEL);
  });
}

}  // namespace
}  // namespace kelvo
