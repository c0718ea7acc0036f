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
class SheetDriver : public User {
 public:
  SheetDriver() : User(&Complain), feature(files, information) {
    SetOwnModule(GetModuleHandleW(nullptr));
    host_ = LoadLibraryW(L"velmora.exe");
    WNDCLASSW type = {};
    type.lpfnWndProc = &ParentProcedure;
    type.lpszClassName = L"CatalogTestParent";
    RegisterClassW(&type);
    parent_ = CreateWindowExW(0, type.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                              nullptr, nullptr);
    sent().clear();
    feature.SetHostCallback(&OnPath, 42);
    files.PutFolder("\\Lists");
    files.PutFolder("\\Music");
    files.Put("\\Lists\\a.m3u", "\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n");
    files.Put("\\Lists\\b.pls", "File1=\\Music\\two.mp3\r\n");
    files.Put("\\Music\\one.mp3", "x" + Id3v1Tag("One", "Sine", "Waves", 8));
    files.Put("\\Music\\two.mp3", "x" + Id3v1Tag("Two", "Sine", "Waves", 8));
    files.Put("\\Music\\three.mp3", "plain");
  }
  ~SheetDriver() {
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
    EXPECT_EQ(feature.ShowCatalog(host_, parent_), 1);
    user.join();
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  // All below is for the using thread.

  HWND Sheet() const { return User::Find(sheet_caption, L"#32770"); }
  bool AnythingOpened() const { return Dialog() != Sheet(); }
  HWND List() const { return Control(IDC_LIST); }
  HWND Tree() const { return Control(IDC_TREE); }
  using User::Check, User::Items, User::Node, User::Nodes, User::Select;
  std::string Items() const { return Items(List()); }
  std::string Nodes() const { return Nodes(Tree()); }
  void Check(int item, bool checked) const { Check(List(), item, checked); }
  void Select(int item) const { Select(List(), item); }
  void SelectNode(const std::string& path) const { User::SelectNode(Tree(), path); }
  // "no file" when there is none.
  std::string BytesOf(const std::string& path) {
    std::string bytes = "no file";
    Run([&] {
      if (const MemoryFiles::File* file = files.Find(path)) bytes = file->bytes;
    });
    return bytes;
  }
  bool Exists(const std::string& path) { return BytesOf(path) != "no file"; }

  static std::string& sent() {
    static std::string text;
    return text;
  }
  // The wording of the host's own messages is its own affair.
  std::string HostText(UINT id) const {
    wchar_t text[200] = L"";
    EXPECT_GT(LoadStringW(host_, id, text, 200), 0) << id;
    return Utf8(text);
  }
  HWND parent() const { return parent_; }
  HMODULE host() const { return host_; }

  MemoryFiles files;
  FakeInformation information;
  CatalogFeature feature;
  const wchar_t* sheet_caption = L"Playlist Organizer";

 private:
  static void Complain(const std::string& what) { ADD_FAILURE() << what; }
  // After a test that failed in the middle: the sheet must close all the same.
  void CloseForgottenDialogs() const {
    WaitFor([&] {
      const HWND dialog = Dialog();
      if (!dialog || dialog == Sheet()) return true;
      ADD_FAILURE() << "left open: " << Text(dialog);
      PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
      PostMessageW(dialog, WM_COMMAND, IDNO, 0);
      Sleep(200);
      return false;
    });
  }
  static LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    for (const UINT expected : {kMessageCatalogPlay, kMessageCatalogPlayed}) {
      if (message != expected) continue;
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

  HMODULE host_ = nullptr;
  HWND parent_ = nullptr;
};

class CatalogWindowTest : public testing::Test {
 protected:
  static constexpr char kLists[] = "\\Lists\\a.m3u\n\\Lists\\b.pls\n";
  static constexpr char kAllSongs[] = "One x\nthree.mp3 x\nTwo x\n";
  static constexpr char kByArtist[] = "Sine\n One\n Two\nUnknown\n three.mp3\n";
  static constexpr int kArtists = ID_FIRST_ORDER + 5;
  static constexpr int kFolders = ID_LAST_ORDER;

  void TearDown() override {
    EXPECT_EQ(driver_.files.open_now, 0);
    EXPECT_EQ(_heapchk(), _HEAPOK);
  }
  long Scans() {
    return std::count(driver_.files.log.begin(), driver_.files.log.end(), "list \\*.*");
  }
  // The first showing's scan without the time that it waits; then the page.
  void ShowAfterScan(int page, const std::function<void()>& use) {
    driver_.Show([&] {
      ScanNow();
      driver_.GoTo(page);
      use();
    });
  }
  void ScanNow() {
    driver_.Run([&] { SendMessageW(driver_.Page(), WM_TIMER, 1, 0); });
    driver_.Settle();
  }
  void ShowMediaBy(int order, const std::function<void()>& use) {
    ShowAfterScan(1, [&] {
      driver_.Do(order);
      use();
    });
  }
  // The playlists' songs become the current playlist, whose page comes up.
  void AddLists() {
    driver_.GoTo(0);
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
    driver_.GoTo(2);
  }
  // The question about this file; it is answered.
  void Delete(const std::string& path, int answer = IDYES) {
    driver_.Post(ID_DELETE_FILE);
    const HWND box = driver_.WaitForWindow(L"Delete File");
    EXPECT_EQ(driver_.BoxText(box), "Do you want to permanently delete \"" + path + "\"?");
    driver_.Answer(box, answer);
  }

  SheetDriver driver_;
};

}  // namespace kelvo::test
