// The bookmarks window and its edit dialog as a user meets them.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <thread>

#include "base/windows/feature_dialog.h"
#include "base/windows/pocketpc.h"
#include "base/windows/registry.h"
#include "bookmarks/bookmarks_feature.h"
#include "entry/language/modules.h"
#include "kelvo/messages.h"
#include "res/resource_ids.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/support/memory_files.h"
#include "tests/support/owned_objects.h"
#include "tests/support/user.h"
#include "tests/support/wide_text.h"

extern "C" BOOL WINAPI KelvoInputPanelState();

namespace kelvo {
namespace {

using test::Utf16;
using test::Utf8;
using Strings = std::vector<std::string>;

constexpr wchar_t kTitle[] = L"Velmora Bookmarks";
constexpr wchar_t kEditTitle[] = L"Edit Bookmark";

Strings g_messages;  // that the host's window got

LRESULT CALLBACK HostProcedure(HWND window, UINT message, WPARAM what, LPARAM index) {
  if (message == kMessagePlayBookmark) {
    g_messages.push_back(std::to_string(what) + " " + std::to_string(index));
  }
  return DefWindowProcW(window, message, what, index);
}

HWND CreateHost() {
  WNDCLASSW type = {};
  type.lpfnWndProc = &HostProcedure;
  type.lpszClassName = L"KelvoTestHost";
  RegisterClassW(&type);
  g_messages.clear();
  return CreateWindowW(type.lpszClassName, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                       nullptr);
}

class BookmarksWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SetOwnModule(GetModuleHandleW(nullptr));
    files_.Put("\\live.ogg", "");
    files_.Put("\\alive.ogg", "");
    Put("\\gone.ogg\r\n90\r\nbeta\r\n\\live.ogg\r\n3725\r\nGamma\r\n\\alive.ogg\r\n5\r\nalpha\r\n");
  }
  void TearDown() override { DestroyWindow(host_); }
  void Put(const std::string& text) { files_.Put(kFile, Utf16(text)); }
  std::string Saved() { return files_.Find(kFile)->bytes; }

  // Opens the window, acts on a thread of its own, and closes the window with Done.
  template <class Act>
  void Show(Act act) {
    std::thread hands([&] {
      dialog_ = user_.WaitForWindow(kTitle);
      list_ = GetDlgItem(dialog_, IDC_BOOKMARK_LIST);
      act();
      PostMessageW(dialog_, WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(feature_.ShowBookmarks(host_), 0);
    hands.join();
  }
  // Runs the edit dialog of the current item.
  template <class Act>
  void Edit(Act act) {
    PostMessageW(dialog_, WM_COMMAND, IDM_BOOKMARK_EDIT, 0);
    const HWND edit = user_.WaitForWindow(kEditTitle);
    act(edit);
    user_.Wait("the edit dialog's end", [&] { return !IsWindow(edit); });
    user_.Settle();
  }
  // "0 1:30 text" a line: image, time and title.
  Strings Lines() const {
    Strings lines;
    for (int row = 0; row < ListView_GetItemCount(list_); ++row) {
      EXPECT_EQ(user_.Cell(list_, row, 0), "");
      LVITEMW item = {};
      item.mask = LVIF_IMAGE;
      item.iItem = row;
      SendMessageW(list_, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
      lines.push_back(std::to_string(item.iImage) + " " + user_.Cell(list_, row, 1) + " " +
                      user_.Cell(list_, row, 2));
    }
    return lines;
  }
  void Choose(int row) const {
    SendMessageW(list_, WM_KEYDOWN, VK_HOME, 0);
    for (int i = 0; i < row; ++i) SendMessageW(list_, WM_KEYDOWN, VK_DOWN, 0);
  }
  void Command(int id) const { SendMessageW(dialog_, WM_COMMAND, id, 0); }

  static constexpr char kFile[] = "\\V\\bookmarks.dat";
  test::MemoryFiles files_;
  test::FixedFolder folder_;
  BookmarksShell shell_;
  BookmarksFeature feature_{files_, folder_, &shell_};
  const HWND host_ = CreateHost();
  HWND dialog_ = nullptr, list_ = nullptr;
  test::User user_{[](const std::string& what) { ADD_FAILURE() << what; }};
};

TEST_F(BookmarksWindowTest, ShowsThreeColumnsLiveOnesFirstAndItsCommandsInAMenuBar) {
  Show([&] {
    EXPECT_EQ(Lines(), (Strings{"0 62:05 Gamma", "0 0:05 alpha", "1 1:30 beta"}));
    EXPECT_EQ(user_.Columns(list_), " 18|Time 45|Title 175");
    EXPECT_EQ(ListView_GetExtendedListViewStyle(list_),
              DWORD{LVS_EX_FULLROWSELECT | LVS_EX_ONECLICKACTIVATE});
    for (const int width : {0, 500, 200}) {
      if (width != 0) SetWindowPos(dialog_, nullptr, 0, 0, width, 150, SWP_NOZORDER);
      RECT client, covered;
      GetClientRect(dialog_, &client);
      EXPECT_EQ(ListView_GetColumnWidth(list_, 2), 175 + std::max(client.right - 240, 0L));
      GetWindowRect(list_, &covered);
      EXPECT_EQ(covered.right - covered.left, client.right);
      EXPECT_EQ(covered.bottom - covered.top, client.bottom);
    }
    EXPECT_FALSE(KelvoInputPanelState());
    files_.Put("\\gone.ogg", "");
    EXPECT_EQ(Lines()[2], "0 1:30 beta") << "each drawing looks";

    const HWND bar = user_.MenuBar();
    EXPECT_EQ(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0), 1);
    const HMENU menu =
        reinterpret_cast<HMENU>(SendMessageW(bar, SHCMBM_GETSUBMENU, 0, IDM_BOOKMARK_POPUP));
    std::string items;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      wchar_t text[kTextCapacity] = L"";
      GetMenuStringW(menu, static_cast<UINT>(i), text, kTextCapacity, MF_BYPOSITION);
      items += Utf8(text) + " " + std::to_string(GetMenuItemID(menu, i)) + "|";
    }
    EXPECT_EQ(items,
              "Edit bookmark 40106|Play 40107|Enqueue file 40108| 0|Delete 40109|"
              "Delete dead bookmarks 40110|");
    files_.Delete(L"\\live.ogg");
    SendMessageW(bar, WM_COMMAND, IDM_BOOKMARK_DELETE_DEAD, 0);
    EXPECT_EQ(Lines(), (Strings{"0 1:30 beta", "0 0:05 alpha"})) << "the dialog gets the commands";
  });
}

TEST_F(BookmarksWindowTest, SortsByTheHeaderAndRemembers) {
  const Strings by_time = {"0 0:05 alpha", "1 1:30 beta", "0 62:05 Gamma"};
  Show([&] {
    user_.TapHeader(list_, 1);
    EXPECT_EQ(Lines(), by_time);
    user_.TapHeader(list_, 1);
    EXPECT_EQ(Lines(), Strings(by_time.rbegin(), by_time.rend()));
    user_.TapHeader(list_, 2);
  });
  Show([&] { EXPECT_EQ(Lines(), by_time) << "by title"; });
}

TEST_F(BookmarksWindowTest, TellsTheHostWhatToPlay) {
  Show([&] {
    for (int command :
         {IDM_BOOKMARK_PLAY, IDM_BOOKMARK_ENQUEUE, IDM_BOOKMARK_EDIT, IDM_BOOKMARK_DELETE}) {
      Command(command);  // nothing is chosen
    }
    Choose(1);
    Command(IDM_BOOKMARK_PLAY);
    Choose(2);
    Command(IDM_BOOKMARK_ENQUEUE);
    user_.Key(list_, VK_RETURN);
    user_.Settle();
    user_.TapList(list_, 1, LVHT_ONITEMICON);
    user_.StartTap(list_, user_.PartOf(list_, 1, LVHT_ONITEMICON), WM_LBUTTONDBLCLK);
    user_.Settle();
    ListView_SetItemState(list_, -1, 0, LVIS_SELECTED);
    Command(IDM_BOOKMARK_PLAY);
    user_.Key(list_, VK_RETURN);
    user_.Settle();
    EXPECT_TRUE(IsWindow(dialog_));
    // Enter is the list's, whichever parameter names it; other keys are the dialog's.
    MSG enter = {list_, WM_KEYDOWN, VK_RETURN, 0, 0, {}},
        tab = {list_, WM_KEYDOWN, VK_TAB, 0, 0, {}};
    for (const MSG* key : {&enter, &tab}) {
      for (const WPARAM named : {key->wParam, WPARAM{0}}) {
        const LRESULT code =
            SendMessageW(list_, WM_GETDLGCODE, named, reinterpret_cast<LPARAM>(key));
        EXPECT_EQ((code & DLGC_WANTMESSAGE) != 0, key == &enter) << named;
        EXPECT_TRUE(code & DLGC_WANTARROWS) << "the control's own answer";
      }
    }
  });
  EXPECT_EQ(g_messages, (Strings{"0 2", "1 0", "0 0", "0 2"}));
}

TEST_F(BookmarksWindowTest, DeletesTheChosenOne) {
  const std::string gone = "\\gone.ogg\r\n90\r\nbeta\r\n";
  Show([&] {
    Choose(1);
    Command(IDM_BOOKMARK_DELETE);
    EXPECT_EQ(Lines(), (Strings{"0 62:05 Gamma", "1 1:30 beta"}));
    EXPECT_EQ(ListView_GetSelectionMark(list_), 0);
    Command(IDM_BOOKMARK_DELETE);
    EXPECT_EQ(Lines().size(), 2u) << "nothing is selected";
    Choose(0);
    Command(IDM_BOOKMARK_DELETE);
    EXPECT_EQ(Saved(), Utf16(gone));
    Choose(0);
    Command(IDM_BOOKMARK_DELETE);
    EXPECT_EQ(Lines(), Strings{});
    EXPECT_EQ(Saved(), "");
  });
}

TEST_F(BookmarksWindowTest, EditsInPlace) {
  Show([&] {
    Choose(2);
    Edit([&](HWND edit) {
      const struct {
        int id;
        const char* shown;
        const wchar_t* typed;
      } fields[] = {{IDC_BOOKMARK_PATH, "\\gone.ogg", L"\\live.ogg"},
                    {IDC_BOOKMARK_DESCRIPTION, "beta", L"A longer one"},
                    {IDC_BOOKMARK_MINUTES, "001", L"200"},
                    {IDC_BOOKMARK_SECONDS, "30", L"75"}};
      for (const auto& field : fields) {
        EXPECT_EQ(user_.Text(edit, field.id), field.shown);
        SetDlgItemTextW(edit, field.id, field.typed);
      }
      EXPECT_TRUE(KelvoInputPanelState());
      SendMessageW(edit, WM_COMMAND, IDOK, 0);
    });
    EXPECT_FALSE(KelvoInputPanelState());
    EXPECT_EQ(Lines()[2], "0 201:15 A longer one") << "not sorted again";
    const std::string saved = Saved();
    EXPECT_EQ(saved.find(Utf16("\\live.ogg\r\n12075\r\nA longer one\r\n")), 0u);
    Edit([](HWND edit) {
      SetDlgItemTextW(edit, IDC_BOOKMARK_PATH, L"unwanted");
      SendMessageW(edit, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(Saved(), saved);
    Edit([](HWND edit) {
      for (int id : {IDC_BOOKMARK_DESCRIPTION, IDC_BOOKMARK_MINUTES, IDC_BOOKMARK_SECONDS}) {
        SetDlgItemTextW(edit, id, L"");
      }
      PostMessageW(edit, WM_SYSCOMMAND, SC_CLOSE, 0);  // Done means Ok
    });
    EXPECT_EQ(Lines()[2], "0 0:00 ");
  });
}

TEST_F(BookmarksWindowTest, OpensOnceAtATime) {
  Show([&] { EXPECT_EQ(feature_.ShowBookmarks(host_), 1); });
  const DialogGuard other;
  EXPECT_EQ(feature_.ShowBookmarks(host_), 1) << "another dialog of the library is open";
}

TEST_F(BookmarksWindowTest, SurvivesAHostThatChangesTheList) {
  Show([&] {
    Choose(2);
    // What is edited is stored wherever it has gone.
    for (const bool is_no_more : {false, true}) {
      Edit([&](HWND edit) {
        if (is_no_more) Put("");
        if (is_no_more) feature_.LoadBookmarks();
        feature_.SetLastPlayed(L"\\live.ogg", 1 + is_no_more, L"T");
        SetDlgItemTextW(edit, IDC_BOOKMARK_DESCRIPTION, L"edited");
        SendMessageW(edit, WM_COMMAND, IDOK, 0);
      });
      const std::string last =
          std::string("\\live.ogg\r\n") + (is_no_more ? "2" : "1") + "\r\n(Last Played) T\r\n";
      const std::string edited = is_no_more ? "" : "\\gone.ogg\r\n90\r\nedited\r\n";
      EXPECT_EQ(Saved().substr(0, Utf16(last + edited).size()), Utf16(last + edited));
    }
    Put("");
    feature_.LoadBookmarks();
    EXPECT_EQ(Lines(), (Strings{"1  ", "1  ", "1  "}));
    for (int command : {IDM_BOOKMARK_PLAY, IDM_BOOKMARK_EDIT, IDM_BOOKMARK_DELETE}) {
      Command(command);
    }
    user_.TapHeader(list_, 1);
    Command(IDM_BOOKMARK_DELETE_DEAD);
    EXPECT_EQ(Lines(), Strings{});
  });
  EXPECT_EQ(g_messages, Strings{});
}

// A list of a translated dialog may lack the style that shares image lists.
WNDPROC g_list_procedure;
HIMAGELIST g_list_at_end;
LRESULT CALLBACK WatchEnd(HWND list, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DESTROY) g_list_at_end = ListView_GetImageList(list, LVSIL_SMALL);
  return CallWindowProcW(g_list_procedure, list, message, wparam, lparam);
}

TEST_F(BookmarksWindowTest, LeavesNothingBehindAndDestroysTheImagesOnce) {
  g_list_at_end = reinterpret_cast<HIMAGELIST>(1);
  Show([&] {
    EXPECT_TRUE(ListView_GetImageList(list_, LVSIL_SMALL));
    g_list_procedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(list_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WatchEnd)));
  });
  EXPECT_EQ(g_list_at_end, nullptr);
  test::Owned before = {};
  for (int round = 0; round < 110; ++round) {
    if (round == 10) before = test::CountOwned();  // the first rounds fill caches of the system
    Show([] {});
    files_.log.clear();
  }
  EXPECT_EQ(test::Grown(before, 100), "");
}

TEST(RegistryKeyTest, ReadsTextsThatFit) {
  constexpr wchar_t kKey[] = L"SOFTWARE\\KelvoTest";
  const std::wstring longest(kTextCapacity - 1, L'f');
  const struct {
    std::wstring stored;  // its terminator is the case's own
    std::string want;     // none: refused
    DWORD type = REG_SZ;
  } cases[] = {
      {L"\\V", "\\V"},          {longest + L'\0', std::string(259, 'f')},
      {longest + L"f", ""},     {longest, std::string(259, 'f')},
      {L"\\V", "", REG_BINARY},
  };
  HKEY key;
  ASSERT_EQ(RegCreateKeyW(HKEY_LOCAL_MACHINE, kKey, &key), ERROR_SUCCESS);
  const RegistryKey opened = RegistryKey::Open(L"\\SOFTWARE\\KelvoTest");
  wchar_t text[kTextCapacity] = L"before";
  EXPECT_FALSE(opened.ReadText(L"Missing", text, kTextCapacity));
  EXPECT_EQ(Utf8(text), "");
  for (const auto& c : cases) {
    RegSetValueExW(key, L"Text", 0, c.type, reinterpret_cast<const BYTE*>(c.stored.data()),
                   static_cast<DWORD>(c.stored.size() * sizeof(wchar_t)));
    EXPECT_EQ(opened.ReadText(L"Text", text, kTextCapacity), !c.want.empty()) << c.want;
    EXPECT_EQ(Utf8(text), c.want);
  }
  RegCloseKey(key);
  RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey);
}

}  // namespace
}  // namespace kelvo
