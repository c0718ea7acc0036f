// The bookmarks window and the dialog for saving a playlist exclude each other.
#include "bookmarks/bookmarks_feature.h"
#include "bookmarks/windows/bookmarks_window.h"
#include "tests/catalog/catalog_window_fixture.h"

namespace kelvo {
namespace {

using test::WaitFor;

class Folder final : public InstallFolder {
 public:
  void Read(wchar_t (&folder)[kTextCapacity]) noexcept override {
    CopyWide(folder, kTextCapacity, L"\\V");
  }
};

class FeatureDialogsTest : public test::CatalogWindowTest {
 protected:
  Folder folder_;
  BookmarksShell shell_;
  BookmarksFeature bookmarks_{driver_.files, folder_, &shell_};
};

TEST_F(FeatureDialogsTest, OnlyOneIsOpenAtATime) {
  ShowAfterScan(2, [&] {
    AddLists();
    for (int round = 0; round < 2; ++round) {
      int32_t result = -1;
      driver_.Start([&] { result = bookmarks_.ShowBookmarks(driver_.parent()); });
      const HWND window = driver_.WaitForWindow(L"Velmora Bookmarks");
      driver_.Do(ID_SAVE_PLAYLIST);  // comes back: nothing has opened
      EXPECT_EQ(result, -1);
      driver_.Answer(window, IDOK);
      EXPECT_EQ(result, 0);

      driver_.Post(ID_SAVE_PLAYLIST);
      const HWND dialog = driver_.WaitForWindow(L"Save Playlist");
      driver_.Run([&] { EXPECT_EQ(bookmarks_.ShowBookmarks(driver_.parent()), 1); });
      EXPECT_TRUE(IsWindowEnabled(dialog));
      driver_.Answer(dialog, IDCANCEL);
    }
  });
}

}  // namespace
}  // namespace kelvo
