// Bookmarks: the list, its file and the window.
#include <windows.h>

#include <commctrl.h>
#include <string.h>

#include "host/check/subject.h"

namespace velmora::check {
namespace {

using Bookmarks = KelvoBookmarks;

class BookmarksCheck {
 public:
  BookmarksCheck(const Subject& subject, Report& report)
      : subject_(subject),
        report_(report),
        bookmarks_(subject.Get<Bookmarks>(KELVO_FEATURE_BOOKMARKS)),
        file_(subject.work + L"bookmarks.dat"),
        live_(subject.work + L"live.ogg") {
    const std::wstring folder = subject.work.substr(0, subject.work.size() - 1);
    registry_.Set(KELVO_INSTALLATION_KEY, KELVO_INSTALL_FOLDER_VALUE, REG_SZ, folder.c_str(),
                  (folder.size() + 1) * sizeof(wchar_t));
    WriteBytes(live_, "");
  }
  ~BookmarksCheck() { table().Destroy(KELVO_ON(bookmarks_), 0); }
  BookmarksCheck(const BookmarksCheck&) = delete;
  BookmarksCheck& operator=(const BookmarksCheck&) = delete;

  void CheckList();
  void CheckLastPlayed();
  void CheckReading();
  void CheckWindow();

 private:
  const KelvoBookmarksTable& table() const { return *bookmarks_->table; }
  int32_t Add(const wchar_t* path, int32_t position, const wchar_t* description) {
    return table().AddBookmark(KELVO_ON(bookmarks_), path, position, description);
  }
  int32_t Load() { return table().LoadBookmarks(KELVO_ON(bookmarks_)); }
  void Last(const std::wstring& path, int32_t position, const wchar_t* title) {
    table().SetLastPlayed(KELVO_ON(bookmarks_), path.c_str(), position, title);
  }
  // What GetBookmark writes, and its result.
  std::wstring Got(int32_t index, int32_t* result = nullptr) {
    wchar_t path[KELVO_MAX_TEXT] = L"-", description[KELVO_MAX_TEXT] = L"-";
    int32_t position = -7;
    const int32_t exists =
        table().GetBookmark(KELVO_ON(bookmarks_), index, path, description, &position);
    if (result) *result = exists;
    return std::wstring(path) + L"|" + std::to_wstring(position) + L"|" + description;
  }
  std::wstring Taken(int32_t* result) {
    wchar_t path[KELVO_MAX_TEXT] = L"-";
    int32_t position = -7;
    *result = table().TakeLastPlayed(KELVO_ON(bookmarks_), path, &position);
    return std::wstring(path) + L"|" + std::to_wstring(position);
  }
  bool FileIs(const std::wstring& lines) { return ReadBytes(file_) == BytesOf(lines); }
  void Says(const char* sentence, bool holds) { report_.Says(sentence, holds); }

  const Subject& subject_;
  Report& report_;
  Bookmarks* const bookmarks_;
  const std::wstring file_, live_;
  OwnRegistry registry_;
};

void BookmarksCheck::CheckList() {
  Says("A fresh list is empty, without storage; its column is 0, its direction 1",
       !bookmarks_->bookmarks && bookmarks_->count + bookmarks_->capacity == 0 &&
           bookmarks_->sort_column == 0 && bookmarks_->sort_direction == 1 && !bookmarks_->window);
  Says("A file that is not there loads as an empty list", Load() == 0);
  Says("AddBookmark answers non-zero and writes path, seconds and description, a line each",
       Add(L"\\gone.ogg", 90, L"one") != 0 && FileIs(L"\\gone.ogg\r\n90\r\none\r\n"));
  Says("The list has room for 50, and holds the bookmark in its place",
       bookmarks_->count == 1 && bookmarks_->capacity == 50 &&
           wcscmp(bookmarks_->bookmarks[0].path, L"\\gone.ogg") == 0 &&
           wcscmp(bookmarks_->bookmarks[0].description, L"one") == 0 &&
           bookmarks_->bookmarks[0].position_s == 90);
  int32_t exists = 9;
  Says("GetBookmark of a file that is not there writes all and answers 0",
       Got(0, &exists) == L"\\gone.ogg|90|one" && exists == 0);
  table().UpdateBookmark(KELVO_ON(bookmarks_), 0, live_.c_str(), -3, L"two");
  Says("UpdateBookmark replaces the three values and saves", FileIs(live_ + L"\r\n-3\r\ntwo\r\n"));
  Says("GetBookmark of a file that is there answers 1",
       Got(0, &exists) == live_ + L"|-3|two" && exists == 1);
  Says("GetBookmark bears null for every output",
       table().GetBookmark(KELVO_ON(bookmarks_), 0, nullptr, nullptr, nullptr) == 1);
  bool outside = true;
  for (const int32_t index : {-1, 1, INT32_MIN, INT32_MAX}) {
    outside &= Got(index, &exists) == L"-|-7|-" && exists == 0;
    table().UpdateBookmark(KELVO_ON(bookmarks_), index, L"x", 1, L"x");
  }
  Says("An index outside the list gives 0, writes nothing and changes nothing",
       outside && FileIs(live_ + L"\r\n-3\r\ntwo\r\n"));
  Add(nullptr, 1, nullptr);
  Says("Null texts count as empty", bookmarks_->count == 2 && Got(1) == L"|1|");
  const std::wstring endless(400, L'e');
  Add(endless.c_str(), 2, endless.c_str());
  Says("Texts are cut to 259 characters",
       Got(2) == std::wstring(259, L'e') + L"|2|" + std::wstring(259, L'e'));
  for (int32_t i = 3; i < 51; ++i) Add(L"p", i, L"d");
  Says("The list grows by 50", bookmarks_->count == 51 && bookmarks_->capacity == 100);
}

void BookmarksCheck::CheckLastPlayed() {
  DeleteFileW(file_.c_str());
  Load();
  int32_t result = 9;
  Says("TakeLastPlayed of an empty list is 0 and writes nothing",
       Taken(&result) == L"-|-7" && result == 0);
  Add(L"\\user.ogg", 1, L"mine");
  Says("TakeLastPlayed without a last-played bookmark is 0, though it has written the first one's",
       Taken(&result) == L"\\user.ogg|1" && result == 0 && bookmarks_->count == 1);
  Last(live_, 70, L"Title");
  Says("SetLastPlayed puts \"(Last Played) \" and the title in front of the user's bookmarks",
       FileIs(live_ + L"\r\n70\r\n(Last Played) Title\r\n\\user.ogg\r\n1\r\nmine\r\n"));
  Last(L"\\gone.ogg", 80, L"Next");
  Says("A second one replaces it",
       FileIs(L"\\gone.ogg\r\n80\r\n(Last Played) Next\r\n\\user.ogg\r\n1\r\nmine\r\n"));
  Says("TakeLastPlayed keeps it while its file is not there",
       Taken(&result) == L"\\gone.ogg|80" && result == 0 && bookmarks_->count == 2);
  table().UpdateBookmark(KELVO_ON(bookmarks_), 0, live_.c_str(), 75, L"(last PLAYED) x");
  Says("TakeLastPlayed answers 1, hands it out, takes it out of the list and saves",
       Taken(&result) == live_ + L"|75" && result == 1 && FileIs(L"\\user.ogg\r\n1\r\nmine\r\n"));
  Says("The freed slot behind the list is zero", bookmarks_->count == 1 &&
                                                     !bookmarks_->bookmarks[1].path &&
                                                     !bookmarks_->bookmarks[1].description);
  DeleteFileW(file_.c_str());
  Load();
  Last(live_, 5, L"");
  Taken(&result);
  Says("An empty list is a file of no bytes",
       bookmarks_->count == 0 && FileIs(L"") && GetFileAttributesW(file_.c_str()) != ~DWORD{0});
}

void BookmarksCheck::CheckReading() {
  const struct {
    const char* sentence;
    const wchar_t* lines;
    int32_t count;
    const wchar_t* last;
  } kFiles[] = {
      {"LoadBookmarks reads the file", L"a\r\n90\r\nx\r\nb\r\n-1\r\ny\r\n", 2, L"b|-1|y"},
      {"An empty description is one", L"a\r\n1\r\n\r\n", 1, L"a|1|"},
      {"A position that is no number is 0", L"a\r\nabc\r\nx\r\n", 1, L"a|0|x"},
      {"A position is read as far as it is a number", L"a\r\n12s\r\nx\r\n", 1, L"a|12|x"},
      {"An empty path ends the list", L"a\r\n1\r\nx\r\n\r\nb\r\n2\r\ny\r\n", 1, L"a|1|x"},
  };
  for (const auto& file : kFiles) {
    WriteBytes(file_, BytesOf(file.lines));
    const bool counted = Load() == file.count && bookmarks_->count == file.count;
    Says(file.sentence, counted && Got(file.count - 1) == file.last);
  }
  table().Destroy(KELVO_ON(bookmarks_), 0);
  Says("Slot 5 with flags 0 frees the list without saving",
       bookmarks_->count == 0 && FileIs(kFiles[4].lines));
}

void BookmarksCheck::CheckWindow() {
  if (!subject_.windows) return report_.LeavesOut("ShowBookmarks shows a window (--windows)");
  WriteBytes(file_, BytesOf(live_ + L"\r\n5\r\nfirst\r\n\\gone.ogg\r\n125\r\nsecond\r\n"));
  bool fields = false, refused = false, sorts = true, formatted = false;
  std::wstring longest;
  MSG posted[2] = {};
  WindowUser user(L"Velmora Bookmarks", [&](HWND dialog) {
    const auto list = static_cast<HWND>(bookmarks_->list);
    fields = bookmarks_->window == dialog && list == GetDlgItem(dialog, 1013) &&
             bookmarks_->menu_bar && bookmarks_->count == 2;
    refused = table().ShowBookmarks(KELVO_ON(bookmarks_), subject_.window) == 1;
    LVITEMW item = {};
    item.mask = LVIF_STATE;
    item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&item));
    for (int i = 0; i < 2; ++i) {
      SendMessageW(dialog, WM_COMMAND, 40107 + i, 0);
      posted[i] = TakeMessage(subject_.window, KELVO_MESSAGE_PLAY_BOOKMARK);
    }
    NMLISTVIEW click = {};
    click.hdr.hwndFrom = list;
    click.hdr.idFrom = 1013;
    click.hdr.code = static_cast<UINT>(LVN_COLUMNCLICK);
    click.iSubItem = 1;
    for (const int32_t direction : {1, -1}) {
      SendMessageW(dialog, WM_NOTIFY, 1013, reinterpret_cast<LPARAM>(&click));
      sorts &= bookmarks_->sort_column == 1 && bookmarks_->sort_direction == direction;
    }
    wchar_t text[16] = L"";
    item.iSubItem = 1;
    item.pszText = text;
    item.cchTextMax = 16;
    SendMessageW(list, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    longest = text;
    formatted = wcscmp(bookmarks_->position_text, text) == 0;
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
  });
  const int32_t shown = table().ShowBookmarks(KELVO_ON(bookmarks_), subject_.window);
  Says("ShowBookmarks loads the list, shows \"Velmora Bookmarks\", and answers 0 once it is closed",
       shown == 0 && user.acted());
  Says("Meanwhile the object holds the window, its list (control 1013) and its menu bar", fields);
  Says("ShowBookmarks answers 1 at once while a window is open", refused);
  Says("\"Play\" posts 0x918 with 0 and the bookmark's index",
       posted[0].message == KELVO_MESSAGE_PLAY_BOOKMARK &&
           posted[0].wParam == KELVO_BOOKMARK_PLAY && posted[0].lParam == 1);
  Says("\"Enqueue file\" posts 0x918 with 1 and the bookmark's index",
       posted[1].message == KELVO_MESSAGE_PLAY_BOOKMARK &&
           posted[1].wParam == KELVO_BOOKMARK_ENQUEUE && posted[1].lParam == 1);
  Says("A click on a column sorts by it, the next one the other way round: 2:05 stands first",
       sorts && longest == L"2:05");
  Says("The object holds the position that was formatted last", formatted);
  Says("Afterwards the three handles are null",
       !bookmarks_->window && !bookmarks_->list && !bookmarks_->menu_bar);
}

}  // namespace

void CheckBookmarks(const Subject& subject, Report& report) {
  report.Begin("Bookmarks");
  BookmarksCheck check(subject, report);
  check.CheckList();
  check.CheckLastPlayed();
  check.CheckReading();
  check.CheckWindow();
}

}  // namespace velmora::check
