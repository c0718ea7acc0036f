// The catalog in languages whose libraries are not complete, or not right.
#include "tests/catalog/catalog_window_fixture.h"
#include "tests/catalog/stylus.h"
#include "tests/language/test_resources.h"

namespace kelvo {
namespace {

using test::Popup;
using test::Stylus;
using test::Utf8;

constexpr uint32_t kPartial = 0x0452;
constexpr uint32_t kHostile = 0x083C;

class CatalogLanguageTest : public test::CatalogWindowTest {
 protected:
  void TearDown() override {
    LoadLanguageLibrary(0, true);
    CatalogWindowTest::TearDown();
  }
  std::string Tab(int page) {
    const HWND tabs =
        reinterpret_cast<HWND>(SendMessageW(driver_.Sheet(), PSM_GETTABCONTROL, 0, 0));
    wchar_t text[100] = L"";
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 100;
    SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(page), reinterpret_cast<LPARAM>(&item));
    return Utf8(text);
  }
  std::string Column(int column) {
    wchar_t text[100] = L"";
    LVCOLUMNW heading = {};
    heading.mask = LVCF_TEXT;
    heading.pszText = text;
    heading.cchTextMax = 100;
    SendMessageW(driver_.List(), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                 reinterpret_cast<LPARAM>(&heading));
    return Utf8(text);
  }
  // The question about the selected playlist; answered with No.
  std::string Question() {
    driver_.Post(ID_DELETE_FILE);
    const HWND box = driver_.WaitForWindow(L"Delete File");
    const std::string text = driver_.BoxText(box);
    driver_.Answer(box, IDNO);
    return text;
  }
};

TEST_F(CatalogLanguageTest, WhatIsTranslatedIsShownTheRestIsEnglish) {
  ASSERT_TRUE(LoadLanguageLibrary(kPartial, true));
  driver_.sheet_caption = L"Trefnydd";
  ShowAfterScan(0, [&] {
    EXPECT_EQ(Tab(0) + "|" + Tab(1) + "|" + Tab(2), "Playlist Catalog|Cyfryngau|Curr. Playlist");
    driver_.Select(0);
    EXPECT_EQ(Question(), "Dileu \"\\Lists\\a.m3u\" am byth?");
    Stylus stylus(driver_);
    stylus.Tap(driver_.List(), stylus.PartOf(driver_.List(), 0, LVHT_ONITEMLABEL), WM_RBUTTONDOWN,
               WM_RBUTTONUP);
    const Popup popup(driver_);
    EXPECT_EQ(popup.Items(), "Rename file 40021\nDileu 40023\n");
    popup.Choose(0);
    driver_.Answer(L"Golygu Enw Ffeil", IDCANCEL);

    driver_.GoTo(1);  // the menu is there without its images: both are the built-in ones
    EXPECT_EQ(SendMessageW(driver_.MenuBar(), TB_BUTTONCOUNT, 0, 0), 6);
    const HMENU orders =
        reinterpret_cast<HMENU>(SendMessageW(driver_.MenuBar(), SHCMBM_GETSUBMENU, 0, ID_GROUPING));
    EXPECT_EQ(GetMenuItemCount(orders), 7);

    AddLists();  // the page's dialog is the translated one and works
    EXPECT_EQ(driver_.Text(driver_.Page(), IDC_LANGUAGE), "Cymraeg");
    EXPECT_EQ(driver_.Items(), kAllSongs);
    EXPECT_EQ(Column(0) + "|" + Column(1), "Teitl|Artist");
    driver_.Do(ID_PLAY);

    driver_.GoTo(1);
    driver_.Do(ID_FIRST_ORDER + 5);
    TreeView_SelectItem(driver_.Tree(), driver_.Node("Sine\\One"));
    driver_.files.Find("\\Music\\one.mp3")->locked = true;
    driver_.Post(ID_EDIT_TAG);
    const HWND editor = driver_.WaitForWindow(L"Edit Media Description");
    PostMessageW(editor, WM_COMMAND, IDC_TAG_UPDATE, 0);
    const HWND box = driver_.WaitForWindow(L"");
    EXPECT_EQ(driver_.BoxText(box), "Gwall!");
    driver_.Answer(box, IDOK);
    driver_.Answer(editor, IDCANCEL);
  });
  EXPECT_EQ(driver_.sent(),
            "clear;\\Music\\one.mp3;\\Music\\three.mp3;\\Music\\two.mp3;end;1537;1536;");
}

TEST_F(CatalogLanguageTest, ThePagesKeepTheirLanguageWhileTheSheetIsOpen) {
  ASSERT_TRUE(LoadLanguageLibrary(kPartial, true));
  driver_.sheet_caption = L"Trefnydd";
  driver_.Show([&] {
    driver_.Run([] { LoadLanguageLibrary(0, true); });
    driver_.GoTo(2);  // made only now, of a template in the library
    EXPECT_EQ(driver_.Text(driver_.Page(), IDC_LANGUAGE), "Cymraeg");
  });
  EXPECT_FALSE(GetModuleHandleW(L"kv_mui.0452.dll"));
}

TEST_F(CatalogLanguageTest, AWrongFormatIsReplacedByTheBuiltInText) {
  ASSERT_TRUE(LoadLanguageLibrary(kHostile, true));
  driver_.sheet_caption = L"1234567890123456789012345678901234567890123456789012345678901234";
  ShowAfterScan(0, [&] {
    driver_.Select(1);
    EXPECT_EQ(Question(), "Do you want to permanently delete \"\\Lists\\b.pls\"?");
  });
  LoadLanguageLibrary(0, true);
  driver_.sheet_caption = L"Playlist Organizer";
  driver_.Show([&] { EXPECT_EQ(Tab(1), "Media Catalog"); });
}

}  // namespace
}  // namespace kelvo
