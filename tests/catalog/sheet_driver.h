// Shows the catalog on this thread, over files in memory, while a second thread uses it.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <functional>
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
      PostMessageW(Sheet(), WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(feature.ShowCatalog(host_, parent_), 1);
    user.join();
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  // For the using thread.
  HWND Window(const wchar_t* caption) const { return Find(caption, L"#32770"); }
  // Of these captions and classes the visible one.
  HWND Find(const wchar_t* caption, const wchar_t* kind) const {
    Search search = {caption, kind, nullptr};
    EnumThreadWindows(ui_thread_, &CompareCaption, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }
  HWND WaitForWindow(const wchar_t* caption) const {
    HWND found = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (found = Window(caption)) != nullptr; })) << Utf8(caption);
    return found;
  }
  HWND Sheet() const { return Window(L"Playlist Organizer"); }
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
  // Chooses `answer` in the box or dialog of that caption, and waits for its end.
  void Answer(const wchar_t* caption, int answer) const {
    const HWND box = WaitForWindow(caption);
    SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer), 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
  }

  HWND List() const { return GetDlgItem(Page(), IDC_LIST); }
  HWND Tree() const { return GetDlgItem(Page(), IDC_TREE); }
  std::string Items() const {  // "x" checked, "*" selected
    std::string all;
    for (int i = 0, count = ListView_GetItemCount(List()); i < count; ++i) {
      const UINT state = ListView_GetItemState(List(), i, ~0u);
      wchar_t text[300] = L"";
      LVITEMW item = {};
      item.pszText = text;
      item.cchTextMax = 300;
      SendMessageW(List(), LVM_GETITEMTEXTW, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(&item));
      all += Utf8(text) + ((state >> 12) == 2 ? " x" : "") + (state & LVIS_SELECTED ? " *" : "") +
             "\n";
    }
    return all;
  }
  void Check(int item, bool checked) const {
    ListView_SetItemState(List(), item, INDEXTOSTATEIMAGEMASK(checked ? 2 : 1),
                          LVIS_STATEIMAGEMASK);
  }
  void Select(int item, bool selected = true) const {
    ListView_SetItemState(List(), item, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
  }
  std::string Nodes(HTREEITEM from, int depth = 0) const {
    std::string all;
    for (HTREEITEM item = from; item; item = TreeView_GetNextSibling(Tree(), item)) {
      wchar_t text[300] = L"";
      TVITEMW node = {};
      node.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_STATE;
      node.hItem = item;
      node.stateMask = TVIS_STATEIMAGEMASK;
      node.pszText = text;
      node.cchTextMax = 300;
      SendMessageW(Tree(), TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
      all += std::string(static_cast<size_t>(depth), ' ') + Utf8(text) +
             ((node.state >> 12) == 2 ? " x\n" : "\n");
      all += Nodes(TreeView_GetChild(Tree(), item), depth + 1);
    }
    return all;
  }
  std::string Nodes() const { return Nodes(TreeView_GetRoot(Tree())); }

  static std::string& sent() {
    static std::string text;
    return text;
  }

  MemoryFiles files;
  FakeInformation information;
  CatalogFeature feature;

 private:
  struct Search {
    const wchar_t* caption;
    const wchar_t* kind;
    HWND found;
  };
  static BOOL CALLBACK CompareCaption(HWND window, LPARAM parameter) {
    Search& search = *reinterpret_cast<Search*>(parameter);
    wchar_t text[100] = L"";
    wchar_t kind[32] = L"";
    GetWindowTextW(window, text, 100);
    GetClassNameW(window, kind, 32);
    if (!IsWindowVisible(window) || lstrcmpW(kind, search.kind) != 0 ||
        lstrcmpW(text, search.caption) != 0) {
      return TRUE;
    }
    search.found = window;
    return FALSE;
  }
  static LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
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
