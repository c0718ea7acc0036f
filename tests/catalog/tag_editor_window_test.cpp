// The tag editor, opened on the Media Catalog page.
#include "catalog/media/genre_list.h"
#include "tests/catalog/catalog_window_fixture.h"

extern "C" BOOL WINAPI KelvoInputPanelState();

namespace kelvo {
namespace {

using test::Id3v1Tag;
using test::Utf8;
using test::WaitFor;

constexpr char kOne[] = "\\Music\\one.mp3";
constexpr char kThree[] = "\\Music\\three.mp3";
constexpr char kNotWritten[] =
    "Error updating file! The possible reason that it is locked by other application?";

class TagEditorTest : public test::CatalogWindowTest {
 protected:
  // The Media Catalog by artists, every song in the current playlist.
  void ShowSongs(const std::function<void()>& use) {
    ShowAfterScan(0, [&] {
      AddLists();
      driver_.GoTo(1);
      driver_.Do(ID_FIRST_ORDER + 5);
      use();
    });
  }
  void Open(const std::string& node) {
    ASSERT_TRUE(driver_.Node(node)) << node;
    TreeView_SelectItem(driver_.Tree(), driver_.Node(node));
    driver_.Post(ID_EDIT_TAG);
    editor_ = driver_.WaitForWindow(L"Edit Media Description");
  }
  std::string Field(int id) { return driver_.Text(editor_, id); }
  void Type(int id, const std::string& text) { SetDlgItemTextW(editor_, id, test::Wide(text)); }
  LRESULT Genre() { return SendDlgItemMessageW(editor_, IDC_TAG_GENRE, CB_GETCURSEL, 0, 0); }
  void ChooseGenre(int genre) {
    SendDlgItemMessageW(editor_, IDC_TAG_GENRE, CB_SETCURSEL, static_cast<WPARAM>(genre), 0);
  }
  void Update() { driver_.Answer(editor_, IDC_TAG_UPDATE); }
  // The button brings up the message, and the editor stays.
  void FailToUpdate() {
    PostMessageW(editor_, WM_COMMAND, IDC_TAG_UPDATE, 0);
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = driver_.Window(L"")) != nullptr; }));
    EXPECT_EQ(driver_.BoxText(box), kNotWritten);
    driver_.Answer(box, IDOK);
    EXPECT_TRUE(IsWindow(editor_));
  }
  std::string Cell(int item, int column) {
    wchar_t text[100] = L"";
    LVITEMW cell = {};
    cell.iSubItem = column;
    cell.pszText = text;
    cell.cchTextMax = 100;
    SendMessageW(driver_.List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(item),
                 reinterpret_cast<LPARAM>(&cell));
    return Utf8(text);
  }
  uint32_t AttributesOf(const char* path) {
    uint32_t attributes = 0;
    driver_.Run([&] { attributes = driver_.files.Find(path)->attributes; });
    return attributes;
  }
  void SetAttributesOf(const char* path, uint32_t attributes) {
    driver_.Run([&] { driver_.files.Find(path)->attributes = attributes; });
  }

  HWND editor_ = nullptr;
};

TEST_F(TagEditorTest, ShowsTheTagOnAFullScreen) {
  std::string with_track = Id3v1Tag("One", "Sine", "Waves", 147, ' ');
  with_track.replace(97, 30, "com ment" + std::string(20, ' ') + std::string("\0\x0C", 2));
  driver_.files.Put(kOne, "audio" + with_track);
  ShowSongs([&] {
    Open("Sine\\One");
    const struct {
      int id;
      const char* text;
    } fields[] = {{IDC_TAG_FILE, "one.mp3"},    {IDC_TAG_TITLE, "One"}, {IDC_TAG_ARTIST, "Sine"},
                  {IDC_TAG_ALBUM, "Waves"},     {IDC_TAG_YEAR, "1999"}, {IDC_TAG_TRACK, "12"},
                  {IDC_TAG_COMMENT, "com ment"}};
    for (const auto& field : fields) EXPECT_EQ(Field(field.id), field.text) << field.id;
    EXPECT_EQ(Genre(), 147);
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
    // Another program's window may have taken the focus meanwhile; coming back, it is where it was.
    EXPECT_TRUE(WaitFor([&] {
      int focused = 0;
      driver_.Run([&] {
        SetForegroundWindow(editor_);
        focused = GetDlgCtrlID(GetFocus());
      });
      return focused == IDC_TAG_ARTIST;
    }));
    driver_.Run([] { EXPECT_TRUE(KelvoInputPanelState()); });
    driver_.Answer(editor_, IDCANCEL);
    driver_.Run([] { EXPECT_FALSE(KelvoInputPanelState()); });
    EXPECT_EQ(driver_.BytesOf(kOne), "audio" + with_track) << "closed without an update";
  });
}

TEST_F(TagEditorTest, WritesBothForms) {
  const std::string thirty = "abcdefghijklmnopqrstuvwxyz1234";
  const struct {
    const char* name;
    std::string title, artist, year, track, comment;
    int genre;
    std::string want;  // the whole tag
  } cases[] = {
      {"a track takes two characters of the comment", "T", "A", "2001", "7", thirty, 147,
       Id3v1Tag("T", "A", "Waves", 147)
           .replace(93, 4, "2001")
           .replace(97, 30, thirty.substr(0, 28) + std::string("\0\7", 2))},
      {"no track", "T", "A", "2001", "", thirty, 0,
       Id3v1Tag("T", "A", "Waves", 0).replace(93, 4, "2001").replace(97, 30, thirty)},
      {"everything is cut to its field", thirty + "too long", thirty + "5", "19999", "300",
       thirty + "5", 8,
       Id3v1Tag(thirty, thirty, "Waves", 8)
           .replace(97, 30, thirty.substr(0, 28) + std::string("\0\x1E", 2))},
      {"no genre, nothing filled in", "", "", "", "", "", -1,
       Id3v1Tag("", "", "Waves", 255).replace(93, 34, std::string(34, '\0'))},
      {"letters of the code page", "Caf\xC3\xA9", "A", "1999", "0", "", 8,
       Id3v1Tag("Caf\xE9", "A", "Waves", 8).replace(97, 30, std::string(30, '\0'))},
  };
  ShowSongs([&] {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      driver_.Run([&] { driver_.files.Put(kOne, "audio" + Id3v1Tag("One", "Sine", "Waves", 8)); });
      driver_.Do(ID_RESCAN);
      Open("Sine\\One");
      Type(IDC_TAG_TITLE, c.title);
      Type(IDC_TAG_ARTIST, c.artist);
      Type(IDC_TAG_YEAR, c.year);
      Type(IDC_TAG_TRACK, c.track);
      Type(IDC_TAG_COMMENT, c.comment);
      ChooseGenre(c.genre);
      Update();
      EXPECT_EQ(driver_.BytesOf(kOne), "audio" + c.want);
    }
  });
}

TEST_F(TagEditorTest, AnUntaggedFileGrowsOnceAndIsShownEverywhere) {
  ShowSongs([&] {
    Open("Unknown\\three.mp3");
    for (const int id : {IDC_TAG_TITLE, IDC_TAG_ARTIST, IDC_TAG_ALBUM, IDC_TAG_YEAR, IDC_TAG_TRACK,
                         IDC_TAG_COMMENT}) {
      EXPECT_EQ(Field(id), "") << id;
    }
    EXPECT_EQ(Genre(), CB_ERR);
    Type(IDC_TAG_TITLE, "Drei");
    Type(IDC_TAG_ARTIST, "SINE");
    driver_.Answer(editor_, IDOK);  // Done updates as well
    EXPECT_EQ(driver_.BytesOf(kThree),
              "plain" + Id3v1Tag("Drei", "SINE", "", 255).replace(93, 34, std::string(34, '\0')));
    EXPECT_EQ(driver_.Nodes(), "Sine\n Drei\n One\n Two\n") << "grouped without regard to case";
    EXPECT_FALSE(driver_.Enabled(ID_EDIT_TAG)) << "nothing is selected in the new tree";
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nDrei x\nTwo x\n");
    EXPECT_EQ(Cell(1, 1), "SINE");
    EXPECT_EQ(Cell(1, 3), "Unknown");

    driver_.GoTo(1);
    Open("Sine\\Drei");
    EXPECT_EQ(Field(IDC_TAG_TITLE), "Drei");
    Type(IDC_TAG_TITLE, "Three");
    ChooseGenre(8);
    Update();
    EXPECT_EQ(driver_.BytesOf(kThree),
              "plain" + Id3v1Tag("Three", "SINE", "", 8).replace(93, 34, std::string(34, '\0')));
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nThree x\nTwo x\n");
    EXPECT_EQ(Cell(1, 3), "Jazz");
    driver_.GoTo(1);
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nThree x\nTwo x\nOne x\nThree x\nTwo x\n");
  });
}

TEST_F(TagEditorTest, ATagThatTheCatalogHasNotSeenStays) {
  ShowSongs([&] {
    const std::string unseen = "plain" + Id3v1Tag("Unseen", "", "", 1);
    driver_.Run([&] { driver_.files.Put(kThree, unseen); });
    Open("Unknown\\three.mp3");
    EXPECT_EQ(Field(IDC_TAG_TITLE), "");
    Type(IDC_TAG_TITLE, "New");
    Update();
    EXPECT_EQ(driver_.BytesOf(kThree),
              unseen + Id3v1Tag("New", "", "", 255).replace(93, 34, std::string(34, '\0')));
    // The other way round: what the catalog saw is gone, a new tag goes behind the end.
    driver_.Run([&] { driver_.files.Put(kOne, "short"); });
    Open("Sine\\One");
    EXPECT_EQ(Field(IDC_TAG_TITLE), "");
    Type(IDC_TAG_TITLE, "New");
    Update();
    EXPECT_EQ(driver_.BytesOf(kOne).substr(0, 11), "shortTAGNew");
  });
}

TEST_F(TagEditorTest, GuardedFilesAreWrittenAndStayGuarded) {
  ShowSongs([&] {
    for (const uint32_t guard :
         {kAttributeReadOnly, kAttributeReadOnly | kAttributeHidden | kAttributeSystem}) {
      SetAttributesOf(kOne, guard);
      Open("Sine\\One");
      Type(IDC_TAG_COMMENT, std::to_string(guard));
      Update();
      EXPECT_EQ(driver_.BytesOf(kOne).substr(1 + 97, 2).c_str(), std::to_string(guard));
      EXPECT_EQ(AttributesOf(kOne), guard);
    }
  });
}

TEST_F(TagEditorTest, AFailureIsToldAndChangesNothing) {
  const std::string before = "x" + Id3v1Tag("One", "Sine", "Waves", 8);
  ShowSongs([&] {
    const std::string nodes = driver_.Nodes();
    Open("Sine\\One");
    Type(IDC_TAG_TITLE, "Uno");
    driver_.Run([&] { driver_.files.Move(test::Wide(kOne), L"\\gone"); });
    FailToUpdate();
    driver_.Run([&] { driver_.files.Move(L"\\gone", test::Wide(kOne)); });
    // Somebody else has it open. The attributes are not put back in this case.
    SetAttributesOf(kOne, kAttributeHidden);
    driver_.Run([&] { driver_.files.Find(kOne)->locked = true; });
    FailToUpdate();
    EXPECT_EQ(Field(IDC_TAG_TITLE), "Uno") << "what was typed is still there";
    EXPECT_EQ(AttributesOf(kOne), kAttributeNormal);
    EXPECT_EQ(driver_.BytesOf(kOne), before);
    driver_.Answer(editor_, IDCANCEL);
    EXPECT_EQ(driver_.Nodes(), nodes);
    driver_.Run([&] { driver_.files.Find(kOne)->locked = false; });

    Open("Sine\\One");
    Type(IDC_TAG_TITLE, "Uno");
    driver_.Run([&] { driver_.files.failing_write = driver_.files.writes; });
    FailToUpdate();
    EXPECT_EQ(driver_.BytesOf(kOne), before);
    Update();  // the second try
    EXPECT_EQ(driver_.Nodes(), "Sine\n Two\n Uno\nUnknown\n three.mp3\n");
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "Uno x\nthree.mp3 x\nTwo x\n");
  });
}

TEST_F(TagEditorTest, OpensForMpegFilesAlone) {
  driver_.files.Put("\\Music\\a.ogg", "");
  driver_.files.Put("\\Music\\b.wma", "");
  ShowSongs([&] {
    const std::string all = "Sine\n One\n Two\nUnknown\n a.ogg\n b.wma\n three.mp3\n";
    EXPECT_EQ(driver_.Nodes(), all);
    for (const char* node : {"", "Sine", "Unknown", "Unknown\\a.ogg", "Unknown\\b.wma"}) {
      TreeView_SelectItem(driver_.Tree(), driver_.Node(node));
      driver_.Post(ID_EDIT_TAG);
      driver_.Settle();
      EXPECT_EQ(driver_.Window(L"Playlist Organizer"), driver_.Sheet()) << node << " opened it";
    }
  });
}

}  // namespace
}  // namespace kelvo
