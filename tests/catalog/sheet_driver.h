// Shows the catalog on this thread, over files in memory, while a second thread uses it.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <algorithm>
#include <functional>
#include <memory>
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
#include "tests/support/wide_text.h"

namespace kelvo::test {

inline bool WaitFor(const std::function<bool()>& done) {
  for (const DWORD start = GetTickCount(); GetTickCount() - start < 30000; Sleep(10)) {
    if (done()) return true;
  }
  return false;
}

class SheetDriver {
 public:
  SheetDriver() : feature(files, information), ui_thread_(GetCurrentThreadId()) {
    SetOwnModule(GetModuleHandleW(nullptr));
    host_ = LoadLibraryW(L"velmora.exe");
    WNDCLASSW window_class = {};
    window_class.lpfnWndProc = &ParentProcedure;
    window_class.lpszClassName = L"CatalogTestParent";
    RegisterClassW(&window_class);
    parent_ = CreateWindowExW(0, L"CatalogTestParent", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
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
      if (WaitFor([&] { return Page() != nullptr && MenuBar() != nullptr; })) {
        use();
      } else {
        ADD_FAILURE() << "the sheet did not open";
      }
      CloseForgottenDialogs();
      PostMessageW(Sheet(), WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(feature.ShowCatalog(host_, parent_), 1);
    user.join();
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  // All below is for the using thread.

  // Runs `action` on the sheet's thread, between two messages.
  void Run(const std::function<void()>& action) const {
    SendMessageW(parent_, kRunMessage, 0, reinterpret_cast<LPARAM>(&action));
  }
  // The same without waiting: for what opens a dialog.
  void Start(std::function<void()> action) const {
    PostMessageW(parent_, kStartMessage, 0,
                 reinterpret_cast<LPARAM>(new std::function<void()>(std::move(action))));
  }
  // Returns when everything that has been posted so far is done, and what that posted in its turn.
  void Settle() const {
    for (int i = 0; i < 3; ++i) {
      const HANDLE reached = CreateEventW(nullptr, FALSE, FALSE, nullptr);
      Start([reached] { SetEvent(reached); });
      EXPECT_EQ(WaitForSingleObject(reached, 30000), WAIT_OBJECT_0);
      CloseHandle(reached);
    }
  }
  // "no file" when there is none.
  std::string BytesOf(const std::string& path) {
    std::string bytes = "no file";
    Run([&] {
      if (const MemoryFiles::File* file = files.Find(path)) bytes = file->bytes;
    });
    return bytes;
  }

  // The visible dialog or box of this caption that takes input.
  HWND Window(const wchar_t* caption) const { return Find(caption, L"#32770", true); }
  // Of these captions and classes the visible one; enabled, when that matters.
  HWND Find(const wchar_t* caption, const wchar_t* kind, bool enabled = false) const {
    Search search = {caption, kind, enabled, nullptr};
    EnumThreadWindows(ui_thread_, &CompareCaption, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }
  HWND WaitForWindow(const wchar_t* caption) const {
    HWND found = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (found = Window(caption)) != nullptr; })) << Utf8(caption);
    return found;
  }
  HWND Sheet() const { return Find(sheet_caption, L"#32770"); }
  HWND Page() const {
    return reinterpret_cast<HWND>(SendMessageW(Sheet(), PSM_GETCURRENTPAGEHWND, 0, 0));
  }
  HWND MenuBar() const { return Find(L"", L"KelvoMenuBar"); }
  void GoTo(int page) const { SendMessageW(Sheet(), PSM_SETCURSEL, static_cast<WPARAM>(page), 0); }
  void Do(int command) const { SendMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(command), 0); }
  void Post(int command) const {
    PostMessageW(Page(), WM_COMMAND, static_cast<WPARAM>(command), 0);
  }
  bool Enabled(int command) const {
    return SendMessageW(MenuBar(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
  }
  // Chooses `answer` in the box or dialog of that caption, and waits until it is gone and what
  // follows from the answer has happened.
  void Answer(const wchar_t* caption, int answer) const { Answer(WaitForWindow(caption), answer); }
  void Answer(HWND box, int answer) const {
    SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    Settle();
  }
  static std::string Text(HWND window) {
    wchar_t text[300] = L"";
    GetWindowTextW(window, text, 300);
    return Utf8(text);
  }
  static std::string Text(HWND dialog, int id) { return Text(GetDlgItem(dialog, id)); }
  // What a message box says.
  static std::string BoxText(HWND box) {
    std::string all;
    HWND label = nullptr;
    while ((label = FindWindowExW(box, label, L"Static", nullptr)) != nullptr) all += Text(label);
    return all;
  }

  HWND List() const { return GetDlgItem(Page(), IDC_LIST); }
  HWND Tree() const { return GetDlgItem(Page(), IDC_TREE); }
  // Lists and trees are read on their own thread: a switch of threads for each item takes longer.
  std::string Items() const { return Items(List()); }
  std::string Items(HWND list) const {  // "x" checked, "*" selected
    std::string all;
    Run([&] { all = ReadItems(list); });
    return all;
  }
  void Check(int item, bool checked) const {
    ListView_SetItemState(List(), item, INDEXTOSTATEIMAGEMASK(checked ? 2 : 1),
                          LVIS_STATEIMAGEMASK);
  }
  void Select(int item, bool selected = true) const {
    ListView_SetItemState(List(), item, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
  }
  std::string Nodes() const { return Nodes(Tree()); }
  std::string Nodes(HWND tree) const {
    std::string all;
    Run([&] { all = ReadNodes(tree, TreeView_GetRoot(tree), 0); });
    return all;
  }
  // The node at the end of a path of labels, "Sine\\One".
  HTREEITEM Node(const std::string& path) const { return NodeIn(Tree(), path); }
  HTREEITEM NodeIn(HWND tree, const std::string& path) const {
    HTREEITEM item = nullptr;
    Run([&] { item = FindNode(tree, path); });
    return item;
  }
  static std::string NodeLabel(HWND tree, HTREEITEM item) {
    wchar_t text[300] = L"";
    TVITEMW node = {};
    node.mask = TVIF_HANDLE | TVIF_TEXT;
    node.hItem = item;
    node.pszText = text;
    node.cchTextMax = 300;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
    return Utf8(text);
  }

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
  DWORD ui_thread() const { return ui_thread_; }

  MemoryFiles files;
  FakeInformation information;
  CatalogFeature feature;
  const wchar_t* sheet_caption = L"Playlist Organizer";

 private:
  static std::string ReadItems(HWND list) {
    std::string all;
    for (int i = 0, count = ListView_GetItemCount(list); i < count; ++i) {
      const UINT state = ListView_GetItemState(list, i, ~0u);
      wchar_t text[300] = L"";
      LVITEMW item = {};
      item.pszText = text;
      item.cchTextMax = 300;
      SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
      all += Utf8(text) + ((state >> 12) == 2 ? " x" : "") + (state & LVIS_SELECTED ? " *" : "") +
             "\n";
    }
    return all;
  }
  static std::string ReadNodes(HWND tree, HTREEITEM from, int depth) {
    std::string all;
    for (HTREEITEM item = from; item; item = TreeView_GetNextSibling(tree, item)) {
      const bool checked = TreeView_GetCheckState(tree, item) == 1;
      all += std::string(static_cast<size_t>(depth), ' ') + NodeLabel(tree, item) +
             (checked ? " x\n" : "\n");
      all += ReadNodes(tree, TreeView_GetChild(tree, item), depth + 1);
    }
    return all;
  }
  static HTREEITEM FindNode(HWND tree, const std::string& path) {
    HTREEITEM item = TreeView_GetRoot(tree);
    for (size_t at = 0;;) {
      const size_t end = std::min(path.find('\\', at + 1), path.size());
      while (item && NodeLabel(tree, item) != path.substr(at, end - at)) {
        item = TreeView_GetNextSibling(tree, item);
      }
      if (!item || end == path.size()) return item;
      item = TreeView_GetChild(tree, item);
      at = end + 1;
    }
  }

  static constexpr UINT kRunMessage = WM_APP + 1;
  static constexpr UINT kStartMessage = WM_APP + 2;
  struct Search {
    const wchar_t* caption;  // null: any
    const wchar_t* kind;
    bool enabled;
    HWND found;
  };
  // After a test that failed in the middle: the sheet must close all the same.
  void CloseForgottenDialogs() const {
    WaitFor([&] {
      const HWND dialog = Find(nullptr, L"#32770", true);
      if (!dialog || dialog == Sheet()) return true;
      ADD_FAILURE() << "left open: " << Text(dialog);
      PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
      PostMessageW(dialog, WM_COMMAND, IDNO, 0);
      Sleep(200);
      return false;
    });
  }
  static BOOL CALLBACK CompareCaption(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    wchar_t text[100] = L"";
    wchar_t kind[32] = L"";
    GetWindowTextW(window, text, 100);
    GetClassNameW(window, kind, 32);
    if (!IsWindowVisible(window) || lstrcmpW(kind, search.kind) != 0 ||
        (search.caption && lstrcmpW(text, search.caption) != 0) ||
        (search.enabled && !IsWindowEnabled(window))) {
      return TRUE;
    }
    search.found = window;
    return FALSE;
  }
  static LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == kRunMessage) {
      (*reinterpret_cast<const std::function<void()>*>(lparam))();
    } else if (message == kStartMessage) {
      const std::unique_ptr<std::function<void()>> action(
          reinterpret_cast<std::function<void()>*>(lparam));
      (*action)();
    }
    if (message == kMessageCatalogPlay) sent() += "1537;";
    if (message == kMessageCatalogPlayed) sent() += "1536;";
    return DefWindowProcW(window, message, wparam, lparam);
  }
  static void OnPath(const wchar_t* path, HostWord) {
    sent() += (path == kCatalogClearList    ? "clear"
               : path == CatalogEndOfList() ? "end"
                                            : Utf8(path)) +
              ";";
  }

  DWORD ui_thread_;
  HMODULE host_ = nullptr;
  HWND parent_ = nullptr;
};

}  // namespace kelvo::test
