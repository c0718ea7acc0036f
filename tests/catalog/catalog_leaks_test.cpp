// What a hundred openings leave behind: nothing.
#include "tests/catalog/catalog_window_fixture.h"
#include "tests/support/owned_objects.h"

namespace kelvo {
namespace {

using test::WaitFor;

class CatalogLeaksTest : public test::CatalogWindowTest {
 protected:
  struct Owned {
    DWORD gdi, user;
    size_t heap;
  };
  Owned Count() {
    driver_.files.log.clear();
    driver_.files.log.shrink_to_fit();
    return {test::GdiObjects(), test::UserObjects(), test::HeapBytes()};
  }
  // The editor and the save dialog are opened and closed, too.
  void OpenEverything() {
    driver_.Show([&] {
      driver_.GoTo(1);
      driver_.Do(ID_FIRST_ORDER + 5);
      TreeView_SelectItem(driver_.Tree(), driver_.Node("Sine\\One"));
      driver_.Post(ID_EDIT_TAG);
      driver_.Answer(L"Edit Media Description", IDCANCEL);
      driver_.GoTo(2);
      driver_.Post(ID_SAVE_PLAYLIST);
      const HWND dialog = driver_.WaitForWindow(L"Save Playlist");
      driver_.Settle();
      driver_.Answer(dialog, IDCANCEL);
    });
  }
  void OpenPages() {
    driver_.Show([&] {
      driver_.GoTo(1);
      driver_.GoTo(2);
    });
  }
};

TEST_F(CatalogLeaksTest, HundredOpeningsLeaveNothingBehind) {
  ShowAfterScan(1, [] {});
  for (int i = 0; i < 3; ++i) OpenEverything();  // what the system keeps from the first times on
  const Owned before = Count();
  for (int i = 0; i < 80; ++i) OpenPages();
  for (int i = 0; i < 20; ++i) OpenEverything();
  const Owned after = Count();
  EXPECT_LE(after.gdi, before.gdi + 5);
  EXPECT_LE(after.user, before.user + 5);
  EXPECT_LE(after.heap, before.heap + 4000) << "40 bytes an opening; the heaps' own order moves";

  // The counters see what they are to see.
  const HMENU menu = CreateMenu();
  const HICON icon = CopyIcon(LoadIconW(nullptr, IDI_APPLICATION));
  EXPECT_EQ(test::UserObjects(), after.user + 2);
  DestroyMenu(menu);
  DestroyIcon(icon);
}

}  // namespace
}  // namespace kelvo
