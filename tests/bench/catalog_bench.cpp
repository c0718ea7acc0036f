// The catalog's sheet with the system's own controls, for devices full of music: how long it takes
// until a tree or a list is seen, and what the commands over all of it take. Beside each stands
// what a control takes to be filled with as many items by plain insertions.
#include <stdio.h>
#include <stdlib.h>

#include <algorithm>
#include <thread>

#include "catalog/windows/catalog_feature.h"
#include "entry/language/modules.h"
#include "kelvo/settings.h"
#include "res/resource_ids.h"
#include "tests/bench/measure.h"
#include "tests/support/user.h"

namespace {

using kelvo::bench::Seconds;

struct Device {
  int files;
  int artists;
  DWORD order;
};

// A folder for each artist, and in it the artist's files.
class ManyFiles final : public kelvo::FileSystem {
 public:
  explicit ManyFiles(const Device& device) : device_(device) {}
  bool List(const wchar_t* pattern, kelvo::FolderVisitor& visitor) noexcept override {
    int artist = 0;
    const bool is_root = swscanf(pattern, L"\\Artist %d", &artist) != 1;
    const int count = is_root ? device_.artists : device_.files / device_.artists;
    for (int i = 0; i < count; ++i) {
      wchar_t name[40];
      // As they come on a device that was filled bit by bit.
      const int number = static_cast<int>(i * 7919LL % count);
      swprintf(name, 40, is_root ? L"Artist %05d" : L"%06d.ogg", number);
      visitor.Visit({name, is_root ? kelvo::kAttributeFolder : kelvo::kAttributeNormal});
    }
    return true;
  }
  kelvo::OpenFile<kelvo::FileReader> OpenRead(const wchar_t*, kelvo::Share) noexcept override {
    return {};
  }
  kelvo::OpenFile<kelvo::FileWriter> OpenWrite(const wchar_t*, kelvo::Share) noexcept override {
    return {};
  }
  kelvo::OpenFile<kelvo::FileWriter> Create(const wchar_t*, kelvo::Share) noexcept override {
    return {};
  }
  bool GetAttributes(const wchar_t*, uint32_t*) noexcept override { return false; }
  bool SetAttributes(const wchar_t*, uint32_t) noexcept override { return false; }
  bool Delete(const wchar_t*) noexcept override { return false; }
  bool Move(const wchar_t*, const wchar_t*) noexcept override { return false; }
  bool Replace(const wchar_t*, const wchar_t*) noexcept override { return false; }

 private:
  Device device_;
};

class Information final : public kelvo::MediaInformation {
 public:
  bool OggInformation(const wchar_t* path, kelvo::MediaTexts* texts) noexcept override {
    int artist = 0;
    int title = 0;
    swscanf(path, L"\\Artist %d\\%d", &artist, &title);
    swprintf(texts->artist, 40, L"Artist %05d", artist);
    swprintf(texts->album, 40, L"Album %d", title % 2);
    swprintf(texts->title, 40, L"Title %06d", title);
    return true;
  }
  bool WmaInformation(const wchar_t*, kelvo::MediaTexts*) noexcept override { return false; }
  bool WmaAvailable() noexcept override { return false; }
};

// What this process has used; other programs' work does not count.
double CpuSeconds() {
  FILETIME started, ended, system, own;
  GetProcessTimes(GetCurrentProcess(), &started, &ended, &system, &own);
  const auto seconds = [](const FILETIME& time) {
    return (time.dwLowDateTime + time.dwHighDateTime * 4294967296.0) / 1e7;
  };
  return seconds(system) + seconds(own);
}

// Fills a control of this kind on the windows' thread and empties it again.
template <class Fill>
double PlainSeconds(const kelvo::test::User& user, const wchar_t* kind, DWORD style,
                    const Fill& fill) {
  double seconds = 0;
  user.Run([&] {
    const HWND control = CreateWindowExW(0, kind, L"", WS_POPUP | style, 0, 0, 240, 300, nullptr,
                                         nullptr, nullptr, nullptr);
    SendMessageW(control, WM_SETREDRAW, FALSE, 0);
    seconds = Seconds([&] { fill(control); });
    DestroyWindow(control);
  });
  return seconds;
}

void FillTree(HWND tree, const Device& device) {
  const auto insert = [&](HTREEITEM parent, int number) {
    wchar_t label[40];
    swprintf(label, 40, L"Label %06d", number);
    TVINSERTSTRUCTW item = {};
    item.hParent = parent;
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT;
    item.item.pszText = label;
    return TreeView_InsertItem(tree, &item);
  };
  for (int artist = 0; artist < device.artists; ++artist) {
    const HTREEITEM parent = insert(TVI_ROOT, artist);
    for (int i = device.files / device.artists; i > 0; --i) insert(parent, i);
  }
}

void FillList(HWND list, int count) {
  for (int column = 0; column < 4; ++column) {
    LVCOLUMNW inserted = {};
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&inserted));
  }
  LVITEMW item = {};
  item.mask = LVIF_TEXT | LVIF_PARAM;
  item.pszText = LPSTR_TEXTCALLBACKW;
  for (; item.iItem < count; ++item.iItem) {
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    for (int column = 1; column < 4; ++column) {
      ListView_SetItemText(list, item.iItem, column, LPSTR_TEXTCALLBACKW);
    }
  }
}

class Measurement {
 public:
  Measurement(const kelvo::test::User& user, const Device& device) : user_(user), device_(device) {}

  void Run() {
    printf("== %d files of %d artists, order %u\n", device_.files, device_.artists,
           static_cast<unsigned>(device_.order));
    plain_ = PlainSeconds(user_, WC_TREEVIEWW, TVS_HASLINES | TVS_CHECKBOXES,
                          [&](HWND tree) { FillTree(tree, device_); });
    // Not when its time comes: a scan handles messages, so nothing tells when that one is over.
    user_.Run([&] { KillTimer(user_.Page(), 1); });
    Time("scanned", 0, [&] { user_.Do(ID_RESCAN); });
    Time("tree shown", device_.files > 10000 ? 6 : 0.5, [&] { user_.GoTo(1); });
    Time("tree: check all", 0.3, [&] { user_.Do(ID_CHECK_ALL); });
    Time("tree: invert", 0.3, [&] { user_.Do(ID_INVERT_CHECKS); });
    Time("tree: check none", 0.3, [&] { user_.Do(ID_CHECK_NONE); });
    user_.Do(ID_CHECK_ALL);
    Time("tree: add", 0.3, [&] { user_.Do(ID_ADD_CHECKED); });

    plain_ = PlainSeconds(user_, WC_LISTVIEWW, LVS_REPORT,
                          [&](HWND list) { FillList(list, device_.files); });
    Time("list shown", 0, [&] { user_.GoTo(2); });
    Time("list: check none", 0.3, [&] { user_.Do(ID_CHECK_NONE); });
    Time("list: check all", 0.3, [&] { user_.Do(ID_CHECK_ALL); });
    Time("list: invert", 0.3, [&] { user_.Do(ID_INVERT_CHECKS); });
    Time("list: select all", 0.3, [&] { user_.Do(ID_SELECT_ALL); });
    Time("list: invert selection", 0.3, [&] { user_.Do(ID_INVERT_SELECTION); });
    user_.Run([&] {
      for (int i = 0; i < device_.files; i += 2) user_.Select(user_.Control(IDC_LIST), i);
    });
    Time("list: move down", 0.3, [&] { user_.Do(ID_MOVE_DOWN); });
    Time("list: remove half", 0.3, [&] { user_.Do(ID_REMOVE_SELECTED); });
    user_.Do(ID_SELECT_ALL);
    Time("list: remove all", 0.3, [&] { user_.Do(ID_REMOVE_SELECTED); });
    user_.GoTo(1);
    Time("tree: add, with the list", 0.3, [&] { user_.Do(ID_ADD_CHECKED); });
    Time("tree: shown again", 0,
         [&] { user_.Do(static_cast<int>(ID_FIRST_ORDER + device_.order - 1)); });
  }

 private:
  template <class Work>
  void Time(const char* what, double goal, const Work& work) {
    const double cpu = CpuSeconds();
    const double seconds = Seconds([&] {
      work();
      user_.Run([&] { UpdateWindow(user_.Page()); });
    });
    // Of the two the smaller: other programs lengthen the one, pauses of this one the other.
    const double used = std::min(seconds, CpuSeconds() - cpu);
    printf("%-26s %8.3f s, of the processor %8.3f s, %6.2f x plain insertions", what, seconds, used,
           seconds / plain_);
    if (goal > 0) printf(" (goal <= %.1f s) %s", goal, used <= goal ? "ok" : "MISSED");
    printf("\n");
    fflush(stdout);
  }

  const kelvo::test::User& user_;
  Device device_;
  double plain_ = 1;
};

void SetOrder(DWORD order) {
  HKEY key;
  if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, kelvo::kSettingsKey, 0, nullptr, 0, KEY_ALL_ACCESS,
                      nullptr, &key, nullptr) != ERROR_SUCCESS) {
    abort();
  }
  if (order == 0) {
    RegDeleteValueW(key, kelvo::kGroupingValue);
  } else {
    RegSetValueExW(key, kelvo::kGroupingValue, 0, REG_DWORD, reinterpret_cast<BYTE*>(&order), 4);
  }
  RegCloseKey(key);
}

void Measure(const Device& device) {
  ManyFiles files(device);
  Information information;
  kelvo::CatalogFeature feature(files, information);
  kelvo::test::User user([](const std::string& what) {
    fprintf(stderr, "%s\n", what.c_str());
    exit(1);
  });
  SetOrder(device.order);
  std::thread using_thread([&] {
    user.Wait("the sheet", [&] { return user.Dialog() && user.MenuBar(); });
    Measurement(user, device).Run();
    user.Done();
  });
  feature.ShowCatalog(nullptr, nullptr);
  using_thread.join();
  SetOrder(0);
}

}  // namespace

int main(int count, char** arguments) {
  kelvo::SetOwnModule(GetModuleHandleW(nullptr));
  if (count == 4) {
    Measure({atoi(arguments[1]), atoi(arguments[2]), static_cast<DWORD>(atoi(arguments[3]))});
    return 0;
  }
  Measure({10000, 1, 6});
  Measure({10000, 500, 7});
  Measure({100000, 20000, 6});
}
