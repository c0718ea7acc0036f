// The dialog for saving a playlist, with the reference host's resources.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "entry/language/modules.h"
#include "kelvo/host_resources.h"
#include "playlist/windows/save_dialog.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/memory_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::DialogDriver;
using test::MemoryFiles;
using test::Utf8;

// It comes up a little after its dialog; the test's own time limit is the bound.
HWND WaitForMenuBar(HWND dialog) {
  for (;; Sleep(10)) {
    HWND bar = nullptr;
    while ((bar = FindWindowExW(nullptr, bar, L"KelvoMenuBar", nullptr)) != nullptr) {
      if (GetWindow(bar, GW_OWNER) == dialog && IsWindowVisible(bar)) return bar;
    }
  }
}

// Fills itself some time after the dialog has appeared.
HTREEITEM WaitForRoot(HWND tree) {
  HTREEITEM root = nullptr;
  while (!(root = TreeView_GetRoot(tree)) || !TreeView_GetChild(tree, root)) Sleep(10);
  return root;
}

TEST(SaveDialog, IsLaidOutAsHostsReadItAndOpensARootWithPlaylistsOnly) {
  const HMODULE host = LoadLibraryW(L"velmora.exe");
  ASSERT_TRUE(host);
  MemoryFiles files;
  files.Put("\\top.m3u", "");
  SaveDialogState state;
  const auto field = [&](size_t word) {
    return test::RawField<HWND>(&state, word * sizeof(void*));
  };
  const auto flag = [&] { return test::RawField<int32_t>(&state, 4 * sizeof(void*)); };
  const auto text = [&](size_t index) {
    return Utf8(reinterpret_cast<const wchar_t*>(reinterpret_cast<const char*>(&state) +
                                                 4 * sizeof(void*) + 4) +
                index * kTextCapacity);
  };
  for (const int command : {KELVO_HOST_SAVE_BUTTON, IDCANCEL}) {
    state = {};
    {
      DialogDriver user(L"Save Playlist", [&](HWND dialog) {
        const HWND tree = GetDlgItem(dialog, KELVO_HOST_SAVE_TREE);
        const HTREEITEM root = WaitForRoot(tree);
        EXPECT_TRUE(TreeView_GetItemState(tree, root, TVIS_EXPANDED) & TVIS_EXPANDED);
        RECT place;
        EXPECT_TRUE(TreeView_GetItemRect(tree, TreeView_GetChild(tree, root), &place, FALSE))
            << "to be seen";
        SetDlgItemTextW(dialog, KELVO_HOST_SAVE_NAME, L"mix");
        EXPECT_EQ(field(0), reinterpret_cast<HWND>(host));
        EXPECT_EQ(field(1), tree);
        EXPECT_EQ(field(2), dialog);
        EXPECT_EQ(field(3), WaitForMenuBar(dialog));
        EXPECT_EQ(flag(), 0);
        EXPECT_EQ(text(0) + "," + text(1) + "," + text(2), "\\mix.m3u,,mix");
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(command), 0);
      });
      const bool saves = command == KELVO_HOST_SAVE_BUTTON;
      EXPECT_EQ(AskWhereToSave(files, host, nullptr, &state), saves);
      EXPECT_EQ(flag(), saves ? 1 : 0);
      EXPECT_EQ(text(0), saves ? "\\mix.m3u" : "");
      for (size_t word : {1, 2, 3}) EXPECT_EQ(field(word), nullptr);
    }
  }
  FreeLibrary(host);
}

TEST(SaveDialog, TakesNothingFromALanguageThatHasTheSameNumbers) {
  const HMODULE host = LoadLibraryW(L"velmora.exe");
  ASSERT_TRUE(host);
  ASSERT_TRUE(LoadLanguageLibrary(0x503, true));
  MemoryFiles files;
  SaveDialogState state;
  std::string asked;
  LRESULT buttons = 0;
  {
    // The caption is the host's.
    DialogDriver user(L"Save Playlist", [&](HWND dialog) {
      buttons = SendMessageW(WaitForMenuBar(dialog), TB_BUTTONCOUNT, 0, 0);
      PostMessageW(dialog, WM_COMMAND, KELVO_HOST_SAVE_BUTTON, 0);
      HWND box = dialog;
      while (box == dialog || !IsWindowVisible(box)) {
        Sleep(10);
        box = GetLastActivePopup(dialog);
      }
      wchar_t text[kTextCapacity] = L"";
      GetDlgItemTextW(box, 0xFFFF, text, kTextCapacity);
      asked = Utf8(text);
      SendMessageW(box, WM_COMMAND, IDOK, 0);
      PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_FALSE(AskWhereToSave(files, host, nullptr, &state));
  }
  EXPECT_EQ(buttons, 1);
  EXPECT_EQ(asked, "Choose a folder or enter a name first.");
  LoadLanguageLibrary(0, true);
  FreeLibrary(host);
}

}  // namespace
}  // namespace kelvo
