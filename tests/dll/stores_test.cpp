// Bookmarks, equalizer presets and skins inside the real DLL, every slot called by its number, with
// real files and windows.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <windows.h>

#include <optional>

#include "base/windows/pocketpc.h"
#include "kelvo/features.h"
#include "kelvo/types.h"
#include "tests/bookmarks/bookmark_text.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/installation_folder.h"
#include "tests/support/loaded_library.h"
#include "tests/support/raw_slot.h"
#include "tests/support/wide_text.h"
#include "tests/support/zip_builder.h"

extern "C" DWORD WINAPI KelvoFullScreenState(HWND window);

namespace kelvo {
namespace {

using test::CallSlot;
using test::DialogDriver;
using test::Utf16;
using test::Utf8;
using Text = const wchar_t*;

class StoresTest : public ::testing::Test {
 protected:
  test::InstallationFolder folder_;
  const test::LoadedLibrary library_;
};

TEST_F(StoresTest, Bookmarks) {
  void* bookmarks = library_.Get(8);
  ASSERT_TRUE(bookmarks);
  folder_.Write(L"live.ogg", "");
  const std::wstring live = folder_.Path(L"live.ogg");
  const std::string path = Utf8(live.c_str());
  EXPECT_EQ(CallSlot<int32_t>(bookmarks, 3), 0);
  EXPECT_NE((CallSlot<int32_t, Text, int32_t, Text>(bookmarks, 0, L"\\gone.ogg", 7, L"one")), 0);
  EXPECT_EQ(folder_.Read(L"bookmarks.dat"), Utf16("\\gone.ogg\r\n7\r\none\r\n"));
  CallSlot<void, int32_t, Text, int32_t, Text>(bookmarks, 1, 0, L"\\none.ogg", 8, L"two");
  wchar_t text[kMaxText];
  wchar_t description[kMaxText];
  int32_t position = 0;
  EXPECT_EQ((CallSlot<int32_t, int32_t, wchar_t*, wchar_t*, int32_t*>(bookmarks, 2, 0, text,
                                                                      description, &position)),
            0);
  EXPECT_EQ(Utf8(text) + Utf8(description) + std::to_string(position), "\\none.oggtwo8");
  CallSlot<void, Text, int32_t, Text>(bookmarks, 6, live.c_str(), 90, L"Tune");
  EXPECT_EQ(folder_.Read(L"bookmarks.dat"),
            Utf16(path + "\r\n90\r\n(Last Played) Tune\r\n\\none.ogg\r\n8\r\ntwo\r\n"));
  {
    DialogDriver driver(L"Velmora Bookmarks",
                        [](HWND dialog) { PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); });
    EXPECT_EQ((CallSlot<int32_t, void*>(bookmarks, 4, nullptr)), 0);
  }
  EXPECT_EQ((CallSlot<int32_t, wchar_t*, int32_t*>(bookmarks, 7, text, &position)), 1);
  EXPECT_EQ(Utf8(text) + std::to_string(position), path + "90");
  EXPECT_EQ(folder_.Read(L"bookmarks.dat"), Utf16("\\none.ogg\r\n8\r\ntwo\r\n"));
  CallSlot<void, uint32_t>(bookmarks, 5, 0);
}

TEST_F(StoresTest, EqualizerPresets) {
  void* presets = library_.Get(4);
  ASSERT_TRUE(presets);
  CreateDirectoryW(folder_.Path(L"presets").c_str(), nullptr);
  const HWND host =
      CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, nullptr, nullptr, nullptr, nullptr);
  const struct {
    const char* name;
    const wchar_t* typed;
    int answer;  // to the question whether to overwrite; 0 when it is not asked
    const char* setting;
    int32_t result;
    const char* saved;
  } steps[] = {
      {"cancelled", nullptr, 0, "aaaaaaaaaaa", 0, nullptr},
      {"new", L"Rock", 0, "bbbbbbbbbbb", 1, "bbbbbbbbbbb"},
      {"not overwritten", L"Rock", IDNO, "ccccccccccc", 0, "bbbbbbbbbbb"},
      {"overwritten", L"rock", IDYES, "ddddddddddd", 1, "ddddddddddd"},
      {"no name for a file", L"a?b", 0, "eeeeeeeeeee", 0, "ddddddddddd"},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.name);
    std::optional<DialogDriver> question;
    if (step.answer) {
      question.emplace(L"File Exists", [&](HWND box) {
        EXPECT_EQ(GetParent(box), host);
        wchar_t text[64] = L"";
        GetDlgItemTextW(box, 0xFFFF, text, 64);
        EXPECT_EQ(Utf8(text), "Specified preset already exists. Overwrite?");
        EXPECT_TRUE(GetDlgItem(box, IDYES) && GetDlgItem(box, IDNO));
        PostMessageW(box, WM_COMMAND, step.answer, 0);
      });
    }
    // Types a name into the dialog, or cancels it; the input panel can be reached meanwhile.
    std::optional<DialogDriver> namer;
    namer.emplace(L"Edit File Name", [&](HWND dialog) {
      wchar_t offered[64];
      GetDlgItemTextW(dialog, 1000, offered, 64);
      EXPECT_EQ(Utf8(offered), "New Preset");
      EXPECT_EQ(KelvoFullScreenState(host), SHFS_SHOWSIPBUTTON);
      if (step.typed) SetDlgItemTextW(dialog, 1000, step.typed);
      PostMessageW(dialog, WM_COMMAND, step.typed ? IDOK : IDCANCEL, 0);
    });
    EXPECT_EQ((CallSlot<int32_t, const void*, Text, void*>(presets, 1, step.setting,
                                                           folder_.path().c_str(), host)),
              step.result);
    namer.reset();
    question.reset();
    EXPECT_EQ(KelvoFullScreenState(host), SHFS_HIDESIPBUTTON);
    const std::string file = folder_.Read(L"presets\\Rock.eqf");
    EXPECT_EQ(file.size() == 31 ? file.substr(20) : "no preset",
              step.saved ? step.saved : "no preset");
  }
  DestroyWindow(host);
  EXPECT_EQ((CallSlot<int32_t, Text>(presets, 5, folder_.path().c_str())), 1);
  EXPECT_EQ((CallSlot<int32_t, Text>(presets, 0, L"ROCK")), 0);
  char setting[12] = "";
  EXPECT_EQ(
      (CallSlot<int32_t, int32_t, void*, Text>(presets, 2, 0, setting, folder_.path().c_str())), 1);
  EXPECT_STREQ(setting, "ddddddddddd");
  wchar_t name[kMaxText];
  CallSlot<void, int32_t, wchar_t*>(presets, 3, 0, name);
  EXPECT_STRCASEEQ(Utf8(name).c_str(), "Rock");
  CallSlot<void>(presets, 4);
  EXPECT_EQ((CallSlot<int32_t, Text>(presets, 0, L"Rock")), -1);
  CallSlot<void, uint32_t>(presets, 6, 0);
}

TEST_F(StoresTest, Skins) {
  void* skins = library_.Get(5);
  ASSERT_TRUE(skins);
  folder_.Write(L"pledit.txt", "[Text]\r\n");
  folder_.Write(L"skin.zip", test::ZipBuilder().Add({"Main.bmp", "BM picture"}).Bytes());
  const std::wstring archive = folder_.Path(L"skin.zip");
  const struct {
    const char* name;
    int slot;
    const wchar_t* path;
    int32_t number;
    const char* want;  // null: nothing
  } cases[] = {
      {"folder", 0, folder_.path().c_str(), 11, "[Text]\r\n"},
      {"folder lacks it", 0, folder_.path().c_str(), 5, nullptr},
      {"archive", 1, archive.c_str(), 5, "BM picture"},
      {"archive lacks it", 1, archive.c_str(), 16, nullptr},
      {"no such number", 1, archive.c_str(), 18, nullptr},
      {"no archive", 1, folder_.path().c_str(), 5, nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    uint32_t bytes = 99;
    void* block =
        CallSlot<void*, Text, int32_t, uint32_t*>(skins, c.slot, c.path, c.number, &bytes);
    EXPECT_EQ(block != nullptr, c.want != nullptr);
    EXPECT_EQ(std::string(static_cast<char*>(block), bytes), c.want ? c.want : "");
    free(block);
  }
  CallSlot<void, uint32_t>(skins, 2, 0);
}

}  // namespace
}  // namespace kelvo
