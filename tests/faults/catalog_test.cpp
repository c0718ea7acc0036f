// The catalog: its sheet, and each command of its pages while the sheet is open.
#include "tests/faults/library_faults.h"

#include <commctrl.h>

#include "base/windows/pocketpc.h"
#include "kelvo/catalog.h"
#include "kelvo/host_resources.h"
#include "res/resource_ids.h"
#include "tests/support/user.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::Click;
using test::LibraryFaults;
using test::Step;
using test::Type;
using test::User;
using test::Utf8;
using test::WindowsUser;

enum Page { kPlaylists, kMedia, kCurrent };

std::string g_sent;  // to the host

class CatalogFaults : public LibraryFaults {
 protected:
  CatalogFaults() {
    catalog_->SetHostCallback(
        [](const wchar_t* path, HostWord) {
          g_sent += path && path != CatalogEndOfList() ? Utf8(path) : ";";
        },
        1);
    CreateDirectoryW(folder_.Path(L"deep").c_str(), nullptr);
    folder_.Write(L"deep\\four.mp3", "x" + test::Id3v1Tag("Four", "Sine", "Waves", 9));
    folder_.Write(L"nested.pls", "[playlist]\r\nFile1=\\odd.asx\r\nFile2=\\one.mp3\r\n");
    folder_.Write(L"odd.asx", "<ASX><REF HREF = \"\\three.wma\"></ASX>");
    Show([](HWND) {});  // the first one looks for media
  }

  std::string Show(const Step& use) {
    const WindowsUser user({use});
    return std::to_string(catalog_->ShowCatalog(host_, parent_));
  }
  HWND Go(int page) {
    SendMessageW(sheet_, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
    return reinterpret_cast<HWND>(SendMessageW(sheet_, PSM_GETCURRENTPAGEHWND, 0, 0));
  }
  HWND Control(int page) const {
    return GetDlgItem(pages_[page], page == kMedia ? IDC_TREE : IDC_LIST);
  }
  void Do(int page, int command) const {
    SendMessageW(pages_[page], WM_COMMAND, static_cast<WPARAM>(command), 0);
  }
  // A notification from the page's list or tree.
  template <class Record>
  void Notify(int page, UINT code, Record record) const {
    record.hdr = {Control(page), static_cast<UINT_PTR>(GetDlgCtrlID(Control(page))), code};
    SendMessageW(pages_[page], WM_NOTIFY, record.hdr.idFrom, reinterpret_cast<LPARAM>(&record));
  }
  std::string Shown() const {
    return user_.Items(Control(kPlaylists)) + user_.Nodes(Control(kMedia)) +
           user_.Items(Control(kCurrent)) + g_sent;
  }
  // The files as they were, all found, and the songs of the list in the current playlist.
  void StartAnew() const {
    DeleteFileW(folder_.Path(L"new.m3u").c_str());
    WriteFiles();
    Do(kPlaylists, ID_RESCAN);
    Do(kMedia, ID_LAST_ORDER - 1);
    // Twice: a list that lacks an item is made whole first.
    for (const int id : {ID_SELECT_ALL, ID_REMOVE_SELECTED, ID_SELECT_ALL, ID_REMOVE_SELECTED})
      Do(kCurrent, id);
    Do(kPlaylists, ID_CHECK_ALL);
    Do(kPlaylists, ID_ADD_CHECKED);
    g_sent.clear();
  }
  void OpenPages(HWND sheet) {
    sheet_ = sheet;
    for (const int page : {kMedia, kCurrent, kPlaylists}) pages_[page] = Go(page);
    WindowsUser::HandleMessages();
  }
  std::string ShowAndLook() {
    std::string shown;
    const auto look = [&](HWND sheet) {
      OpenPages(sheet);
      shown = Shown();
    };
    return Show(look) + shown;
  }
  void SweepIn(
      Page page, const std::function<void()>& act, const std::vector<Step>& steps = {},
      const std::function<void()>& prepare = [] {}) {
    Show([&](HWND sheet) {
      OpenPages(sheet);
      Go(page);
      Sweep(
          [&] {
            const WindowsUser user(steps);
            act();
            WindowsUser::HandleMessages();
            return Shown();
          },
          [&] {
            StartAnew();
            prepare();
          });
    });
  }

  void SweepInBothLanguages(
      Page page, const std::function<void()>& act, const std::vector<Step>& steps = {},
      const std::function<void()>& prepare = [] {}) {
    for (const DWORD language : {kEnglish, kGerman}) {
      SwitchTo(language);
      SweepIn(page, act, steps, prepare);
    }
  }

  Catalog* catalog_ = &Get<Catalog>(kFeatureCatalog);
  const User user_{[](const std::string& what) { ADD_FAILURE() << what; }};
  HWND sheet_ = nullptr;
  HWND pages_[3] = {};
};

TEST_F(CatalogFaults, Opening) {
  SwitchTo(kGerman);
  Sweep([&] { return ShowAndLook(); });
}
TEST_F(CatalogFaults, FirstOpening) {
  for (const wchar_t* name : {L"one.mp3", L"two.ogg", L"three.wma", L"nested.pls", L"odd.asx"})
    DeleteFileW(folder_.Path(name).c_str());
  others_handles_ = 4;  // two for each loading of the control's container
  Sweep([&] { return ShowAndLook(); },
        [&] {
          Reload();
          catalog_ = &Get<Catalog>(kFeatureCatalog);
        });
}

TEST_F(CatalogFaults, Rescan) {
  SweepIn(kPlaylists, [&] { Do(kPlaylists, ID_RESCAN); });
}
TEST_F(CatalogFaults, AddLists) {
  SweepIn(kPlaylists, [&] { Do(kPlaylists, ID_ADD_CHECKED); });
}
TEST_F(CatalogFaults, ChecksAndPopup) {
  SweepInBothLanguages(kPlaylists, [&] {
    for (const int id : {ID_CHECK_NONE, ID_INVERT_CHECKS, ID_CHECK_ALL}) Do(kPlaylists, id);
    ListView_SetItemState(Control(kPlaylists), 0, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
    Notify(kPlaylists, GN_CONTEXTMENU, NMRGINFO{});
  });
}
TEST_F(CatalogFaults, Rename) {
  SweepInBothLanguages(
      kPlaylists, [&] { Do(kPlaylists, ID_RENAME); },
      {Type(IDC_TEXT_ENTRY, L"new.m3u"), Click(IDOK)},
      [&] { User::Select(Control(kPlaylists), 0); });
}
TEST_F(CatalogFaults, DeleteList) {
  SweepInBothLanguages(
      kPlaylists,
      [&] {
        Do(kPlaylists, ID_DELETE_FILE);
        // The list shows what is there.
        EXPECT_EQ(user_.Items(Control(kPlaylists)).find("list.m3u") == std::string::npos,
                  folder_.Read(L"list.m3u") == "no file");
      },
      {}, [&] { User::Select(Control(kPlaylists), 0); });
}

TEST_F(CatalogFaults, Grouping) {
  SweepIn(kMedia, [&] {
    for (int order = ID_FIRST_ORDER; order <= ID_LAST_ORDER; ++order) Do(kMedia, order);
  });
}
TEST_F(CatalogFaults, AddMedia) {
  SweepIn(kMedia, [&] {
    for (const int id : {ID_CHECK_ALL, ID_CHECK_NONE, ID_INVERT_CHECKS, ID_ADD_CHECKED})
      Do(kMedia, id);
  });
}
TEST_F(CatalogFaults, EditTag) {
  SweepInBothLanguages(
      kMedia, [&] { Do(kMedia, ID_EDIT_TAG); },
      {Type(IDC_TAG_TITLE, L"Title"), Type(IDC_TAG_ARTIST, L"Artist"),
       Type(IDC_TAG_ALBUM, L"Album"), Type(IDC_TAG_YEAR, L"1999"), Type(IDC_TAG_TRACK, L"7"),
       Type(IDC_TAG_COMMENT, L"Comment"),
       [](HWND editor) { SendDlgItemMessageW(editor, IDC_TAG_GENRE, CB_SETCURSEL, 8, 0); },
       Click(IDC_TAG_UPDATE)},
      [&] { user_.SelectNode(Control(kMedia), "Sine\\One"); });
}
TEST_F(CatalogFaults, DeleteMedia) {
  SweepInBothLanguages(
      kMedia, [&] { Do(kMedia, ID_DELETE_FILE); }, {},
      [&] { user_.SelectNode(Control(kMedia), "Sine\\One"); });
}

TEST_F(CatalogFaults, CurrentPlaylist) {
  SweepIn(
      kCurrent,
      [&] {
        for (const int id : {ID_PLAY, ID_ENQUEUE, ID_MOVE_DOWN, ID_MOVE_UP, ID_CHECK_NONE,
                             ID_INVERT_CHECKS, ID_CHECK_ALL}) {
          Do(kCurrent, id);
        }
        for (int column = 0; column < 4; ++column) {
          NMLISTVIEW tap = {};
          tap.iSubItem = column;
          Notify(kCurrent, static_cast<UINT>(LVN_COLUMNCLICK), tap);
        }
        for (const int id :
             {ID_REMOVE_SELECTED, ID_SELECT_ALL, ID_SELECT_NONE, ID_INVERT_SELECTION}) {
          Do(kCurrent, id);
        }
      },
      {}, [&] { User::Select(Control(kCurrent), 0); });
}
// As a new file, and over one: it is deleted before, to see whether that can be written. Lines that
// cannot are left out.
TEST_F(CatalogFaults, Save) {
  std::string saved;
  for (const wchar_t* name : {L"new.m3u", L"list.m3u"}) {
    SweepIn(kCurrent,
            [&] {
              const std::string old = folder_.Read(name);
              Do(kCurrent, ID_SAVE_PLAYLIST);
              if (saved.empty()) saved = folder_.Read(name);
              const std::string now = folder_.Read(name);
              EXPECT_TRUE(now == old || now == "no file" || test::IsPartInOrder(now, saved)) << now;
            },
            {Type(KELVO_HOST_SAVE_NAME, name), Click(KELVO_HOST_SAVE_BUTTON)});
  }
}

}  // namespace
}  // namespace kelvo
