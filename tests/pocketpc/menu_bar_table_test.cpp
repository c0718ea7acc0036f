#include <gtest/gtest.h>

#include "base/windows/pocketpc.h"
#include "pocketpc/aygshell/menu_bar_table.h"
#include "tests/support/faults.h"

namespace kelvo {
namespace {

TEST(MenuBarTable, ReadsWordsAndRefusesEveryTruncation) {
  const uint8_t bytes[] = {50,   0,    2,    0,                                                  //
                           0xFE, 0xFF, 0x40, 0x9C, 4, 0,    8,    0,    0xF4, 1, 0, 0, 1,    0,  //
                           5,    0,    0x53, 0x9C, 4, 0xFF, 0xE3, 0xFF, 0,    0, 0, 0, 0xFF, 0xFF};
  MenuBarTable table;
  table.menu = 7;
  for (size_t size = 0; size < sizeof(bytes); ++size) {
    EXPECT_FALSE(ReadMenuBarTable(bytes, size, &table)) << size;
  }
  EXPECT_FALSE(ReadMenuBarTable(nullptr, 4, &table));
  EXPECT_EQ(table.menu, 7);
  EXPECT_EQ(table.count, 0u);

  ASSERT_TRUE(ReadMenuBarTable(bytes, sizeof(bytes), &table));
  EXPECT_EQ(table.menu, 50);
  ASSERT_EQ(table.count, 2u);
  const MenuBarButton& label = table.buttons[0];
  EXPECT_FALSE(label.HasImage());
  EXPECT_EQ(label.command, 40000);
  EXPECT_EQ(label.state, 4);
  EXPECT_EQ(label.style, 8);
  EXPECT_EQ(label.text, 500);
  EXPECT_EQ(label.popup, 1);
  const MenuBarButton& image = table.buttons[1];
  EXPECT_EQ(image.image, 5);
  EXPECT_EQ(image.state, 4);
  EXPECT_EQ(image.style, 3) << "bits that the device does not know are dropped";
  EXPECT_FALSE(image.HasPopup());
}

TEST(MenuBarTable, CapsTheNumberOfButtons) {
  uint8_t bytes[4 + 33 * 14] = {0, 0, 33, 0};
  MenuBarTable table;
  EXPECT_FALSE(ReadMenuBarTable(bytes, sizeof(bytes), &table));
  bytes[2] = 32;
  EXPECT_TRUE(ReadMenuBarTable(bytes, sizeof(bytes), &table));
}

TEST(MenuBar, IsRefusedWhenMemoryIsOut) {
  const HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 100, 100, nullptr,
                                      nullptr, nullptr, nullptr);
  ASSERT_TRUE(window);
  SHMENUBARINFO info = {};
  info.cbSize = sizeof(info);
  info.hwndParent = window;
  info.dwFlags = SHCMBF_EMPTYBAR;
  BOOL made = FALSE;
  for (long i = 0; !made; ++i) {
    ASSERT_LT(i, 100);
    const test::HeapFaults faults(i);
    made = SHCreateMenuBar(&info);
    EXPECT_NE(made != FALSE, faults.triggered());
    EXPECT_EQ(SHFindMenuBar(window), info.hwndMB);
  }
  DestroyWindow(window);
  EXPECT_EQ(SHFindMenuBar(window), nullptr);
}

}  // namespace
}  // namespace kelvo
