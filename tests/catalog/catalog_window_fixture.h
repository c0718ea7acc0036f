#pragma once

#include <malloc.h>

#include <algorithm>

#include "tests/catalog/sheet_driver.h"

namespace kelvo::test {

// The catalog with its three songs and two playlists, used from a second thread.
class CatalogWindowTest : public testing::Test {
 protected:
  static constexpr char kLists[] = "\\Lists\\a.m3u\n\\Lists\\b.pls\n";
  static constexpr char kAllSongs[] = "One x\nthree.mp3 x\nTwo x\n";

  void TearDown() override {
    EXPECT_EQ(driver_.files.open_now, 0);
    EXPECT_EQ(_heapchk(), _HEAPOK);
  }
  long Scans() {
    return std::count(driver_.files.log.begin(), driver_.files.log.end(), "list \\*.*");
  }
  // The first showing's scan without the time that it waits; then the page.
  void ShowAfterScan(int page, const std::function<void()>& use) {
    driver_.Show([&] {
      ScanNow();
      ASSERT_TRUE(WaitFor([&] { return driver_.Items() == kLists; }));
      driver_.GoTo(page);
      use();
    });
  }
  void ScanNow() {
    driver_.Run([&] { SendMessageW(driver_.Page(), WM_TIMER, 1, 0); });
    driver_.Settle();
  }
  // The playlists' songs become the current playlist, whose page comes up.
  void AddLists() {
    driver_.GoTo(0);
    driver_.Do(ID_CHECK_ALL);
    driver_.Do(ID_ADD_CHECKED);
    driver_.GoTo(2);
  }

  SheetDriver driver_;
};

}  // namespace kelvo::test
