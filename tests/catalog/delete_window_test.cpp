// Files deleted and renamed from the pages, and what the lists and the tree make of it.
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

using test::SheetDriver;
using test::WaitFor;

class DeleteTest : public test::CatalogWindowTest {
 protected:
  // The question about this file; it is answered.
  void Ask(const std::string& path, int answer) {
    driver_.Post(ID_DELETE_FILE);
    const HWND box = driver_.WaitForWindow(L"Delete File");
    EXPECT_EQ(driver_.BoxText(box), "Do you want to permanently delete \"" + path + "\"?");
    driver_.Answer(box, answer);
  }
  void DeleteNode(const std::string& node, const std::string& path, int answer = IDYES) {
    ASSERT_TRUE(driver_.Node(node)) << node;
    TreeView_SelectItem(driver_.Tree(), driver_.Node(node));
    Ask(path, answer);
  }
  void Rename(const wchar_t* name, int answer = IDOK) {
    driver_.Post(ID_RENAME);
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, name);
    driver_.Answer(entry, answer);
  }
  bool Exists(const std::string& path) { return driver_.BytesOf(path) != "no file"; }
};

TEST_F(DeleteTest, TheLastEntryIsDoubledUntilTheNextScan) {
  ShowAfterScan(1, [&] {
    AddLists();
    driver_.GoTo(1);
    driver_.Do(ID_LAST_ORDER);
    DeleteNode("Music\\one.mp3", "\\Music\\one.mp3", IDNO);
    EXPECT_EQ(driver_.Nodes(), "Music\n one.mp3\n three.mp3\n two.mp3\n");
    EXPECT_TRUE(Exists("\\Music\\one.mp3"));
    DeleteNode("Music\\one.mp3", "\\Music\\one.mp3");
    EXPECT_EQ(driver_.Nodes(), "Music\n three.mp3\n two.mp3\n");
    EXPECT_FALSE(Exists("\\Music\\one.mp3"));

    for (int i = 0; i < 2; ++i) {  // three.mp3 was read last and stands in two slots
      driver_.Do(ID_FIRST_ORDER + 5 + i);
      EXPECT_EQ(driver_.Nodes(), i == 0 ? "Sine\n Two\nUnknown\n three.mp3\n three.mp3\n"
                                        : "Music\n three.mp3\n three.mp3\n two.mp3\n");
    }
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
    DeleteNode("Music\\three.mp3", "\\Music\\three.mp3");
    EXPECT_EQ(driver_.Nodes(), "Music x\n three.mp3 x\n two.mp3 x\n");
    DeleteNode("Music\\three.mp3", "\\Music\\three.mp3");  // is gone already: nothing happens
    EXPECT_EQ(driver_.Nodes(), "Music x\n three.mp3 x\n two.mp3 x\n");
    driver_.Do(ID_LAST_ORDER);
    DeleteNode("Music\\two.mp3", "\\Music\\two.mp3");
    driver_.Do(ID_FIRST_ORDER + 5);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Nodes(), "");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nthree.mp3 x\nTwo x\nthree.mp3 x\nthree.mp3 x\nTwo x\n")
        << "the current playlist keeps what it has";
  });
  driver_.Show([&] {
    driver_.GoTo(1);
    EXPECT_EQ(driver_.Nodes(), "");
  });
}

TEST_F(DeleteTest, ADoubledEntrySurvivesTheSheetAndTheFeature) {
  ShowAfterScan(1, [&] {
    driver_.Do(ID_FIRST_ORDER);
    DeleteNode("Jazz\\Sine\\Waves\\One", "\\Music\\one.mp3");
    DeleteNode("Jazz\\Sine\\Waves\\Two", "\\Music\\two.mp3");
    EXPECT_EQ(driver_.Nodes(), "Unknown\n Unknown\n  Unknown\n   three.mp3\n")
        << "groups that became empty are gone";
  });
  driver_.Show([&] {
    driver_.GoTo(1);
    EXPECT_EQ(driver_.Nodes(),
              "Unknown\n Unknown\n  Unknown\n   three.mp3\n   three.mp3\n   three.mp3\n");
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
  });
  driver_.feature.Destroy(0);
  driver_.feature.Destroy(0);
  driver_.Show([&] {
    driver_.GoTo(1);
    EXPECT_EQ(driver_.Nodes(), "");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "");
  });
}

TEST_F(DeleteTest, OnlyAFileCanBeDeletedFromTheTree) {
  ShowAfterScan(1, [&] {
    driver_.Do(ID_FIRST_ORDER + 5);
    for (const char* node : {"", "Sine"}) {
      TreeView_SelectItem(driver_.Tree(), driver_.Node(node));
      driver_.Post(ID_DELETE_FILE);
      driver_.Settle();
      EXPECT_EQ(driver_.Window(L"Playlist Organizer"), driver_.Sheet()) << node << ": asked";
    }
    driver_.Run([&] { driver_.files.Find("\\Music\\one.mp3")->attributes = kAttributeReadOnly; });
    DeleteNode("Sine\\One", "\\Music\\one.mp3");
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n three.mp3\n");
    EXPECT_TRUE(driver_.Enabled(ID_DELETE_FILE));
  });
}

TEST_F(DeleteTest, PlaylistsKeepTheirFilesWhenOneGoes) {
  for (const char* name : {"c", "d", "e"}) {
    driver_.files.Put("\\Lists\\" + std::string(name) + ".m3u", "\\Music\\one.mp3\r\n");
  }
  driver_.files.Put("\\Lists\\A0.m3u", "\\Music\\two.mp3\r\n");  // first in the sorted list
  const std::string lists =
      "\\Lists\\A0.m3u\n\\Lists\\b.pls\n\\Lists\\c.m3u\n\\Lists\\d.m3u\n\\Lists\\e.m3u\n";
  driver_.Show([&] {
    ScanNow();
    ASSERT_TRUE(WaitFor([&] { return driver_.Items().find("A0") != std::string::npos; }));
    driver_.Select(1);
    Ask("\\Lists\\A0.m3u", IDNO);
    Rename(L"unused.m3u", IDCANCEL);
    EXPECT_EQ(driver_.Items().substr(0, 32), "\\Lists\\a.m3u\n\\Lists\\A0.m3u *\n\\Li");
    driver_.Select(0);
    Ask("\\Lists\\a.m3u", IDYES);
    EXPECT_EQ(driver_.Items(), lists);
    driver_.Check(0, true);
    driver_.Check(1, true);
    driver_.Do(ID_ADD_CHECKED);  // each item still stands for its own file
    driver_.Select(4);
    Rename(L"zz.m3u");
    EXPECT_TRUE(Exists("\\Lists\\zz.m3u"));
    driver_.Select(2);
    Ask("\\Lists\\c.m3u", IDYES);
    driver_.Select(3);
    Ask("\\Lists\\zz.m3u", IDYES);
    EXPECT_EQ(driver_.Items(), "\\Lists\\A0.m3u x\n\\Lists\\b.pls x\n\\Lists\\d.m3u\n");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "Two x\nTwo x\n");
  });
}

TEST_F(DeleteTest, WithoutASelectionTheMarkIsRenamedAndNothingDeleted) {
  ShowAfterScan(0, [&] {
    ListView_SetSelectionMark(driver_.List(), 1);
    driver_.Post(ID_DELETE_FILE);
    driver_.Settle();
    EXPECT_EQ(driver_.Window(L"Playlist Organizer"), driver_.Sheet()) << "asked";
    driver_.Post(ID_RENAME);
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    EXPECT_EQ(driver_.Text(entry, IDC_TEXT_ENTRY), "b.pls");
    driver_.Answer(entry, IDCANCEL);
    EXPECT_EQ(driver_.Items(), kLists);
  });
}

TEST_F(DeleteTest, ANewNameIsShownEvenWhenTheFileCouldNotMove) {
  ShowAfterScan(0, [&] {
    driver_.Select(0);
    driver_.Post(ID_RENAME);
    const HWND entry = driver_.WaitForWindow(L"Edit File Name");
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, L"");
    SendMessageW(entry, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(IsWindow(entry)) << "an empty name is not taken";
    SetDlgItemTextW(entry, IDC_TEXT_ENTRY, L"b.pls");  // there is one
    driver_.Answer(entry, IDOK);
    EXPECT_EQ(driver_.Items(), "\\Lists\\b.pls *\n\\Lists\\b.pls\n");
    EXPECT_TRUE(Exists("\\Lists\\a.m3u"));
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Items(), kLists);
    driver_.Select(1);
    Rename(L"0.pls");
    EXPECT_EQ(driver_.Items(), "\\Lists\\a.m3u\n\\Lists\\0.pls *\n") << "where it stood";
    EXPECT_EQ(driver_.BytesOf("\\Lists\\0.pls"), "File1=\\Music\\two.mp3\r\n");
  });
}

}  // namespace
}  // namespace kelvo
