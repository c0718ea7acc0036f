// The dialog for saving the current playlist.
#include "base/windows/feature_dialog.h"
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

using test::WaitFor;

constexpr int kTree = 1000;
constexpr int kName = 1001;
constexpr int kSave = 1002;
constexpr int kLine = 1003;

// The host's strings.
constexpr UINT kEmptyText = 6200;
constexpr UINT kOverwriteText = 6202;
constexpr UINT kNotCreatedText = 6204;

class SaveDialogTest : public test::CatalogWindowTest {
 protected:
  SaveDialogTest() {
    driver_.files.PutFolder("\\Lists\\Deep");
    driver_.files.PutFolder("\\Lists\\Deep\\Deeper");
    driver_.files.Put("\\Lists\\Deep\\x.M3U", "old");
    driver_.files.Put("\\Lists\\c.asx", "");
    driver_.files.Put("\\Lists\\pls", "");
    driver_.files.Put("\\top.pls", "");
  }
  void ShowWithSongs(const std::function<void()>& use) {
    driver_.Show([&] {
      ScanNow();
      ASSERT_TRUE(WaitFor([&] { return driver_.Items().find("top.pls") != std::string::npos; }));
      AddLists();
      use();
    });
  }
  // The dialog, when its tree is there.
  void Open() {
    driver_.Post(ID_SAVE_PLAYLIST);
    dialog_ = driver_.WaitForWindow(L"Save Playlist");
    driver_.Settle();
  }
  HWND Tree() { return GetDlgItem(dialog_, kTree); }
  std::string Line() { return driver_.Text(dialog_, kLine); }
  void Type(const wchar_t* name) { SetDlgItemTextW(dialog_, kName, name); }
  void Leave(int command) { driver_.Answer(dialog_, command); }
  bool IsOpen() { return IsWindow(dialog_) && IsWindowVisible(dialog_); }
  // The box that the button brings up says this; it is answered.
  void SaveAndAnswer(UINT text, int answer) {
    PostMessageW(dialog_, WM_COMMAND, kSave, 0);
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] {
      box = driver_.Find(nullptr, L"#32770", true);
      return box && box != dialog_;
    }));
    EXPECT_EQ(driver_.BoxText(box), driver_.HostText(text));
    driver_.Answer(box, answer);
  }
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
      all += std::string(static_cast<size_t>(depth), ' ') + driver_.Label(Tree(), item) + " " +
             std::to_string(node.iImage) + (node.cChildren ? "+\n" : "\n");
      all += Items(TreeView_GetChild(Tree(), item), depth + 1);
    }
    return all;
  }
  std::string Items() {
    std::string all;
    driver_.Run([&] { all = Items(TreeView_GetRoot(Tree()), 0); });
    return all;
  }
  HTREEITEM Node(const std::string& path) { return driver_.Node(Tree(), path); }
  long Lists(const std::string& folder) {
    long count = 0;
    driver_.Run([&] {
      const auto& log = driver_.files.log;
      count = std::count(log.begin(), log.end(), "list " + folder + "\\*.*");
    });
    return count;
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
    const long before = Lists("\\Lists\\Deep");
    const auto tap_button = [&] { driver_.TapTree(Tree(), "\\\\Lists", TVHT_ONITEMBUTTON); };
    tap_button();
    const std::string expanded =
        "\\ 1+\n Lists 1+\n  Deep 0+\n  a.m3u 3\n  b.pls 3\n Music 0\n top.pls 3\n";
    EXPECT_EQ(Items(), expanded);
    EXPECT_EQ(Lists("\\Lists\\Deep"), before + 1) << "once, for its mark";
    tap_button();
    EXPECT_EQ(Items().substr(0, 14), "\\ 1+\n Lists 0+");
    const long lists = Lists("\\Lists");
    tap_button();
    EXPECT_EQ(Items(), expanded);
    EXPECT_EQ(Lists("\\Lists"), lists) << "filled once";
    TreeView_Expand(Tree(), Node("\\\\Lists\\Deep"), TVE_EXPAND);
    EXPECT_TRUE(Node("\\\\Lists\\Deep\\Deeper"));
    EXPECT_TRUE(Node("\\\\Lists\\Deep\\x.M3U"));
    Leave(IDCANCEL);
  });
}

TEST_F(SaveDialogTest, TapsAndTypingMakeThePath) {
  ShowWithSongs([&] {
    Open();
    TreeView_Expand(Tree(), Node("\\\\Lists"), TVE_EXPAND);
    TreeView_Expand(Tree(), Node("\\\\Lists\\Deep"), TVE_EXPAND);
    const struct {
      const char* tapped;  // null: type the text
      UINT part;
      const wchar_t* typed;
      const char* line;
    } steps[] = {
        {nullptr, 0, L"mix", "\\mix.m3u"},
        {"\\\\Lists", TVHT_ONITEMLABEL, nullptr, "\\Lists\\mix.m3u"},
        {nullptr, 0, L"mix.txt", "\\Lists\\mix.txt"},
        {"\\\\Lists\\Deep\\Deeper", TVHT_ONITEMICON, nullptr, "\\Lists\\Deep\\Deeper\\mix.txt"},
        {"\\\\Lists\\b.pls", TVHT_ONITEMLABEL, nullptr, "\\Lists\\b.pls"},
        {"\\\\Lists\\Deep\\x.M3U", TVHT_ONITEMICON, nullptr, "\\Lists\\Deep\\x.M3U"},
        {"\\", TVHT_ONITEMLABEL, nullptr, "\\x.M3U"},
        {"\\\\Lists\\Deep", TVHT_ONITEMBUTTON, nullptr, "\\x.M3U"},
        {nullptr, 0, L"", "\\"},
        {"\\\\Music", TVHT_ONITEMLABEL, nullptr, "\\Music\\"},
    };
    EXPECT_EQ(Line(), "");
    for (const auto& step : steps) {
      SCOPED_TRACE(step.line);
      if (step.tapped) {
        driver_.TapTree(Tree(), step.tapped, step.part);
      } else {
        Type(step.typed);
      }
      EXPECT_EQ(Line(), step.line);
    }
    driver_.TapTree(Tree(), "\\\\top.pls", TVHT_ONITEMLABEL);
    EXPECT_EQ(driver_.Text(dialog_, kName), "top.pls");
    Leave(IDOK);
  });
}

TEST_F(SaveDialogTest, AsksAndTellsBeforeItSaves) {
  ShowWithSongs([&] {
    Open();
    SaveAndAnswer(kEmptyText, IDOK);  // neither tapped nor typed
    EXPECT_TRUE(IsOpen());
    TreeView_Expand(Tree(), Node("\\\\Lists"), TVE_EXPAND);
    driver_.TapTree(Tree(), "\\\\Lists\\a.m3u", TVHT_ONITEMLABEL);
    SaveAndAnswer(kOverwriteText, IDNO);
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(driver_.BytesOf("\\Lists\\a.m3u"), "\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n");

    for (const bool no_name : {false, true}) {
      driver_.Run([&] {
        driver_.files.Find("\\Lists\\a.m3u")->attributes =
            no_name ? kAttributeNormal : kAttributeReadOnly;
      });
      if (no_name) Type(L"");
      EXPECT_EQ(Line(), no_name ? "\\Lists\\" : "\\Lists\\a.m3u");
      PostMessageW(dialog_, WM_COMMAND, kSave, 0);
      HWND question = nullptr;
      ASSERT_TRUE(WaitFor([&] {
        question = driver_.Find(nullptr, L"#32770", true);
        return question && question != dialog_;
      }));
      EXPECT_EQ(driver_.BoxText(question), driver_.HostText(kOverwriteText));
      PostMessageW(question, WM_COMMAND, IDYES, 0);
      HWND box = nullptr;
      ASSERT_TRUE(WaitFor([&] {
        box = driver_.Find(L"", L"#32770", true);  // no caption
        return box != nullptr;
      }));
      EXPECT_EQ(driver_.BoxText(box), driver_.HostText(kNotCreatedText));
      driver_.Answer(box, IDOK);
      EXPECT_TRUE(IsOpen());
    }

    Type(L"no\\such\\folder");
    driver_.Run([&] { driver_.files.FailAfter(0, true, "create"); });
    SaveAndAnswer(kNotCreatedText, IDOK);
    EXPECT_TRUE(IsOpen());
    driver_.Run([&] { driver_.files.FailAfter(-1); });

    Type(L"a");
    EXPECT_EQ(Line(), "\\Lists\\a.m3u");
    SaveAndAnswer(kOverwriteText, IDYES);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(driver_.BytesOf("\\Lists\\a.m3u"), kSaved);

    Open();  // nothing is kept of the last one
    EXPECT_EQ(Line(), "");
    Type(L"new");
    driver_.Answer(dialog_, kSave);
    EXPECT_EQ(driver_.BytesOf("\\new.m3u"), kSaved);
  });
}

TEST_F(SaveDialogTest, DoneAndCancelSaveNothing) {
  ShowWithSongs([&] {
    const std::vector<std::string> calls = {"attributes", "create", "delete", "write"};
    for (const UINT message : {WM_COMMAND, WM_SYSCOMMAND}) {
      Open();
      Type(L"mix");
      driver_.Run([&] { driver_.files.log.clear(); });
      if (message == WM_COMMAND) {
        Leave(IDCANCEL);
      } else {
        PostMessageW(dialog_, WM_SYSCOMMAND, SC_CLOSE, 0);  // the Done button
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog_); }));
        driver_.Settle();
      }
      driver_.Run([&] { EXPECT_TRUE(driver_.files.log.empty()); });
    }
    Open();
    Type(L"mix");
    const HWND bar = driver_.MenuBar();  // its one button
    SendMessageW(bar, WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog_); }));
    EXPECT_EQ(driver_.BytesOf("\\mix.m3u"), "no file");
  });
}

TEST_F(SaveDialogTest, AnEmptyListAndAnUncheckedOneCanBeSaved) {
  ShowWithSongs([&] {
    driver_.Do(ID_CHECK_NONE);
    Open();
    Type(L"unchecked");
    driver_.Answer(dialog_, kSave);
    EXPECT_EQ(driver_.BytesOf("\\unchecked.m3u"), kSaved) << "all entries, whatever their checks";
    driver_.Do(ID_SELECT_ALL);
    driver_.Do(ID_REMOVE_SELECTED);
    Open();
    Type(L"empty");
    driver_.Answer(dialog_, kSave);
    EXPECT_EQ(driver_.BytesOf("\\empty.m3u"), "#EXTM3U:\r\n");
  });
}

TEST_F(SaveDialogTest, TheLayoutFollowsTheWindow) {
  ShowWithSongs([&] {
    Open();
    const auto place = [&](int id) {
      RECT rect = {};
      GetWindowRect(GetDlgItem(dialog_, id), &rect);
      MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&rect), 2);
      return rect;
    };
    const RECT first_name = place(kName);
    const RECT first_button = place(kSave);
    for (const SIZE size : {SIZE{0, 0}, SIZE{300, 200}, SIZE{200, 400}, SIZE{240, 30}}) {
      if (size.cx != 0) SetWindowPos(dialog_, nullptr, 0, 0, size.cx, size.cy, SWP_NOZORDER);
      RECT client = {};
      GetClientRect(dialog_, &client);
      SCOPED_TRACE(testing::Message() << client.right << " by " << client.bottom);
      if (size.cx == 0) {
        EXPECT_EQ(client.right, 240);
        EXPECT_EQ(client.bottom, 268) << "between caption and menu bar";
      }
      const RECT tree = place(kTree), line = place(kLine), name = place(kName);
      const RECT button = place(kSave);
      const LONG row = first_name.bottom - first_name.top;
      const LONG height = client.bottom - (line.bottom - line.top) - row - 4;
      EXPECT_EQ(tree.left, 0);
      EXPECT_EQ(tree.top, 0);
      EXPECT_EQ(tree.right, client.right + 1);
      EXPECT_EQ(tree.bottom, std::max<LONG>(height, 0));
      EXPECT_EQ(line.left, 2);
      EXPECT_EQ(line.top, tree.bottom);
      EXPECT_EQ(line.right, client.right);
      for (const RECT& in_row : {name, button}) {
        EXPECT_EQ(in_row.bottom, client.bottom - 2);
        EXPECT_EQ(in_row.bottom - in_row.top, row);
      }
      EXPECT_EQ(name.left, first_name.left);
      EXPECT_EQ(name.right, first_name.right);
      EXPECT_EQ(button.left, first_button.left);
      EXPECT_EQ(button.right, first_button.right);
    }
    EXPECT_LE(first_name.right, first_button.left);
    EXPECT_LE(first_button.right, 240);
    Leave(IDCANCEL);
  });
}

}  // namespace
}  // namespace kelvo
