// The tag editor, opened on the Media Catalog page. What it makes of a tag: tag_edit_test.cpp.
#include "catalog/media/id3v1.h"
#include "tests/catalog/catalog_window_fixture.h"

extern "C" BOOL WINAPI KelvoInputPanelState();

namespace kelvo {
namespace {

using test::Id3v1Tag;
using test::Utf8;

constexpr char kOne[] = "\\Music\\one.mp3";
constexpr char kThree[] = "\\Music\\three.mp3";

class TagEditorTest : public test::CatalogWindowTest {
 protected:
  // The Media Catalog by artists, every song in the current playlist.
  void ShowSongs(const std::function<void()>& use) {
    ShowAfterScan(0, [&] {
      AddLists();
      GoTo(1);
      Do(kArtists);
      use();
    });
  }
  void Open(const std::string& node) {
    SelectNode(node);
    Post(ID_EDIT_TAG);
    editor_ = WaitForWindow(L"Edit Media Description");
  }
  // File, title, artist, album, year, track, comment, and the genre's number.
  std::string Fields() {
    std::string all;
    for (const int id : kFields) all += Text(editor_, id) + "|";
    return Text(editor_, IDC_TAG_FILE) + "|" + all +
           std::to_string(SendDlgItemMessageW(editor_, IDC_TAG_GENRE, CB_GETCURSEL, 0, 0));
  }
  void Type(std::initializer_list<std::string> texts) {
    const int* id = kFields;
    for (const std::string& text : texts) SetDlgItemTextW(editor_, *id++, test::Wide(text));
  }
  void ChooseGenre(int genre) {
    SendDlgItemMessageW(editor_, IDC_TAG_GENRE, CB_SETCURSEL, static_cast<WPARAM>(genre), 0);
  }
  void Update() { Answer(editor_, IDC_TAG_UPDATE); }
  // Of the tag that is written when comment, year and track are left empty.
  static std::string Plain(const std::string& title, const std::string& artist, int genre) {
    return Id3v1Tag(title, artist, "", static_cast<uint8_t>(genre))
        .replace(93, 34, std::string(34, '\0'));
  }

  static constexpr int kFields[] = {IDC_TAG_TITLE, IDC_TAG_ARTIST, IDC_TAG_ALBUM,
                                    IDC_TAG_YEAR,  IDC_TAG_TRACK,  IDC_TAG_COMMENT};
  HWND editor_ = nullptr;
};

TEST_F(TagEditorTest, ShowsTheTagOnAFullScreenAndWritesWhatIsTyped) {
  const std::string thirty = "abcdefghijklmnopqrstuvwxyz1234", track12("\0\x0C", 2);
  const std::string before =
      "audio" +
      Id3v1Tag("One", "Sine", "Waves", 147, ' ').replace(97, 28, 28, 'c').replace(125, 2, track12);
  files_.Put(kOne, before);
  ShowSongs([&] {
    Open("Sine\\One");
    EXPECT_EQ(Fields(), "one.mp3|One|Sine|Waves|1999|12|" + std::string(28, 'c') + "|147");
    const HWND genres = GetDlgItem(editor_, IDC_TAG_GENRE);
    ASSERT_EQ(SendMessageW(genres, CB_GETCOUNT, 0, 0), 148);
    for (unsigned i = 0; i < 148; ++i) {
      wchar_t name[64] = L"";
      SendMessageW(genres, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(name));
      EXPECT_EQ(Utf8(name), GenreName(i));
    }
    RECT client = {};
    GetClientRect(editor_, &client);
    EXPECT_EQ(client.right, 240);
    EXPECT_EQ(client.bottom, 268);
    // On a wider screen the fields take the room, and the buttons stay at the right.
    const auto right_of = [&](int id) {
      RECT place = {};
      GetWindowRect(GetDlgItem(editor_, id), &place);
      return place.right;
    };
    const LONG title = right_of(IDC_TAG_TITLE), close = right_of(IDCANCEL),
               year = right_of(IDC_TAG_YEAR);
    RECT place = {};
    GetWindowRect(editor_, &place);
    for (const LONG more : {100, 30, -20, 0}) {
      Run([&] {
        SetWindowPos(editor_, nullptr, 0, 0, place.right - place.left + more,
                     place.bottom - place.top, SWP_NOMOVE | SWP_NOZORDER);
      });
      EXPECT_EQ(right_of(IDC_TAG_TITLE), title + (more > 0 ? more : 0)) << more;
      EXPECT_EQ(right_of(IDCANCEL), close + (more > 0 ? more : 0)) << more;
      EXPECT_EQ(right_of(IDC_TAG_YEAR), year);
    }
    // Another program's window may have taken the focus meanwhile; coming back, it is where it was.
    EXPECT_TRUE(test::WaitFor([&] {
      int focused = 0;
      Run([&] {
        SetForegroundWindow(editor_);
        focused = GetDlgCtrlID(GetFocus());
      });
      return focused == IDC_TAG_ARTIST;
    }));
    Run([] { EXPECT_TRUE(KelvoInputPanelState()); });
    Answer(editor_, IDCANCEL);
    Run([] { EXPECT_FALSE(KelvoInputPanelState()); });
    EXPECT_EQ(BytesOf(kOne), before) << "closed without an update";

    Open("Sine\\One");  // what is set without typing is cut to its field
    Type({thirty + "too long", thirty + "5", thirty + "5", "20013", "300", thirty + "5"});
    ChooseGenre(8);
    Update();
    std::string want = Id3v1Tag(thirty, thirty, thirty, 8).replace(93, 4, "2001");
    want.replace(97, 30, thirty.substr(0, 28) + std::string("\0\x1E", 2));
    EXPECT_EQ(BytesOf(kOne), "audio" + want);
  });
}

TEST_F(TagEditorTest, AnUntaggedFileGrowsOnceAndIsShownEverywhere) {
  ShowSongs([&] {
    Open("Unknown\\three.mp3");
    EXPECT_EQ(Fields(), "three.mp3|||||||-1");
    std::string taken;  // of what is typed
    for (const int id : kFields) {
      const HWND field = GetDlgItem(editor_, id);
      SetWindowTextW(field, L"");
      for (int i = 0; i < 40; ++i) SendMessageW(field, WM_CHAR, '1', 0);
      taken += std::to_string(Text(field).size()) + "|";
    }
    EXPECT_EQ(taken, "30|30|30|4|40|30|");
    Type({"Drei", "SINE", "", "", "", ""});
    Answer(editor_, IDOK);  // Done updates as well
    EXPECT_EQ(BytesOf(kThree), "plain" + Plain("Drei", "SINE", 255));
    EXPECT_EQ(Nodes(), "Sine\n Drei\n One\n Two\n") << "grouped without regard to case";
    EXPECT_TRUE(Enabled(ID_EDIT_TAG)) << "the file is selected in the new tree";
    GoTo(2);
    EXPECT_EQ(Items(), "One x\nDrei x\nTwo x\n");
    EXPECT_EQ(Cell(List(), 1, 1), "SINE");

    GoTo(1);
    Run([&] { TreeView_SetCheckState(Tree(), Node(Tree(), "Sine\\One"), TRUE); });
    Post(ID_EDIT_TAG);
    editor_ = WaitForWindow(L"Edit Media Description");
    EXPECT_EQ(Fields(), "three.mp3|Drei|SINE|||||-1");
    Type({"Three"});
    ChooseGenre(8);
    Update();
    EXPECT_EQ(BytesOf(kThree), "plain" + Plain("Three", "SINE", 8));
    EXPECT_EQ(Nodes(), "Sine\n One x\n Three\n Two\n") << "what was checked is checked";
    EXPECT_TRUE(TreeView_GetItemState(Tree(), Node(Tree(), "Sine"), TVIS_EXPANDED) & TVIS_EXPANDED);
    Do(ID_CHECK_ALL);
    Do(ID_ADD_CHECKED);
    GoTo(2);
    EXPECT_EQ(Items(), "One x\nThree x\nTwo x\nOne x\nThree x\nTwo x\n");
    EXPECT_EQ(Cell(List(), 1, 3), "Jazz");
  });
}

TEST_F(TagEditorTest, AFailureIsToldAndChangesNothing) {
  const std::string before = "x" + Id3v1Tag("One", "Sine", "Waves", 8);
  ShowSongs([&] {
    const auto set_locked = [&](bool locked) { Run([&] { files_.Find(kOne)->locked = locked; }); };
    Open("Sine\\One");
    Type({"Uno"});
    set_locked(true);
    PostMessageW(editor_, WM_COMMAND, IDC_TAG_UPDATE, 0);
    const HWND box = WaitForWindow(L"");
    EXPECT_EQ(BoxText(box),
              "Error updating file! The possible reason that it is locked by other application?");
    Answer(box, IDOK);
    EXPECT_EQ(Fields().substr(0, 13), "one.mp3|Uno|S") << "what was typed is still there";
    EXPECT_EQ(BytesOf(kOne), before);
    set_locked(false);
    Update();  // the second try
    EXPECT_EQ(Nodes(), "Sine\n Two\n Uno\nUnknown\n three.mp3\n");
    GoTo(2);
    EXPECT_EQ(Items(), "Uno x\nthree.mp3 x\nTwo x\n");
  });
}

}  // namespace
}  // namespace kelvo
