// The features without media: bookmarks, presets, skins, the language, and being loaded.
#include "tests/faults/library_faults.h"

#include <commctrl.h>

#include "kelvo/bookmarks.h"
#include "kelvo/equalizer_presets.h"
#include "kelvo/skin_reader.h"
#include "res/resource_ids.h"
#include "tests/support/wide_text.h"
#include "tests/support/zip_builder.h"

namespace kelvo {
namespace {

using test::Click;
using test::LibraryFaults;
using test::Type;
using test::Utf8;
using test::WindowsUser;

constexpr uint8_t kSetting[] = "0123456789";

class BookmarksFaults : public LibraryFaults {
 protected:
  // The file, however it is written, is there and whole.
  std::string All() {
    wchar_t path[kMaxText] = L"", text[kMaxText] = L"";
    int32_t position = 0;
    std::string all = std::to_string(bookmarks_.LoadBookmarks());
    for (int32_t i = 0; i < 3; ++i) {
      bookmarks_.GetBookmark(i, path, text, &position);
      all += Utf8(path) + Utf8(text) + std::to_string(position) + ";";
    }
    return all;
  }
  void Start() {
    DeleteFileW(folder_.Path(L"bookmarks.dat").c_str());
    bookmarks_.LoadBookmarks();
    bookmarks_.AddBookmark(folder_.Path(L"one.mp3").c_str(), 7, L"one");
    bookmarks_.AddBookmark(L"\\gone.mp3", 8, L"gone");
    bookmarks_.AddBookmark(folder_.Path(L"two.ogg").c_str(), 9, L"two");
  }
  Bookmarks& bookmarks_ = Get<Bookmarks>(kFeatureBookmarks);
};

TEST_F(BookmarksFaults, Operations) {
  Sweep(
      [&] {
        bookmarks_.UpdateBookmark(0, L"\\two.ogg and a longer path than before", 8, L"and text");
        bookmarks_.SetLastPlayed(L"\\one.mp3", 9, L"last");
        wchar_t path[kMaxText] = L"";
        int32_t position = 0;
        const int32_t taken = bookmarks_.TakeLastPlayed(path, &position);
        return std::to_string(taken) + Utf8(path) + std::to_string(position) + All();
      },
      [&] { Start(); });
}

TEST_F(BookmarksFaults, Window) {
  for (const DWORD language : {kEnglish, kGerman}) {
    SwitchTo(language);
    Start();
    Sweep([&] {
      int items = -1;
      const WindowsUser user({[&](HWND dialog) {
        items = ListView_GetItemCount(GetDlgItem(dialog, IDC_BOOKMARK_LIST));
      }});
      const int32_t busy = bookmarks_.ShowBookmarks(parent_);
      return std::to_string(busy) + std::to_string(items) + All();
    });
  }
}

TEST_F(BookmarksFaults, Commands) {
  const auto select = [](HWND dialog) {
    const HWND list = GetDlgItem(dialog, IDC_BOOKMARK_LIST);
    if (!list) return;
    ListView_SetItemState(list, 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetSelectionMark(list, 1);
  };
  const auto sort = [](HWND dialog) {
    NMLISTVIEW tap = {};
    tap.hdr = {GetDlgItem(dialog, IDC_BOOKMARK_LIST), IDC_BOOKMARK_LIST,
               static_cast<UINT>(LVN_COLUMNCLICK)};
    tap.iSubItem = 2;
    SendMessageW(dialog, WM_NOTIFY, IDC_BOOKMARK_LIST, reinterpret_cast<LPARAM>(&tap));
  };
  for (const DWORD language : {kEnglish, kGerman}) {
    SwitchTo(language);
    Sweep(
        [&] {
          const WindowsUser user({select, Click(IDM_BOOKMARK_PLAY), Click(IDM_BOOKMARK_ENQUEUE),
                                  sort, sort, Click(IDM_BOOKMARK_EDIT),
                                  Type(IDC_BOOKMARK_DESCRIPTION, L"edited"), Click(IDOK), select,
                                  Click(IDM_BOOKMARK_DELETE), Click(IDM_BOOKMARK_DELETE_DEAD)});
          bookmarks_.ShowBookmarks(parent_);
          return All();
        },
        [&] { Start(); });
  }
}

class PresetFaults : public LibraryFaults {
 protected:
  PresetFaults() {
    CreateDirectoryW(folder_.Path(L"presets").c_str(), nullptr);
    folder_.Write(L"presets\\Rock.eqf", std::string(31, 'r'));
  }
  EqualizerPresets& presets_ = Get<EqualizerPresets>(kFeatureEqualizerPresets);
};

TEST_F(PresetFaults, Reading) {
  Sweep([&] {
    presets_.ClearPresets();
    uint8_t setting[12] = {};
    wchar_t name[kMaxText] = L"";
    std::string all = std::to_string(presets_.ListPresets(folder_.path().c_str()));
    all += std::to_string(presets_.FindPreset(L"Rock"));
    all += std::to_string(presets_.ReadPreset(0, setting, folder_.path().c_str()));
    presets_.GetPresetName(0, name);
    return all + Utf8(name) + reinterpret_cast<char*>(setting);
  });
}

// Over a preset of that name, and as a new one: what is there is the old one or the new one.
TEST_F(PresetFaults, Saving) {
  for (const wchar_t* name : {L"Rock", L"New"}) {
    SwitchTo(name[0] == L'R' ? kEnglish : kGerman);
    const std::wstring file = std::wstring(L"presets\\") + name + L".eqf";
    const std::string old = name[0] == L'R' ? std::string(31, 'r') : "no file";
    std::string saved;
    Sweep(
        [&] {
          const WindowsUser user({Type(IDC_TEXT_ENTRY, name), Click(IDOK)});
          const int32_t done = presets_.SavePreset(kSetting, folder_.path().c_str(), parent_);
          const std::string now = folder_.Read(file);
          if (saved.empty()) saved = now;
          EXPECT_EQ(now, done ? saved : old);
          return std::to_string(done) + now;
        },
        [&] {
          DeleteFileW(folder_.Path(file).c_str());
          if (old.size() == 31) folder_.Write(file, old);
        });
  }
}

// Each is given out whole or not at all.
TEST_F(LibraryFaults, Skins) {
  SkinReader& skins = Get<SkinReader>(kFeatureSkinReader);
  const std::string bitmap(9000, 'x'), text = "[Text]\r\n";
  for (const wchar_t* name : {L"main.bmp", L"volume.bmp"}) folder_.Write(name, bitmap);
  folder_.Write(L"pledit.txt", text);
  folder_.Write(L"skin.zip", test::ZipBuilder()
                                 .Add({"Main.bmp", bitmap})
                                 .Add({"pledit.txt", text, false})
                                 .Add({"sub/volume.bmp", bitmap})
                                 .Bytes());
  const std::wstring archive = folder_.Path(L"skin.zip");
  Sweep([&] {
    std::string all;
    for (const int32_t file : {5, 11, 17}) {
      for (const bool zipped : {false, true}) {
        uint32_t bytes = 1;
        void* const block = zipped ? skins.ReadFromArchive(archive.c_str(), file, &bytes)
                                   : skins.ReadFromFolder(folder_.path().c_str(), file, &bytes);
        const std::string read(static_cast<char*>(block), bytes);
        EXPECT_EQ(read, !block ? "" : file == 11 ? text : bitmap);
        all += std::to_string(bytes) + " ";
        faults_.Free(block);
      }
    }
    return all;
  });
}

TEST_F(LibraryFaults, Language) {
  Sweep([&] {
    std::string all;
    for (const DWORD language : {DWORD{0x0503}, kGerman, kEnglish}) {
      SwitchTo(language);
      all += library_->Version();
    }
    return all;
  });
}

// Without its player window there is no feature 6, all others are there; and once it is unloaded,
// nothing is held that it ever took.
TEST_F(LibraryFaults, Loading) {
  others_handles_ = 4;  // two for each loading of the player's container
  Sweep(
      [&] {
        library_.emplace();
        std::string all;
        for (int32_t id = 0; id <= kFeatureVersionText; ++id) {
          if (library_->Get(id)) all += std::to_string(id) + " ";
        }
        EXPECT_TRUE(all == "1 3 4 5 6 8 9 21 " || all == "1 3 4 5 8 9 21 ") << all;
        uint8_t setting[12] = {};
        all += std::to_string(Get<EqualizerPresets>(kFeatureEqualizerPresets)
                                  .ReadPreset(0, setting, folder_.path().c_str()));
        all += library_->Version();
        library_.reset();
        return all;
      },
      [&] {
        library_.reset();
        EXPECT_EQ(faults_.Held(), "");
      });
}

}  // namespace
}  // namespace kelvo
