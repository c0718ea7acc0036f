// The dialog for saving a playlist, with the reference host's resources.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "entry/language/modules.h"
#include "kelvo/host_resources.h"
#include "playlist/windows/save_dialog.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/memory_files.h"
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

TEST(SaveDialog, TakesNothingFromALanguageThatHasTheSameNumbers) {
  const HMODULE host = LoadLibraryW(L"velmora.exe");
  ASSERT_TRUE(host);
  ASSERT_TRUE(LoadLanguageLibrary(0x452, true));
  MemoryFiles files;
  SaveTarget target;
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
    EXPECT_FALSE(AskWhereToSave(files, host, nullptr, &target));
  }
  EXPECT_EQ(buttons, 1);
  EXPECT_EQ(asked, "Choose a folder or enter a name first.");
  LoadLanguageLibrary(0, true);
  FreeLibrary(host);
}

}  // namespace
}  // namespace kelvo
