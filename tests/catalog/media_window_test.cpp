// The Media Catalog's page: its tree, checks, file commands and deletions.
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
    const std::string nodes = driver_.Nodes();
    for (size_t at = 0; (at = nodes.find('\n', at)) != std::string::npos; ++at) {
      boxes += nodes[at - 1] == 'x' && nodes[at - 2] == ' ' ? 'x' : '.';
    }
    return boxes;
  }
  void DeleteNode(const std::string& node, const std::string& path, int answer = IDYES) {
    driver_.SelectNode(node);
    Delete(path, answer);
  }
  // Image, selected image, children and data of each node from top to bottom; "+" stands for the
  // node's own handle.
  std::string Insides() {
    std::string all;
    const HWND tree = driver_.Tree();
    driver_.ExpandAll(tree);
    driver_.Run([&] {
      TVITEMW node = {};
      node.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN | TVIF_PARAM;
      for (node.hItem = TreeView_GetRoot(tree); node.hItem;
           node.hItem = TreeView_GetNextVisible(tree, node.hItem)) {
        SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
        all += std::to_string(node.iImage) + std::to_string(node.iSelectedImage) +
               std::to_string(node.cChildren) +
               (node.lParam == reinterpret_cast<LPARAM>(node.hItem) ? "+"
                : node.lParam == 0                                  ? "0"
                                                                    : "?") +
               " ";
      }
    });
    return all;
  }
};

TEST_F(MediaPageTest, ShowsGroupsSortedByTheirLabels) {
  driver_.files.PutFolder("\\Music\\B");
  driver_.files.PutFolder("\\Music\\a");
  driver_.files.Put("\\Music\\B\\one.mp3", Id3v1Tag("Eins", "SINE", "Waves", 9));
  driver_.files.Put("\\Music\\a\\two.mp3", Id3v1Tag("Zwei", "Sine", "Zeta", 8));
  const struct {
    int order;
    const char* want;
  } cases[] = {
      {1,
       "Jazz\n Sine\n  Waves\n   One\n   Two\n  Zeta\n   Zwei\n"
       "Metal\n SINE\n  Waves\n   Eins\nUnknown\n Unknown\n  Unknown\n   three.mp3\n"},
      {4,
       "Unknown\n Unknown\n  three.mp3\nWaves\n Sine\n  Eins\n  One\n  Two\n"
       "Zeta\n Sine\n  Zwei\n"},
      {6, "Sine\n Eins\n One\n Two\n Zwei\nUnknown\n three.mp3\n"},
      {7, "Music\n a\n  two.mp3\n B\n  one.mp3\n one.mp3\n three.mp3\n two.mp3\n"},
  };
  ShowAfterScan(1, [&] {
    for (const auto& c : cases) {
      driver_.Do(ID_FIRST_ORDER + c.order - 1);
      EXPECT_EQ(driver_.Nodes(), c.want);
      EXPECT_FALSE(driver_.Enabled(ID_EDIT_TAG)) << c.order;
    }
    EXPECT_EQ(Insides(), "441+ 441+ 3300 441+ 3300 3300 3300 3300 ");
    driver_.Run([&] { driver_.files.Delete(L"\\Music\\B\\one.mp3"); });
    driver_.Do(ID_RESCAN);  // on this page, too
    EXPECT_EQ(driver_.Nodes(), "Music\n a\n  two.mp3\n one.mp3\n three.mp3\n two.mp3\n");
    driver_.Do(ID_FIRST_ORDER);
    EXPECT_EQ(Insides().substr(0, 30), "0010 2210 1110 3300 3300 1110 ");
  });
}

// The control sorts without regard to hyphens, folders are sorted again by their characters. A file
// is equal to everything.
TEST_F(MediaPageTest, FoldersAreSortedAgainFilesStay) {
  for (const char* folder : {"ab", "a-c", "Beta", "zeta"}) {
    driver_.files.PutFolder("\\" + std::string(folder));
    driver_.files.Put("\\" + std::string(folder) + "\\x.mp3", "");
  }
  for (const char* file : {"\\alpha.mp3", "\\gamma.mp3"}) driver_.files.Put(file, "");
  ShowMediaBy(kFolders, [&] {
    std::string top;
    for (HTREEITEM item = TreeView_GetRoot(driver_.Tree()); item;
         item = TreeView_GetNextSibling(driver_.Tree(), item)) {
      top += driver_.Label(driver_.Tree(), item) + " ";
    }
    EXPECT_EQ(top, "a-c ab alpha.mp3 Beta gamma.mp3 Music zeta ");
    driver_.Do(ID_FIRST_ORDER);
  });
}

using Pixels = std::vector<uint32_t>;

Pixels Draw(const std::function<void(HDC)>& draw) {
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), 16, -16, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HDC dc = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ old = SelectObject(dc, bitmap);
  const RECT all = {0, 0, 16, 16};
  FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  draw(dc);
  GdiFlush();
  const auto* pixels = static_cast<const uint32_t*>(bits);
  Pixels drawn(pixels, pixels + 256);
  for (uint32_t& pixel : drawn) pixel &= 0xFFFFFF;
  SelectObject(dc, old);
  DeleteObject(bitmap);
  DeleteDC(dc);
  return drawn;
}

TEST_F(MediaPageTest, KindsAndChecksHaveTheirIcons) {
  const struct {
    int list;
    std::vector<int> icons;
  } lists[] = {{TVSIL_NORMAL, {IDI_GENRE, IDI_ALBUM, IDI_ARTIST, IDI_FILE, IDI_FOLDER}},
               {TVSIL_STATE, {IDI_NO_STATE, IDI_UNCHECKED, IDI_CHECKED}}};
  ShowAfterScan(1, [&] {
    driver_.Run([&] {
      for (const auto& list : lists) {
        const HIMAGELIST images = TreeView_GetImageList(driver_.Tree(), list.list);
        ASSERT_EQ(ImageList_GetImageCount(images), static_cast<int>(list.icons.size()));
        for (int i = 0; i < static_cast<int>(list.icons.size()); ++i) {
          const auto icon = static_cast<HICON>(LoadImageW(
              GetModuleHandleW(nullptr), MAKEINTRESOURCEW(list.icons[static_cast<size_t>(i)]),
              IMAGE_ICON, 16, 16, 0));
          const Pixels got =
              Draw([&](HDC dc) { ImageList_Draw(images, i, dc, 0, 0, ILD_TRANSPARENT); });
          EXPECT_EQ(
              got, Draw([&](HDC dc) { DrawIconEx(dc, 0, 0, icon, 16, 16, 0, nullptr, DI_NORMAL); }))
              << list.list << ", " << i;
          DestroyIcon(icon);
        }
      }
    });
  });
}

TEST_F(MediaPageTest, BoxesOfGroupsAndFilesHangTogether) {
  ShowMediaBy(ID_FIRST_ORDER, [&] {
    driver_.ExpandAll(driver_.Tree());
    const struct {
      const char* tapped;
      UINT part;
      const char* want;  // of Jazz, Sine, Waves, One, Two; Unknown three times, three.mp3
    } taps[] = {
        {"Jazz", kBox, "xxxxx...."},
        {"Jazz\\Sine\\Waves\\One", kBox, "....x...."},
        {"Jazz\\Sine\\Waves\\One", kBox, "...xx...."},
        {"Unknown\\Unknown\\Unknown", kBox, "...xx..xx"},
        {"Jazz\\Sine", kBox, ".xxxx..xx"},
        {"Jazz\\Sine\\Waves", TVHT_ONITEMLABEL, ".xxxx..xx"},
        {"Jazz\\Sine\\Waves\\Two", TVHT_ONITEMICON, ".xxxx..xx"},
        {"Jazz", kBox, "xxxxx..xx"},
        {"Jazz\\Sine\\Waves", kBox, "...xx..xx"},
        {"Unknown\\Unknown\\Unknown\\three.mp3", kBox, "...xx...."},
        {"Jazz", TVHT_ONITEMBUTTON, "...xx...."},
    };
    for (const auto& tap : taps) {
      driver_.TapTree(driver_.Tree(), tap.tapped, tap.part);
      EXPECT_EQ(Boxes(), tap.want) << tap.tapped;
    }
    EXPECT_EQ(
        TreeView_GetItemState(driver_.Tree(), driver_.Node(driver_.Tree(), "Jazz"), TVIS_EXPANDED) &
            TVIS_EXPANDED,
        0u)
        << "its button collapses it";
    driver_.Tap(driver_.Tree(), {200, 200});  // beside all items
    driver_.Do(ID_ADD_CHECKED);
    // The space bar is a tap on the box of the selected node.
    driver_.Do(ID_CHECK_NONE);
    driver_.SelectNode("Jazz\\Sine\\Waves");
    for (const char* want : {"..xxx....", "...xx...."}) {
      driver_.Key(driver_.Tree(), VK_SPACE);
      driver_.Settle();
      EXPECT_EQ(Boxes(), want);
    }
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nTwo x\n");
  });
}

TEST_F(MediaPageTest, LabelAndIconDecideAboutTheFileCommands) {
  ShowMediaBy(kArtists, [&] {
    driver_.ExpandAll(driver_.Tree());
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
        for (const int id : {ID_EDIT_TAG, ID_DELETE_FILE}) {
          SendMessageW(driver_.MenuBar(), TB_ENABLEBUTTON, static_cast<WPARAM>(id),
                       MAKELONG(!tap.is_file, 0));
        }
        driver_.TapTree(driver_.Tree(), tap.tapped, tap.part);
        for (const int id : {ID_EDIT_TAG, ID_DELETE_FILE}) {
          EXPECT_EQ(driver_.Enabled(id), tap.is_file) << id;
        }
      }
    }
    EXPECT_EQ(driver_.Nodes(), kByArtist);
  });
}

TEST_F(MediaPageTest, ButtonsOfTheMenuBar) {
  ShowAfterScan(1, [&] {
    driver_.StartTapOnButton(ID_GROUPING);
    EXPECT_EQ(driver_.MenuItems(),
              "Genre\\Artist\\Album 40025\nGenre\\Album\\Artist 40026\nArtist\\Album 40027\n"
              "Album\\Artist 40028\nAlbum Title 40029\nArtist Name 40030\n"
              "Directory\\Filename 40031\n");
    driver_.ChooseMenuItem(6);
    driver_.Settle();
    EXPECT_EQ(driver_.Nodes(), "Music\n one.mp3\n three.mp3\n two.mp3\n");
    driver_.StartTapOnButton(ID_CHECKS);
    EXPECT_EQ(driver_.MenuItems(),
              "Check &All 40034\nCheck None 40035\nInvert Check State 40039\n");
    driver_.ChooseMenuItem(2);
    driver_.Settle();
    EXPECT_EQ(Boxes(), "xxxx");
    driver_.StartTapOnButton(ID_DELETE_FILE);  // is disabled: nothing is selected
    driver_.StartTapOnButton(ID_ADD_CHECKED);
    driver_.Settle();
    EXPECT_FALSE(driver_.AnythingOpened());
    driver_.Do(ID_CHECK_NONE);
    EXPECT_EQ(Boxes(), "....");
    driver_.Do(ID_CHECK_ALL);
    EXPECT_EQ(Boxes(), "xxxx");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), kAllSongs);
    driver_.StartTapOnButton(ID_SELECTION);
    EXPECT_EQ(driver_.MenuItems(),
              "Select &All 40100\nSelect &None 40101\n&Invert Selection 40102\n");
    driver_.ChooseMenuItem(0);
    driver_.Settle();
    driver_.StartTapOnButton(ID_REMOVE_SELECTED);
    driver_.Settle();
    EXPECT_EQ(driver_.Items(), "");
  });
}

TEST_F(MediaPageTest, TheLastEntryIsDoubledUntilTheNextScan) {
  ShowMediaBy(ID_FIRST_ORDER, [&] {
    DeleteNode("Jazz\\Sine\\Waves\\One", "\\Music\\one.mp3", IDNO);
    EXPECT_TRUE(driver_.Exists("\\Music\\one.mp3"));
    DeleteNode("Jazz\\Sine\\Waves\\One", "\\Music\\one.mp3");
    EXPECT_FALSE(driver_.Exists("\\Music\\one.mp3"));
    DeleteNode("Jazz\\Sine\\Waves\\Two", "\\Music\\two.mp3");
    EXPECT_EQ(driver_.Nodes(), "Unknown\n Unknown\n  Unknown\n   three.mp3\n")
        << "groups that became empty are gone";
    driver_.Do(kFolders);  // three.mp3 was read last
    EXPECT_EQ(driver_.Nodes(), "Music\n three.mp3\n three.mp3\n three.mp3\n");
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
    for (int i = 0; i < 2; ++i) {  // the second time it is gone already: nothing happens
      DeleteNode("Music\\three.mp3", "\\Music\\three.mp3");
      EXPECT_EQ(driver_.Nodes(), "Music x\n three.mp3 x\n three.mp3 x\n");
    }
  });
  driver_.Show([&] {
    driver_.GoTo(1);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Nodes(), "");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "three.mp3 x\nthree.mp3 x\nthree.mp3 x\n")
        << "the current playlist keeps what it has";
  });
  driver_.feature.Destroy(0);
  driver_.feature.Destroy(0);
  driver_.Show([&] {
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "");
  });
}

TEST_F(MediaPageTest, OnlyAFileCanBeDeleted) {
  ShowMediaBy(kArtists, [&] {
    for (const char* node : {"", "Sine"}) {
      driver_.SelectNode(node);
      driver_.Post(ID_DELETE_FILE);
      driver_.Settle();
      EXPECT_FALSE(driver_.AnythingOpened()) << node;
    }
    driver_.Run([&] { driver_.files.Find("\\Music\\one.mp3")->attributes = kAttributeReadOnly; });
    DeleteNode("Sine\\One", "\\Music\\one.mp3");
    EXPECT_EQ(driver_.Nodes(), kByArtist);
    EXPECT_TRUE(driver_.Enabled(ID_DELETE_FILE));
  });
}

}  // namespace
}  // namespace kelvo
