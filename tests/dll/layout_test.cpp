// What hosts and external libraries read in the feature objects inside the real library: every
// field by its place, in words of 4 bytes on 32 bits.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "kelvo/bookmarks.h"
#include "kelvo/effects_processor.h"
#include "kelvo/equalizer_presets.h"
#include "kelvo/features.h"
#include "tests/oracles/effects_model.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/installation_folder.h"
#include "tests/support/loaded_library.h"
#include "tests/support/raw_slot.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::RawField;

constexpr size_t kWord = sizeof(void*);

class LayoutTest : public ::testing::Test {
 protected:
  template <class Feature>
  Feature* Get(int32_t id) {
    object_ = library_.Get(id);
    return static_cast<Feature*>(object_);
  }
  int32_t Number(size_t at) const { return RawField<int32_t>(object_, at); }
  HWND Window(size_t at) const { return RawField<HWND>(object_, at); }
  static std::string Text(const void* object, size_t at) {
    const wchar_t* text = RawField<const wchar_t*>(object, at);
    return text ? test::Utf8(text) : "null";
  }

  test::InstallationFolder folder_;
  const test::LoadedLibrary library_;
  void* object_ = nullptr;
};

TEST_F(LayoutTest, OfThePresets) {
  auto* presets = Get<EqualizerPresets>(kFeatureEqualizerPresets);
  constexpr size_t kCount = 201 * kWord;
  static_assert(kWord != 4 || kCount == 804);
  EXPECT_EQ(Number(kCount), 0);
  CreateDirectoryW(folder_.Path(L"presets").c_str(), nullptr);
  folder_.Write(L"presets\\a.eqf", "");
  presets->ListPresets(folder_.path().c_str());
  EXPECT_EQ(Number(kCount), 1);
  EXPECT_EQ(Text(object_, kWord) + Text(object_, 2 * kWord) + Text(object_, 200 * kWord),
            "a.eqfnullnull");
  presets->ClearPresets();
  EXPECT_EQ(Text(object_, kWord), "null");
  EXPECT_EQ(Number(kCount), 0);
}

TEST_F(LayoutTest, OfTheBookmarks) {
  auto* bookmarks = Get<Bookmarks>(kFeatureBookmarks);
  constexpr size_t kWindow = kWord, kList = 2 * kWord, kBar = 3 * kWord, kItems = 4 * kWord,
                   kCount = 5 * kWord, kCapacity = kCount + 4, kText = kCount + 8,
                   kColumn = kText + 48, kDirection = kColumn + 4;
  static_assert(kWord != 4 || (kText == 28 && kColumn == 76 && kDirection == 80));
  const auto item = [&](size_t index) {
    return RawField<const char*>(object_, kItems) + index * 3 * kWord;
  };
  for (size_t at : {kWindow, kList, kBar, kItems}) EXPECT_EQ(Window(at), nullptr) << at;
  EXPECT_EQ(Number(kCapacity) + Number(kColumn), 0);
  EXPECT_EQ(Number(kDirection), 1);
  for (int32_t i = 0; i < 51; ++i) {
    EXPECT_NE(bookmarks->AddBookmark(L"p", i, L"d"), 0);
    EXPECT_EQ(Number(kCount), i + 1);
    EXPECT_EQ(Number(kCapacity), i < 50 ? 50 : 100);
  }
  folder_.Write(L"live", "");
  const std::wstring live = folder_.Path(L"live");
  bookmarks->SetLastPlayed(live.c_str(), 9, L"T");
  EXPECT_EQ(Text(item(0), 0), test::Utf8(live.c_str()));
  EXPECT_EQ(Text(item(0), kWord) + Text(item(51), 0), "(Last Played) Tp");
  EXPECT_EQ(RawField<int32_t>(item(51), 2 * kWord), 50);
  EXPECT_EQ(bookmarks->TakeLastPlayed(nullptr, nullptr), 1);
  EXPECT_EQ(Number(kCount), 51);
  EXPECT_EQ(Text(item(51), 0) + Text(item(51), kWord), "nullnull") << "the freed slot is zero";
  EXPECT_EQ(RawField<int32_t>(item(51), 2 * kWord), 0);
  {
    const test::DialogDriver driver(L"Velmora Bookmarks", [&](HWND dialog) {
      EXPECT_EQ(Window(kWindow), dialog);
      EXPECT_EQ(Window(kList), GetDlgItem(dialog, 1013));
      EXPECT_EQ(GetWindow(Window(kBar), GW_OWNER), dialog);
      NMLISTVIEW click = {{Window(kList), 1013, LVN_COLUMNCLICK}, -1, 1, 0, 0, 0, {}, 0};
      for (int32_t direction : {1, -1}) {
        SendMessageW(dialog, WM_NOTIFY, 1013, reinterpret_cast<LPARAM>(&click));
        EXPECT_EQ(Number(kColumn), 1);
        EXPECT_EQ(Number(kDirection), direction);
      }
      wchar_t text[8];
      LVITEMW time = {};
      time.iSubItem = 1;
      time.pszText = text;
      time.cchTextMax = 8;
      SendMessageW(Window(kList), LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&time));
      EXPECT_STREQ(
          static_cast<const wchar_t*>(static_cast<void*>(static_cast<char*>(object_) + kText)),
          L"0:50");
      PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    });
    EXPECT_EQ(bookmarks->ShowBookmarks(nullptr), 0);
  }
  for (size_t at : {kWindow, kList, kBar}) EXPECT_EQ(Window(at), nullptr) << at;
}

TEST_F(LayoutTest, OfTheEffects) {
  auto* effects = Get<EffectsProcessor>(kFeatureEffects);
  test::ReferenceEffects reference;
  const char* const fields = static_cast<const char*>(object_) + kWord;
  EXPECT_EQ(test::DifferingOffset(fields, reference), 0u);
  const int32_t sliders[10] = {0, 14, 27, 3, 20, 9, 26, 1, 13, 15};
  effects->SetEqualizer(3, sliders);
  reference.SetEqualizer(3, sliders);
  effects->SetBassMode(4);
  reference.SetBassMode(4);
  int16_t block[200], want[200];
  for (int i = 0; i < 200; ++i) block[i] = want[i] = static_cast<int16_t>(i * i * 7);
  int16_t* samples = block;
  for (const int32_t bytes : {4, 400, 252}) {
    EXPECT_EQ(effects->ProcessEqualizer(&samples, bytes), bytes);
    reference.ProcessEqualizer(want, bytes);
    effects->ProcessBass(&samples, bytes);
    reference.ProcessBass(want, bytes);
    EXPECT_EQ(test::DifferingOffset(fields, reference), 0u);
    EXPECT_EQ(memcmp(block, want, sizeof(want)), 0);
  }
  effects->EnableEqualizer(0);
  reference.enabled = 0;
  EXPECT_EQ(test::DifferingOffset(fields, reference), 0u);
  // Words are as wide as pointers, which begin at a multiple of their size.
  constexpr size_t kTables = kWord == 4 ? 712 : 720;
  EXPECT_EQ(RawField<const int32_t*>(object_, kTables)[29], -13245);
  EXPECT_EQ(RawField<const int32_t*>(object_, kTables + kWord)[3], 263966111);
  EXPECT_EQ(Number(kTables + 2 * kWord), 0) << "no external library for this processor";
  for (size_t word : {3, 4, 5}) EXPECT_EQ(Window(kTables + word * kWord), nullptr);
  int32_t middle[10];
  for (int32_t& slider : middle) slider = 14;
  effects->SetEqualizer(14, middle);
  effects->SetBassMode(0);
}

}  // namespace
}  // namespace kelvo
