// The page with the tree of media: groups, boxes, file commands and deletions.
#include <random>

#include "catalog/windows/media_tree.h"
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

using test::Id3v1Tag;

constexpr UINT kBox = TVHT_ONITEMSTATEICON;

class MediaPageTest : public test::CatalogWindowTest {
 protected:
  // The boxes from top to bottom: "xx.".
  std::string Boxes() {
    std::string boxes;
    const std::string nodes = Nodes();
    for (size_t at = 0; (at = nodes.find('\n', at)) != std::string::npos; ++at) {
      boxes += nodes[at - 1] == 'x' && nodes[at - 2] == ' ' ? 'x' : '.';
    }
    return boxes;
  }
  void DeleteNode(const std::string& node, const std::string& path, int answer = IDYES) {
    SelectNode(node);
    Delete(path, answer);
  }
  void ExpectFileCommands(bool enabled) {
    for (const int id : {ID_EDIT_TAG, ID_DELETE_FILE}) EXPECT_EQ(Enabled(id), enabled) << id;
  }
  // Image, selected image, children and data of each node from top to bottom; "+" stands for the
  // node's own handle.
  std::string Insides() {
    std::string all;
    const HWND tree = Tree();
    ExpandAll(tree);
    Run([&] {
      TVITEMW node = {};
      node.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
      for (node.hItem = TreeView_GetRoot(tree); node.hItem;
           node.hItem = TreeView_GetNextVisible(tree, node.hItem)) {
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
        const bool own = node.lParam == reinterpret_cast<LPARAM>(node.hItem);
        all += std::to_string(node.iImage) + std::to_string(node.iSelectedImage) +
               std::to_string(node.cChildren) +
               (own           ? "+ "
                : node.lParam ? "? "
                              : "0 ");
      }
    });
    return all;
  }
};

// The control sorts without regard to hyphens, folders are sorted again by their characters. A file
// is equal to everything, and stays.
TEST_F(MediaPageTest, ShowsGroupsAndFoldersSortedByTheirLabels) {
  for (const char* folder : {"Music\\B", "Music\\a", "ab", "a-c", "zeta"}) {
    files_.PutFolder("\\" + std::string(folder));
  }
  files_.Put("\\Music\\B\\one.mp3", Id3v1Tag("Eins", "SINE", "Waves", 9));
  files_.Put("\\Music\\a\\two.mp3", Id3v1Tag("Zwei", "Sine", "Zeta", 8));
  const struct {
    int order;
    const char* want;
    const char* insides;
  } cases[] = {
      {1,
       "Jazz\n Sine\n  Waves\n   One\n   Two\n  Zeta\n   Zwei\n"
       "Metal\n SINE\n  Waves\n   Eins\nUnknown\n Unknown\n  Unknown\n   three.mp3\n",
       "0010 2210 1110 3300 3300 1110 3300 0010 2210 1110 3300 0010 2210 1110 3300 "},
      {6, "Sine\n Eins\n One\n Two\n Zwei\nUnknown\n three.mp3\n",
       "2210 3300 3300 3300 3300 2210 3300 "},
      {7, "Music\n a\n  two.mp3\n B\n  one.mp3\n one.mp3\n three.mp3\n two.mp3\n",
       "441+ 441+ 3300 441+ 3300 3300 3300 3300 "},
  };
  ShowAfterScan(1, [&] {
    for (const auto& c : cases) {
      Do(ID_FIRST_ORDER + c.order - 1);
      EXPECT_EQ(Nodes(), c.want);
      EXPECT_EQ(Insides(), c.insides);
      ExpectFileCommands(false);
    }
    Run([&] {
      files_.Delete(L"\\Music\\B\\one.mp3");
      for (const char* file : {"\\zeta\\x.mp3", "\\ab\\x.mp3", "\\a-c\\x.mp3", "\\alpha.mp3"}) {
        files_.Put(file, "");
      }
    });
    Do(ID_RESCAN);  // on this page, too
    EXPECT_EQ(Nodes(),
              "a-c\n x.mp3\nab\n x.mp3\nalpha.mp3\nMusic\n a\n  two.mp3\n one.mp3\n three.mp3\n"
              " two.mp3\nzeta\n x.mp3\n");
    Do(ID_FIRST_ORDER);
  });
}

int CALLBACK CompareFolders(LPARAM a, LPARAM b, LPARAM tree) {
  if (!a || !b) return 0;
  const auto label = [&](LPARAM item) {
    return test::User::Label(reinterpret_cast<HWND>(tree), reinterpret_cast<HTREEITEM>(item));
  };
  return CompareNoCase(test::Wide(label(a)), test::Wide(label(b)));
}

// Inserts each node where the control sorts it in; folders have their handles as their words.
void InsertSorted(HWND view, const CatalogTree& tree, bool folders) {
  std::vector<HTREEITEM> items = {TVI_ROOT};
  for (TreeNode node = 1; node <= tree.last(); ++node) {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = items[tree.Parent(node)];
    insert.hInsertAfter = TVI_SORT;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = const_cast<wchar_t*>(tree.Label(node));
    TVITEMW word = {};
    word.mask = TVIF_PARAM;
    word.hItem = TreeView_InsertItem(view, &insert);
    word.lParam = tree.IsFile(node) ? 0 : reinterpret_cast<LPARAM>(word.hItem);
    TreeView_SetItem(view, &word);
    items.push_back(word.hItem);
  }
  if (!folders) return;
  for (TreeNode node = 0; node <= tree.last(); ++node) {
    TVSORTCB sort = {items[node], &CompareFolders, reinterpret_cast<LPARAM>(view)};
    if (!tree.IsFile(node)) TreeView_SortChildrenCB(view, &sort, 0);
  }
}

TEST_F(MediaPageTest, IsTheTreeOfSortedInsertion) {
  const auto make = [] {
    return CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP | TVS_CHECKBOXES, 0, 0, 200, 200, nullptr,
                           nullptr, nullptr, nullptr);
  };
  std::mt19937 random(7);
  const char* const words[] = {"co-op", "coop", "Zeta", "alpha", "Beta", "\u00e9t\u00e9",
                               "10",    "9",    "a b",  "a-b",   "_x",   "A.mp3",
                               "zz",    "x"};
  const auto word = [&] { return std::string(words[random() % std::size(words)]); };
  for (int round = 0; round < 6; ++round) {
    EntryList list;
    for (size_t n = random() % 60; n > 0; --n) {
      std::string path = "\\" + word();
      for (size_t depth = random() % 3; depth > 0; --depth) path += "\\" + word();
      MediaEntry* entry = list.Add(test::Wide(path + ".mp3"));
      entry->tag.Reset(HeapNew<TagBlock>());
      strcpy(entry->tag->title, word().c_str());
      strcpy(entry->tag->artist, word().c_str());
      strcpy(entry->tag->album, word().c_str());
    }
    for (uint32_t order = 1; order <= 7; ++order) {
      SCOPED_TRACE(order);
      const HWND plain = make(), shown = make();
      MediaTree tree;
      tree.Attach(shown);
      BuildTree(list, ToGroupingOrder(order), tree.nodes());
      InsertSorted(plain, tree.nodes(), order == 7);
      tree.Show(list);
      EXPECT_EQ(User::Nodes(shown), User::Nodes(plain));
      tree.Detach();
      DestroyWindow(shown);
      DestroyWindow(plain);
    }
  }
}

TEST_F(MediaPageTest, TapsOnBoxesCheckTapsBesideThemSelect) {
  ShowMediaBy(kArtists, [&] {
    ExpandAll(Tree());
    const struct {
      const char* tapped;
      UINT part;
      bool is_file;
      const char* want;  // of Sine, One, Two; Unknown, three.mp3
    } taps[] = {
        {"Sine\\Two", TVHT_ONITEMLABEL, true, "....."},
        {"Sine", TVHT_ONITEMLABEL, false, "....."},
        {"Unknown\\three.mp3", TVHT_ONITEMICON, true, "....."},
        {"Unknown", TVHT_ONITEMICON, false, "....."},
        {"Sine", kBox, false, "xxx.."},
        {"Sine\\One", kBox, true, "..x.."},
        {"Unknown", kBox, false, "..xxx"},
        {"Sine", TVHT_ONITEMBUTTON, false, "..xxx"},
    };
    for (const auto& tap : taps) {
      // The second tap on it selects nothing new: it alone puts right what is shown.
      for (int i = 0; i < (tap.part == TVHT_ONITEMLABEL || tap.part == TVHT_ONITEMICON ? 2 : 1);
           ++i) {
        SCOPED_TRACE(testing::Message() << tap.tapped << ", " << i);
        for (const WPARAM id : {ID_EDIT_TAG, ID_DELETE_FILE}) {
          SendMessageW(MenuBar(), TB_ENABLEBUTTON, id, MAKELONG(!tap.is_file, 0));
        }
        TapTree(Tree(), tap.tapped, tap.part);
        EXPECT_EQ(Boxes(), tap.want);
        if (tap.part != kBox && tap.part != TVHT_ONITEMBUTTON) ExpectFileCommands(tap.is_file);
      }
    }
    EXPECT_FALSE(TreeView_GetItemState(Tree(), Node(Tree(), "Sine"), TVIS_EXPANDED) & TVIS_EXPANDED)
        << "its button collapses it";
    Tap(Tree(), {200, 200});  // beside all items
    Do(ID_ADD_CHECKED);
    // Enter opens and closes groups and taps the boxes of files, as double taps do.
    Do(ID_CHECK_NONE);
    const auto is_open = [&] {
      const HTREEITEM group = Node(Tree(), "Sine");
      return (TreeView_GetItemState(Tree(), group, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    };
    for (const bool open : {true, false, true}) {
      SelectNode("Sine");
      Key(Tree(), VK_RETURN);
      Settle();
      EXPECT_EQ(is_open(), open);
    }
    for (const char* want : {".x...", "....."}) {
      SelectNode("Sine\\One");
      Key(Tree(), VK_RETURN);
      Settle();
      EXPECT_EQ(Boxes(), want);
    }
    StartTap(Tree(), PartOf(Tree(), Node(Tree(), "Sine\\Two"), TVHT_ONITEMLABEL), WM_LBUTTONDBLCLK);
    Settle();
    EXPECT_EQ(Boxes(), "..x..");
    EXPECT_EQ(Dialog(), Sheet()) << "nothing closes it";
    // The space bar is a tap on the box of the selected node.
    Do(ID_CHECK_NONE);
    SelectNode("Sine");
    for (const char* want : {"xxx..", ".xx.."}) {
      Key(Tree(), VK_SPACE);
      Settle();
      EXPECT_EQ(Boxes(), want);
    }
    GoTo(2);
    EXPECT_EQ(Items(), "Two x\nthree.mp3 x\n");
  });
}

// The control's own words, whoever stands in front of it.
bool HasCheck(HWND tree, HTREEITEM item) {
  WNDCLASSW own = {};
  GetClassInfoW(nullptr, WC_TREEVIEWW, &own);
  TVITEMW node = {};
  node.mask = TVIF_HANDLE | TVIF_STATE;
  node.hItem = item;
  node.stateMask = TVIS_STATEIMAGEMASK;
  CallWindowProcW(own.lpfnWndProc, tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
  return node.state >> 12 == 2;
}

// On a window without the shell's hooks, which ask for more than a control does by itself.
TEST_F(MediaPageTest, WhatIsDrawnHasItsCheck) {
  EntryList list;
  for (int i = 0; i < 100; ++i) {
    ASSERT_TRUE(list.Add(test::Wide("\\Music\\" + std::to_string(100 + i) + ".mp3")));
  }
  const HWND view = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_POPUP | WS_VISIBLE | TVS_CHECKBOXES, 0,
                                    0, 200, 200, nullptr, nullptr, nullptr, nullptr);
  MediaTree tree;
  tree.Attach(view);
  BuildTree(list, GroupingOrder::kFolders, tree.nodes());
  tree.Show(list);
  const auto seen = [&](bool checked, int group) {
    UpdateWindow(view);
    HTREEITEM item = TreeView_GetFirstVisible(view);
    for (int rows = 0; rows < group; ++rows) {
      ASSERT_TRUE(item);
      EXPECT_EQ(HasCheck(view, item), checked) << rows;
      item = TreeView_GetNextVisible(view, item);
    }
  };
  SetChecksBelow(tree.nodes(), kNoNode, true);
  tree.ShowChecks();
  seen(true, 1);
  TreeView_Expand(view, TreeView_GetRoot(view), TVE_EXPAND);
  seen(true, 10);
  SendMessageW(view, WM_VSCROLL, SB_BOTTOM, 0);
  seen(true, 10);
  InvertChecksBelow(tree.nodes(), kNoNode);
  tree.ShowChecks();
  seen(false, 10);
  SendMessageW(view, WM_VSCROLL, SB_TOP, 0);
  seen(false, 10);
  // What is out of sight is right for whoever asks.
  SetChecksBelow(tree.nodes(), kNoNode, true);
  EXPECT_EQ(TreeView_GetItemState(view, TreeView_GetRoot(view), TVIS_STATEIMAGEMASK) >> 12, 2u);
  const std::string nodes = User::Nodes(view);
  EXPECT_EQ(std::count(nodes.begin(), nodes.end(), 'x'), 101);
  // A box that was tapped, unchecked, and is out of sight when commands change it and others ask.
  const TreeNode file = list[99].item;
  tree.BoxTapped(file);
  const auto set = [&](UINT mask) {
    TVITEMW item = {};
    item.mask = TVIF_HANDLE | mask;
    item.hItem = TreeView_GetChild(view, TreeView_GetRoot(view));
    while (const HTREEITEM next = TreeView_GetNextSibling(view, item.hItem)) item.hItem = next;
    item.state = INDEXTOSTATEIMAGEMASK(1);
    item.stateMask = TVIS_STATEIMAGEMASK;
    SendMessageW(view, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  };
  set(TVIF_STATE);
  EXPECT_FALSE(tree.nodes().IsChecked(file));
  for (const bool checked : {true, false, true}) {
    SetChecksBelow(tree.nodes(), kNoNode, checked);
    EXPECT_EQ(tree.nodes().IsChecked(file), checked) << "and nobody has seen it";
  }
  set(TVIF_PARAM);
  EXPECT_TRUE(tree.nodes().IsChecked(file)) << "only its data was set";
  tree.Detach();
  DestroyWindow(view);
}

TEST_F(MediaPageTest, ButtonsOfTheMenuBar) {
  ShowAfterScan(1, [&] {
    StartTapOnButton(ID_GROUPING);
    EXPECT_EQ(MenuItems(),
              "Genre\\Artist\\Album 40025\nGenre\\Album\\Artist 40026\nArtist\\Album 40027\n"
              "Album\\Artist 40028\nAlbum Title 40029\nArtist Name 40030\n"
              "Directory\\Filename 40031\n");
    ChooseMenuItem(6);
    Settle();
    EXPECT_EQ(Nodes(), "Music\n one.mp3\n three.mp3\n two.mp3\n");
    // For the keyboard the bar is a menu; its own menus go on working.
    for (int i = 0; i < 2; ++i) {
      PostMessageW(Sheet(), WM_SYSCOMMAND, SC_KEYMENU, 0);
      EXPECT_EQ(MenuItems(),
                "Rescan Media Info 40019\nGroup 4294967295\nEdit media description 40042\n"
                "Delete Selected Files 40023\nCheck 4294967295\n"
                "Add checked items to current playlist 40040\n");
      LeaveMenu();
    }
    StartTapOnButton(ID_CHECKS);
    EXPECT_EQ(MenuItems(), "Check &All 40034\nCheck None 40035\nInvert Check State 40039\n");
    ChooseMenuItem(2);
    Settle();
    EXPECT_EQ(Boxes(), "xxxx");
    Do(ID_CHECK_NONE);
    EXPECT_EQ(Boxes(), "....");
    Do(ID_CHECK_ALL);
    StartTapOnButton(ID_DELETE_FILE);  // is disabled: nothing is selected
    StartTapOnButton(ID_ADD_CHECKED);
    Settle();
    EXPECT_EQ(Dialog(), Sheet());
    GoTo(2);
    EXPECT_EQ(Items(), kAllSongs);
    StartTapOnButton(ID_SELECTION);
    EXPECT_EQ(MenuItems(), "Select &All 40100\nSelect &None 40101\n&Invert Selection 40102\n");
    ChooseMenuItem(0);
    Settle();
    StartTapOnButton(ID_REMOVE_SELECTED);
    Settle();
    EXPECT_EQ(Items(), "");
  });
}

TEST_F(MediaPageTest, OnlyAFileCanBeDeletedAndOnlyMpegHasATag) {
  files_.Put("\\Music\\a.ogg", "");
  files_.Put("\\Music\\b.wma", "");
  ShowMediaBy(kArtists, [&] {
    EXPECT_EQ(Nodes(), "Sine\n One\n Two\nUnknown\n a.ogg\n b.wma\n three.mp3\n");
    for (const char* node : {"", "Sine", "Unknown\\a.ogg", "Unknown\\b.wma"}) {
      SelectNode(node);
      ExpectIgnored(ID_EDIT_TAG);
      if (node[0] != 'U') ExpectIgnored(ID_DELETE_FILE);
    }
    Guard("\\Music\\one.mp3");
    DeleteNode("Sine\\One", "\\Music\\one.mp3");
    EXPECT_NE(Nodes().find(" One\n"), std::string::npos) << "the file is still there";
    EXPECT_TRUE(Enabled(ID_DELETE_FILE));
  });
}

TEST_F(MediaPageTest, TheLastEntryIsDoubledUntilTheNextScan) {
  ShowMediaBy(ID_FIRST_ORDER, [&] {
    DeleteNode("Jazz\\Sine\\Waves\\One", "\\Music\\one.mp3", IDNO);
    EXPECT_TRUE(Exists("\\Music\\one.mp3"));
    DeleteNode("Jazz\\Sine\\Waves\\One", "\\Music\\one.mp3");
    EXPECT_FALSE(Exists("\\Music\\one.mp3"));
    DeleteNode("Jazz\\Sine\\Waves\\Two", "\\Music\\two.mp3");
    EXPECT_EQ(Nodes(), "Unknown\n Unknown\n  Unknown\n   three.mp3\n")
        << "groups that became empty are gone";
    Do(kFolders);  // three.mp3 was read last
    EXPECT_EQ(Nodes(), "Music\n three.mp3\n three.mp3\n three.mp3\n");
    Do(ID_CHECK_ALL);
    Do(ID_ADD_CHECKED);
    for (int i = 0; i < 2; ++i) {  // the second time it is gone already: nothing happens
      DeleteNode("Music\\three.mp3", "\\Music\\three.mp3");
      EXPECT_EQ(Nodes(), "Music x\n three.mp3 x\n three.mp3 x\n");
    }
  });
  Show([&] {
    GoTo(1);
    Do(ID_RESCAN);
    EXPECT_EQ(Nodes(), "");
    GoTo(2);
    EXPECT_EQ(Items(), "three.mp3 x\nthree.mp3 x\nthree.mp3 x\n") << "keeps what it has";
  });
  for (int i = 0; i < 2; ++i) feature_.Destroy(0);
  Show([&] {
    GoTo(2);
    EXPECT_EQ(Items(), "");
  });
}

}  // namespace
}  // namespace kelvo
