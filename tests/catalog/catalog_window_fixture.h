// Shows the catalog on this thread, over files in memory, while a second thread uses it.
#pragma once

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <string>
#include <thread>

#include "base/windows/pocketpc.h"
#include "catalog/windows/catalog_feature.h"
#include "entry/language/modules.h"
#include "kelvo/messages.h"
#include "res/resource_ids.h"
#include "tests/support/fake_information.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/memory_files.h"
#include "tests/support/user.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

// Three songs, of which one has no tag, and two playlists of them.
class CatalogWindowTest : public testing::Test, protected User {
 protected:
  static constexpr char kLists[] = "\\Lists\\a.m3u\n\\Lists\\b.pls\n";
  static constexpr char kAllSongs[] = "One x\nthree.mp3 x\nTwo x\n";
  static constexpr char kByArtist[] = "Sine\n One\n Two\nUnknown\n three.mp3\n";
  static constexpr int kArtists = ID_FIRST_ORDER + 5;
  static constexpr int kFolders = ID_LAST_ORDER;

  CatalogWindowTest() : User([](const std::string& what) { ADD_FAILURE() << what; }) {
    SetOwnModule(GetModuleHandleW(nullptr));
    WNDCLASSW type = {};
    type.lpfnWndProc = &ParentProcedure;
    type.lpszClassName = L"CatalogTestParent";
    RegisterClassW(&type);
    parent_ = CreateWindowExW(0, type.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                              nullptr, nullptr);
    sent().clear();
    feature_.SetHostCallback(&OnPath, 42);
    files_.PutFolder("\\Lists");
    files_.PutFolder("\\Music");
    files_.Put("\\Lists\\a.m3u", "\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n");
    files_.Put("\\Lists\\b.pls", "File1=\\Music\\two.mp3\r\n");
    files_.Put("\\Music\\one.mp3", "x" + Id3v1Tag("One", "Sine", "Waves", 8));
    files_.Put("\\Music\\two.mp3", "x" + Id3v1Tag("Two", "Sine", "Waves", 8));
    files_.Put("\\Music\\three.mp3", "plain");
  }
  ~CatalogWindowTest() override {
    EXPECT_EQ(files_.open_now, 0);
    EXPECT_EQ(_heapchk(), _HEAPOK);
    LoadLanguageLibrary(0, true);
    DestroyWindow(parent_);
    FreeLibrary(host_);
  }

  // Shows the sheet, runs `use` once it is there, and closes it with Done.
  void Show(const std::function<void()>& use) {
    std::thread user([&] {
      if (Wait("the sheet", [&] { return Sheet() && Page(Sheet()) && MenuBar(); })) use();
      CloseForgottenDialogs();
      PostMessageW(Sheet(), WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(feature_.ShowCatalog(host_, parent_), 1);
    user.join();
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
  // The first showing's scan without the time that it waits; then the page.
  void ShowAfterScan(int page, const std::function<void()>& use) {
    Show([&] {
      Run([&] { SendMessageW(Page(), WM_TIMER, 1, 0); });
      Settle();
      GoTo(page);
      use();
    });
  }
  void ShowMediaBy(int order, const std::function<void()>& use) {
    ShowAfterScan(1, [&] {
      Do(order);
      use();
    });
  }

  // All below is for the using thread.

  using User::Check, User::Items, User::Node, User::Nodes, User::Run, User::Select,
      User::SelectNode, User::TapList;
  HWND Sheet() const { return Find(sheet_caption_, L"#32770"); }
  HWND List() const { return Control(IDC_LIST); }
  HWND Tree() const { return Control(IDC_TREE); }
  std::string Items() const { return Items(List()); }
  std::string Nodes() const { return Nodes(Tree()); }
  void Check(int item, bool checked = true) const { Check(List(), item, checked); }
  void Select(int item) const { Select(List(), item); }
  void SelectNode(const std::string& path) const { SelectNode(Tree(), path); }
  void TapList(int item, UINT part) const { TapList(List(), item, part); }
  // Does a command that brings up nothing.
  void ExpectIgnored(int command) const {
    Post(command);
    Settle();
    EXPECT_EQ(Dialog(), Sheet()) << command;
  }
  // The playlists' songs become the current playlist, whose page comes up.
  void AddLists() const {
    GoTo(0);
    Do(ID_CHECK_ALL);
    Do(ID_ADD_CHECKED);
    GoTo(2);
  }
  // The question about this file; it is answered.
  void Delete(const std::string& path, int answer = IDYES) const {
    Post(ID_DELETE_FILE);
    const HWND box = WaitForWindow(L"Delete File");
    EXPECT_EQ(BoxText(box), "Do you want to permanently delete \"" + path + "\"?");
    Answer(box, answer);
  }
  // "no file" when there is none.
  std::string BytesOf(const std::string& path) {
    std::string bytes = "no file";
    Run([&] {
      if (const MemoryFiles::File* file = files_.Find(path)) bytes = file->bytes;
    });
    return bytes;
  }
  bool Exists(const std::string& path) { return BytesOf(path) != "no file"; }
  void Guard(const std::string& path) {
    Run([&] { files_.Find(path)->attributes = kAttributeReadOnly; });
  }
  long Listings(const std::string& folder) const {
    long count = 0;
    Run([&] {
      count = std::count(files_.log.begin(), files_.log.end(), "list " + folder + "\\*.*");
    });
    return count;
  }

  // What the host was sent: paths and messages.
  static std::string& sent() {
    static std::string text;
    return text;
  }

  MemoryFiles files_;
  FakeInformation information_;
  CatalogFeature feature_{files_, information_};
  const wchar_t* sheet_caption_ = L"Playlist Organizer";
  const HMODULE host_ = LoadLibraryW(L"velmora.exe");
  HWND parent_ = nullptr;

 private:
  // After a test that failed in the middle: the sheet must close all the same.
  void CloseForgottenDialogs() const {
    WaitFor([&] {
      const HWND dialog = Dialog();
      if (!dialog || dialog == Sheet()) return true;
      ADD_FAILURE() << "left open: " << Text(dialog);
      for (const WPARAM answer : {IDCANCEL, IDNO}) PostMessageW(dialog, WM_COMMAND, answer, 0);
      Sleep(200);
      return false;
    });
  }
  static LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == kMessageCatalogPlay || message == kMessageCatalogPlayed) {
      sent() += std::to_string(message - WM_USER) + "(" + std::to_string(wparam) + "," +
                std::to_string(lparam) + ");";
    }
    return DefWindowProcW(window, message, wparam, lparam);
  }
  static void OnPath(const wchar_t* path, HostWord cookie) {
    EXPECT_EQ(cookie, 42u);
    sent() += (path == kCatalogClearList    ? "clear"
               : path == CatalogEndOfList() ? "end"
                                            : Utf8(path)) +
              ";";
  }
};

}  // namespace kelvo::test
