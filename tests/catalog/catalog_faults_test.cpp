// Commands of the catalog while memory runs out or files fail, at every point where that can
// happen.
#include <optional>

#include "tests/catalog/catalog_window_fixture.h"
#include "tests/support/heap_faults.h"

namespace kelvo {
namespace {

using test::HeapFaults;
using test::Id3v1Tag;
using test::WaitFor;

constexpr char kNodes[] = "Sine\n One\n Two\nUnknown\n three.mp3\n";
constexpr char kOne[] = "\\Music\\one.mp3";
constexpr char kMix[] = "\\mix.m3u";

// Every line of `some` is one of `all`, whatever follows a blank.
bool LinesAreAmong(const std::string& some, const std::string& all) {
  for (size_t at = 0, end; at < some.size(); at = end + 1) {
    end = some.find('\n', at);
    if (all.find(some.substr(at, end - at)) == std::string::npos) return false;
  }
  return true;
}

class CatalogFaultsTest : public test::CatalogWindowTest {
 protected:
  enum class Fault { kNone, kMemory, kMemoryFromThenOn, kFile, kFileFromThenOn };

  // Runs `use` once for each point of each kind at which it can fail, and a last time without a
  // fault; everything is put back before. `check` is told the kind and the call that failed.
  void Sweep(const std::function<void()>& use,
             const std::function<void(Fault, const std::string& failed)>& check) {
    int faults = 0;
    for (const Fault fault :
         {Fault::kMemory, Fault::kMemoryFromThenOn, Fault::kFile, Fault::kFileFromThenOn}) {
      for (long n = 0;; ++n) {
        SCOPED_TRACE(testing::Message() << "fault " << static_cast<int>(fault) << ", " << n);
        ASSERT_LT(n, 100);
        Restore();
        Arm(fault, n);
        use();
        std::string failed;
        const bool triggered = Disarm(n, &failed);
        driver_.Run([&] { EXPECT_EQ(driver_.files.open_now, 0); });
        check(triggered ? fault : Fault::kNone, failed);
        if (!triggered) break;
        ++faults;
        if (HasFailure()) return;
      }
    }
    EXPECT_GT(faults, 0);
    Restore();
  }
  // All files as they were, the current playlist with its three songs, the tree by artists: the
  // sheet must still be good for this after each fault.
  void Restore() {
    driver_.Run([&] { RestoreHere(); });
  }
  void RestoreHere() {
    while (!driver_.files.files().empty()) {
      driver_.files.Delete(test::Wide(driver_.files.files().back().path));
    }
    for (const auto& file : original_) {
      driver_.files.Put(file.path, file.bytes, file.attributes);
    }
    Do(1, ID_FIRST_ORDER + 5);
    Do(0, ID_RESCAN);
    EXPECT_EQ(Items(0), kLists);
    EXPECT_EQ(Nodes(), kNodes);
    if (Items(2) == kAllSongs) return;
    Do(2, ID_SELECT_ALL);
    Do(2, ID_REMOVE_SELECTED);
    EXPECT_EQ(Items(2), "");
    Do(0, ID_CHECK_ALL);
    Do(0, ID_ADD_CHECKED);
    Do(0, ID_CHECK_NONE);
    EXPECT_EQ(Items(2), kAllSongs);
  }
  // Pages are used where they are: to bring them up would take most of the time.
  HWND Control(int page) { return GetDlgItem(pages_[page], page == 1 ? IDC_TREE : IDC_LIST); }
  void Do(int page, int command) {
    SendMessageW(pages_[page], WM_COMMAND, static_cast<WPARAM>(command), 0);
  }
  void Post(int page, int command) {
    PostMessageW(pages_[page], WM_COMMAND, static_cast<WPARAM>(command), 0);
  }
  std::string Items(int page) { return driver_.Items(Control(page)); }
  std::string Nodes() { return driver_.Nodes(Control(1)); }
  void SelectItem(int page, int item) {
    ListView_SetItemState(Control(page), item, LVIS_SELECTED, LVIS_SELECTED);
  }
  void ShowAndSweep(const std::function<void()>& use,
                    const std::function<void(Fault, const std::string& failed)>& check) {
    ShowAfterScan(0, [&] {
      for (int page = 2; page >= 0; --page) {
        driver_.GoTo(page);
        pages_[page] = driver_.Page();
      }
      driver_.Run([&] { original_ = driver_.files.files(); });
      Sweep(use, check);
    });
  }
  // The box or dialog that follows on a choice in `dialog`: null when the dialog is gone.
  HWND Next(HWND dialog) {
    HWND top = nullptr;
    EXPECT_TRUE(WaitFor([&] {
      top = driver_.Find(nullptr, L"#32770", true);
      return top && top != dialog;
    }));
    return top == driver_.Sheet() ? nullptr : top;
  }
  void SelectNode(const char* node) {
    TreeView_SelectItem(Control(1), driver_.NodeIn(Control(1), node));
  }
  bool Exists(const std::string& path) { return driver_.BytesOf(path) != "no file"; }

  HWND pages_[3] = {};
  std::vector<test::MemoryFiles::File> original_;

 private:
  void Arm(Fault fault, long n) {
    driver_.Run([&] {
      driver_.files.log.clear();
      if (fault == Fault::kMemory) heap_.emplace(n);
      if (fault == Fault::kMemoryFromThenOn) heap_.emplace(n, HeapFaults::Mode::kFromThenOn);
      if (!heap_) driver_.files.FailAfter(n, fault == Fault::kFileFromThenOn);
    });
  }
  bool Disarm(long n, std::string* failed) {
    bool triggered = false;
    driver_.Run([&] {
      triggered = heap_ ? heap_->triggered() : driver_.files.fault_triggered();
      if (!heap_ && triggered) *failed = driver_.files.log[static_cast<size_t>(n)];
      heap_.reset();
      driver_.files.FailAfter(-1);
    });
    return triggered;
  }

  std::optional<HeapFaults> heap_;
};

TEST_F(CatalogFaultsTest, AScanLeavesOutWhatItCannotRead) {
  ShowAndSweep([&] { Do(0, ID_RESCAN); },
               [&](Fault fault, const std::string& failed) {
                 const std::string nodes = Nodes();
                 if (fault == Fault::kNone) {
                   EXPECT_EQ(nodes, kNodes);
                 }
                 const std::string call = failed.substr(0, 4);
                 if (fault == Fault::kFile && (call == "open" || call == "read")) {
                   size_t shown = 0;
                   for (size_t at = 0; (at = nodes.find("\n ", at)) != std::string::npos; ++at) {
                     ++shown;
                   }
                   EXPECT_EQ(shown, 3u) << "a file that cannot be read is shown by its name";
                 }
                 EXPECT_TRUE(LinesAreAmong(nodes,
                                           "Sine\n One\n Two\nUnknown\n one.mp3\n "
                                           "two.mp3\n three.mp3\n"))
                     << nodes;
                 EXPECT_TRUE(LinesAreAmong(Items(0), kLists)) << Items(0);
                 EXPECT_EQ(Items(2), kAllSongs) << "the current playlist is not touched";
               });
}

TEST_F(CatalogFaultsTest, CheckedFilesAreAddedOrLeftOut) {
  ShowAndSweep(
      [&] {
        for (const int page : {1, 0}) {
          Do(page, ID_CHECK_ALL);
          Do(page, ID_ADD_CHECKED);
        }
      },
      [&](Fault fault, const std::string&) {
        const std::string items = Items(2);
        EXPECT_EQ(items.substr(0, sizeof(kAllSongs) - 1), kAllSongs);
        const std::string added = items.substr(sizeof(kAllSongs) - 1);
        EXPECT_TRUE(LinesAreAmong(added, "One x\nTwo x\nthree.mp3 x\none.mp3 x\ntwo.mp3 x\n"))
            << added;
        if (fault == Fault::kNone) {
          EXPECT_EQ(added, std::string("One x\nTwo x\nthree.mp3 x\n") + kAllSongs);
        }
      });
}

TEST_F(CatalogFaultsTest, TheCurrentPlaylistIsSortedOrStays) {
  ShowAndSweep(
      [&] {
        NMLISTVIEW tap = {};
        tap.hdr = {Control(2), IDC_LIST, static_cast<UINT>(LVN_COLUMNCLICK)};
        SendMessageW(pages_[2], WM_NOTIFY, IDC_LIST, reinterpret_cast<LPARAM>(&tap));
        ListView_SetCheckState(Control(2), 0, FALSE);
        SelectItem(2, 0);
        Do(2, ID_MOVE_DOWN);
      },
      [&](Fault, const std::string&) {
        const std::string items = Items(2);
        EXPECT_TRUE(items == "three.mp3 x\nOne *\nTwo x\n" ||
                    items == "three.mp3 x\nTwo *\nOne x\n")
            << items;
      });
}

TEST_F(CatalogFaultsTest, ADeletedFileLeavesTheTreeAnotherStays) {
  ShowAndSweep(
      [&] {
        SelectNode("Sine\\One");
        Post(1, ID_DELETE_FILE);
        driver_.Answer(L"Delete File", IDYES);
      },
      [&](Fault fault, const std::string&) {
        const bool files_failed = fault == Fault::kFile || fault == Fault::kFileFromThenOn;
        EXPECT_EQ(Exists(kOne), files_failed);
        EXPECT_EQ(Nodes(), files_failed ? kNodes : "Sine\n Two\nUnknown\n three.mp3\n");
        Do(1, ID_LAST_ORDER);  // with the last file twice, memory permitting
        EXPECT_TRUE(LinesAreAmong(Nodes(), "Music\n one.mp3\n two.mp3\n three.mp3\n"));
        SelectItem(0, 1);
        Post(0, ID_DELETE_FILE);
        driver_.Answer(L"Delete File", IDYES);
        EXPECT_EQ(Items(0), "\\Lists\\a.m3u\n");
      });
}

TEST_F(CatalogFaultsTest, APlaylistIsDeletedOrStays) {
  ShowAndSweep(
      [&] {
        SelectItem(0, 0);
        Post(0, ID_DELETE_FILE);
        driver_.Answer(L"Delete File", IDYES);
      },
      [&](Fault fault, const std::string&) {
        const bool deleted = fault == Fault::kNone;
        EXPECT_EQ(Exists("\\Lists\\a.m3u"), !deleted);
        EXPECT_EQ(Items(0), deleted ? "\\Lists\\b.pls\n" : "\\Lists\\a.m3u *\n\\Lists\\b.pls\n");
      });
}

TEST_F(CatalogFaultsTest, ARenamedPlaylistKeepsItsFile) {
  ShowAndSweep(
      [&] {
        SelectItem(0, 0);
        Post(0, ID_RENAME);
        SetDlgItemTextW(driver_.WaitForWindow(L"Edit File Name"), IDC_TEXT_ENTRY, L"z.m3u");
        driver_.Answer(L"Edit File Name", IDOK);
      },
      [&](Fault fault, const std::string&) {
        const bool memory_failed = fault == Fault::kMemory || fault == Fault::kMemoryFromThenOn;
        EXPECT_EQ(Exists("\\Lists\\z.m3u"), fault == Fault::kNone);
        EXPECT_EQ(Exists("\\Lists\\a.m3u"), fault != Fault::kNone);
        // A file that could not be moved is shown by its new name all the same.
        EXPECT_EQ(Items(0), std::string("\\Lists\\") + (memory_failed ? "a" : "z") +
                                ".m3u *\n\\Lists\\b.pls\n");
      });
}

TEST_F(CatalogFaultsTest, ATagIsWrittenAsAWholeOrNotAtAll) {
  bool told = false;
  ShowAndSweep(
      [&] {
        told = false;
        SelectNode("Sine\\One");
        Post(1, ID_EDIT_TAG);
        const HWND editor = driver_.WaitForWindow(L"Edit Media Description");
        SetDlgItemTextW(editor, IDC_TAG_TITLE, L"Uno");
        PostMessageW(editor, WM_COMMAND, IDC_TAG_UPDATE, 0);
        if (const HWND box = Next(editor)) {
          told = true;
          driver_.Answer(box, IDOK);
          driver_.Answer(editor, IDCANCEL);
        }
        driver_.Settle();
      },
      [&](Fault fault, const std::string& failed) {
        const std::string before = "x" + Id3v1Tag("One", "Sine", "Waves", 8);
        const std::string bytes = driver_.BytesOf(kOne);
        if (told) {
          EXPECT_EQ(bytes, before) << failed;
        } else if (bytes.size() == before.size()) {
          EXPECT_EQ(bytes, "x" + Id3v1Tag("Uno", "Sine", "Waves", 8)) << failed;
        } else {  // the old tag could not be read: the new one is behind it
          EXPECT_EQ(bytes.substr(0, before.size() + 6), before + "TAGUno") << failed;
          EXPECT_EQ(bytes.size(), before.size() + 128);
        }
        if (fault == Fault::kNone) {
          EXPECT_FALSE(told);
          EXPECT_EQ(Nodes(), "Sine\n Two\n Uno\nUnknown\n three.mp3\n");
        }
        Do(1, ID_RESCAN);
        EXPECT_EQ(Nodes(), told ? kNodes
                           : bytes.size() == before.size()
                               ? "Sine\n Two\n Uno\nUnknown\n three.mp3\n"
                               : "Sine\n Two\nUnknown\n three.mp3\n Uno\n");
      });
}

TEST_F(CatalogFaultsTest, APlaylistIsSavedOrTheFailureTold) {
  const std::string whole =
      "#EXTM3U:\r\n#EXTINF:-1,Sine - One\r\n\\Music\\one.mp3\r\n\\Music\\three.mp3\r\n"
      "#EXTINF:-1,Sine - Two\r\n\\Music\\two.mp3\r\n";
  bool asked = false;
  bool told = false;
  ShowAndSweep(
      [&] {
        asked = told = false;
        driver_.Run([&] { driver_.files.Put(kMix, "old"); });
        Post(2, ID_SAVE_PLAYLIST);
        const HWND dialog = driver_.WaitForWindow(L"Save Playlist");
        SetDlgItemTextW(dialog, 1001, L"mix");
        driver_.Settle();
        PostMessageW(dialog, WM_COMMAND, 1002, 0);
        HWND next = Next(dialog);
        if (next && driver_.BoxText(next) == driver_.HostText(6202)) {
          asked = true;
          driver_.Answer(next, IDYES);
          next = driver_.Find(nullptr, L"#32770", true);
          if (next == driver_.Sheet()) next = nullptr;
        }
        if (next) {
          told = true;
          EXPECT_EQ(driver_.BoxText(next), driver_.HostText(6204));
          driver_.Answer(next, IDOK);
          driver_.Answer(dialog, IDCANCEL);
        }
        driver_.Settle();
      },
      [&](Fault fault, const std::string& failed) {
        const std::string bytes = driver_.BytesOf(kMix);
        EXPECT_EQ(Items(2), kAllSongs);
        if (told) {
          EXPECT_EQ(bytes, "old") << "what could not be created was not touched";
        }
        if (fault == Fault::kNone) {
          EXPECT_TRUE(asked);
          EXPECT_FALSE(told);
          EXPECT_EQ(bytes, whole);
        } else if (fault == Fault::kFile) {
          const std::string call = failed.substr(0, failed.find(' '));
          EXPECT_EQ(asked, call != "attributes") << failed;
          if (call == "list" || call == "attributes" || call == "delete") {
            EXPECT_EQ(bytes, whole) << failed;
          } else if (call == "write") {
            EXPECT_LT(bytes.size(), whole.size()) << failed;
          }
        }
      });
}

TEST_F(CatalogFaultsTest, TheSheetOpensWithoutAnyMemory) {
  std::optional<HeapFaults> faults(std::in_place, 0, HeapFaults::Mode::kFromThenOn);
  driver_.Show([&] {
    ASSERT_TRUE(WaitFor([&] {
      bool scanned = false;
      driver_.Run([&] { scanned = faults->triggered(); });
      return scanned;
    }));
    for (int page = 0; page < 3; ++page) {
      driver_.GoTo(page);
      for (const int id : {ID_CHECK_ALL, ID_ADD_CHECKED, ID_INVERT_CHECKS}) driver_.Do(id);
    }
    EXPECT_EQ(driver_.Items(), "");
    driver_.Run([&] { faults.reset(); });
    driver_.GoTo(0);
    driver_.Do(ID_RESCAN);
    EXPECT_EQ(driver_.Items(), kLists);
    AddLists();
    EXPECT_EQ(driver_.Items(), kAllSongs);
  });
}

}  // namespace
}  // namespace kelvo
