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
      driver_.GoTo(1);
      driver_.Do(kArtists);
      use();
    });
  }
  void Open(const std::string& node) {
    driver_.SelectNode(node);
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
    const HWND box = driver_.WaitForWindow(L"");
    EXPECT_EQ(driver_.BoxText(box),
              "Error updating file! The possible reason that it is locked by other application?");
    driver_.Answer(box, IDOK);
    EXPECT_TRUE(IsWindow(editor_));
  }
  // Of the tag that is written when comment, year and track are left empty.
  static std::string Plain(const std::string& title, const std::string& artist, int genre) {
    return Id3v1Tag(title, artist, "", static_cast<uint8_t>(genre))
        .replace(93, 34, std::string(34, '\0'));
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
    EXPECT_TRUE(test::WaitFor([&] {
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

TEST_F(TagEditorTest, WritesWhatIsTyped) {
  const std::string thirty = "abcdefghijklmnopqrstuvwxyz1234";
  const struct {
    const char* name;
    std::string title, artist, album, year, track, comment;
    int genre;
    std::string want;  // the whole tag
  } cases[] = {
      {"everything is cut to its field", thirty + "too long", thirty + "5", thirty + "5", "19999",
       "300", thirty + "5", 8,
       Id3v1Tag(thirty, thirty, thirty, 8)
           .replace(97, 30, thirty.substr(0, 28) + std::string("\0\x1E", 2))},
      {"no track", "Caf\xC3\xA9", "A", "L", "2001", "", thirty + "5", 0,
       Id3v1Tag("Caf\xE9", "A", "L", 0).replace(93, 4, "2001").replace(97, 30, thirty)},
      {"no genre, nothing filled in", "", "", "", "", "", "", -1, Plain("", "", 255)},
  };
  ShowSongs([&] {
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      driver_.Run([&] { driver_.files.Put(kOne, "audio" + Id3v1Tag("One", "Sine", "Waves", 8)); });
      driver_.Do(ID_RESCAN);
      Open("Sine\\One");
      const struct {
        int id;
        const std::string& text;
      } fields[] = {{IDC_TAG_TITLE, c.title}, {IDC_TAG_ARTIST, c.artist},
                    {IDC_TAG_ALBUM, c.album}, {IDC_TAG_YEAR, c.year},
                    {IDC_TAG_TRACK, c.track}, {IDC_TAG_COMMENT, c.comment}};
      for (const auto& field : fields) Type(field.id, field.text);
      ChooseGenre(c.genre);
      Update();
      EXPECT_EQ(driver_.BytesOf(kOne), "audio" + c.want);
    }
  });
}

TEST_F(TagEditorTest, AnUntaggedFileGrowsOnceAndIsShownEverywhere) {
  ShowSongs([&] {
    Open("Unknown\\three.mp3");
    EXPECT_EQ(Field(IDC_TAG_TITLE) + Field(IDC_TAG_YEAR) + Field(IDC_TAG_TRACK), "");
    EXPECT_EQ(Genre(), CB_ERR);
    Type(IDC_TAG_TITLE, "Drei");
    Type(IDC_TAG_ARTIST, "SINE");
    driver_.Answer(editor_, IDOK);  // Done updates as well
    EXPECT_EQ(driver_.BytesOf(kThree), "plain" + Plain("Drei", "SINE", 255));
    EXPECT_EQ(driver_.Nodes(), "Sine\n Drei\n One\n Two\n") << "grouped without regard to case";
    EXPECT_TRUE(driver_.Enabled(ID_EDIT_TAG)) << "the file is selected in the new tree";
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nDrei x\nTwo x\n");
    EXPECT_EQ(driver_.Cell(driver_.List(), 1, 1), "SINE");

    driver_.GoTo(1);
    driver_.Post(ID_EDIT_TAG);
    editor_ = driver_.WaitForWindow(L"Edit Media Description");
    EXPECT_EQ(Field(IDC_TAG_TITLE), "Drei");
    Type(IDC_TAG_TITLE, "Three");
    ChooseGenre(8);
    Update();
    EXPECT_EQ(driver_.BytesOf(kThree), "plain" + Plain("Three", "SINE", 8));
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
    driver_.GoTo(2);
    EXPECT_EQ(driver_.Items(), "One x\nThree x\nTwo x\nOne x\nThree x\nTwo x\n");
    EXPECT_EQ(driver_.Cell(driver_.List(), 1, 3), "Jazz");
  });
}

TEST_F(TagEditorTest, AFailureIsToldAndChangesNothing) {
  const std::string before = "x" + Id3v1Tag("One", "Sine", "Waves", 8);
  ShowSongs([&] {
    const auto set_locked = [&](bool locked) {
      driver_.Run([&] { driver_.files.Find(kOne)->locked = locked; });
    };
    Open("Sine\\One");
    Type(IDC_TAG_TITLE, "Uno");
    set_locked(true);
    FailToUpdate();
    EXPECT_EQ(Field(IDC_TAG_TITLE), "Uno") << "what was typed is still there";
    driver_.Answer(editor_, IDCANCEL);
    EXPECT_EQ(driver_.BytesOf(kOne), before);
    EXPECT_EQ(driver_.Nodes(), kByArtist);

    Open("Sine\\One");
    Type(IDC_TAG_TITLE, "Uno");
    FailToUpdate();
    set_locked(false);
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
    EXPECT_EQ(driver_.Nodes(), "Sine\n One\n Two\nUnknown\n a.ogg\n b.wma\n three.mp3\n");
    for (const char* node : {"", "Sine", "Unknown\\a.ogg", "Unknown\\b.wma"}) {
      driver_.SelectNode(node);
      driver_.Post(ID_EDIT_TAG);
      driver_.Settle();
      EXPECT_FALSE(driver_.AnythingOpened()) << node;
    }
  });
}

}  // namespace
}  // namespace kelvo
