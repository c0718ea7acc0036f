#include <windows.h>

#include <gtest/gtest.h>
#include <objbase.h>

#include "base/windows/player_control.h"

extern "C" {
__declspec(dllimport) BOOL WINAPI AtlAxWinInit();
__declspec(dllimport) HRESULT WINAPI AtlAxGetControl(HWND, IUnknown**);
}

namespace kelvo {
namespace {

HWND MakeWindow(const wchar_t* class_name, const wchar_t* text) {
  return CreateWindowExW(0, class_name, text, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

class ContainerWindow : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    ASSERT_TRUE(AtlAxWinInit());
    ASSERT_TRUE(AtlAxWinInit()) << "twice does no harm";
  }
  void TearDown() override { CoUninitialize(); }
};

TEST_F(ContainerWindow, HostsWhatItsTextNames) {
  const struct {
    const char* name;
    const wchar_t* class_name;
    const wchar_t* text;
    bool window;
    HRESULT control;
  } cases[] = {
      {"the player", L"AtlAxWin", kPlayerClassText, true, S_OK},
      {"nothing", L"AtlAxWin", L"", true, E_FAIL},
      {"no class id", L"AtlAxWin", L"{22D6F312", false, E_FAIL},
      {"unknown class", L"AtlAxWin", L"{00000001-0002-0003-0405-060708090A0B}", false, E_FAIL},
      {"another window", L"Static", kPlayerClassText, true, E_FAIL},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const HWND window = MakeWindow(c.class_name, c.text);
    EXPECT_EQ(window != nullptr, c.window);
    IUnknown* control = reinterpret_cast<IUnknown*>(1);
    EXPECT_EQ(AtlAxGetControl(window, &control), c.control);
    EXPECT_EQ(control != nullptr, c.control == S_OK);
    EXPECT_EQ(AtlAxGetControl(window, nullptr), E_POINTER);
    if (window) DestroyWindow(window);
    if (control) {
      EXPECT_EQ(control->Release(), 0u) << "the window let go of it";
    }
  }
}

}  // namespace
}  // namespace kelvo
