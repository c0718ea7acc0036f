// The list as its user fills, orders, searches and reads it; and the player's texts.
#include <set>

#include "host/player/settings.h"
#include "host/res/dialog_ids.h"
#include "host/text.h"
#include "host/texts.h"
#include "tests/host/windows/player_driver.h"
#include "tests/support/installation_folder.h"
#include "tests/support/language_value.h"
#include "tests/support/wide_text.h"

namespace velmora::test {
namespace {

using kelvo::test::User;

class PlayerList : public testing::Test {
 protected:
  PlayerList() {
    UseSink(L"silence", false);
    folder_.Write(L"list.m3u", "track_10.ogg\r\ntrack_2.ogg\r\n" + Here(L"tone_8000_stereo.ogg") +
                                   "\r\n" + Here(L"sample.ogg") + "\r\n");
    player_.emplace(PlayerOptions{{folder_.Path(L"list.m3u")}, L"", folder_.Path(L"session")});
    EXPECT_TRUE(player_->WaitForSong("3. "));
  }
  static std::string Here(const wchar_t* name) {
    wchar_t full[MAX_PATH];
    GetFullPathNameW(Media(name).c_str(), MAX_PATH, full, nullptr);
    return kelvo::test::Utf8(full);
  }
  // The names of the tracks, as they are kept.
  std::string Names() {
    player_->Leave();
    std::string names;
    for (const std::string& track : ParseSession(folder_.Read(L"session")).tracks) {
      names += track.substr(track.find_last_of('\\') + 1) + " ";
    }
    return names;
  }

  const kelvo::test::InstallationFolder folder_;
  std::optional<PlayerDriver> player_;
};

TEST_F(PlayerList, IsSortedAndKeepsWhatIsSelected) {
  player_->Click(player_->playlist(), {60, 40});  // track_2
  player_->Command(kCommandSortName);
  EXPECT_TRUE(player_->WaitForSong("2. ")) << player_->Title();
  player_->Command(kCommandSortReverse);
  EXPECT_TRUE(player_->WaitForSong("3. "));
  player_->Command(kCommandRemoveSelected);
  EXPECT_EQ(Names(), "track_10.ogg tone_8000_stereo.ogg sample.ogg ");
}

TEST_F(PlayerList, JumpsToWhatIsSearched) {
  player_->Start(kCommandJump);
  const HWND dialog = player_->user().WaitForWindow(L"Jump to file");
  const HWND list = GetDlgItem(dialog, CONTROL_FOUND);
  const HWND field = GetDlgItem(dialog, CONTROL_SEARCH);
  EXPECT_EQ(ListView_GetItemCount(list), 4);
  EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_SELECTED), 2) << "what plays";
  SetWindowTextW(field, L"nothing like it");
  EXPECT_EQ(ListView_GetItemCount(list), 0);
  EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, IDOK)));
  SetWindowTextW(field, L"OGG e");  // in the names of two
  EXPECT_EQ(ListView_GetItemCount(list), 2);
  player_->Key(field, VK_DOWN);
  player_->user().Settle();
  EXPECT_EQ(player_->user().Cell(list, 1, 0).substr(0, 3), "4. ");
  player_->user().Answer(dialog, IDOK);
  EXPECT_TRUE(player_->WaitForSong("4. The Ring Buffers"));
}

TEST_F(PlayerList, AnEntryHasItsOwnMenu) {
  RECT place = Place(player_->playlist());
  const LPARAM fourth = MAKELPARAM(place.left + 60, place.top + 66);
  PostMessageW(player_->playlist(), WM_CONTEXTMENU, 0, fourth);
  const std::string items = player_->user().MenuItems();
  EXPECT_EQ(items.substr(0, items.find('\t')),
            "Play " + std::to_string(kCommandEntryPlay) + "\nFile information...");
  player_->user().ChooseMenuItem(1);
  const HWND dialog = player_->user().WaitForWindow(L"File information");
  const char* const wanted[] = {"Eight Bars", "The Ring Buffers", "", "", "0:08", "Ogg Vorbis, 44"};
  for (int i : {0, 1, 4, 5}) {
    EXPECT_EQ(User::Text(dialog, CONTROL_INFO_VALUES + i).find(wanted[i]), 0u) << i;
  }
  EXPECT_EQ(User::Text(dialog, CONTROL_INFO_VALUES + 6), Here(L"sample.ogg"));
  EXPECT_EQ(User::Text(dialog, CONTROL_INFO_LABELS), "Title");
  player_->user().Answer(dialog, IDCANCEL);
  PostMessageW(player_->main(), WM_CONTEXTMENU, 0, MAKELPARAM(place.left + 60, place.top - 200));
  EXPECT_EQ(player_->user().MenuItems().find("Open files..."), 0u);
  player_->user().LeaveMenu();
}

// What is shown while the mouse rests on a point of the skin; nothing: "".
std::wstring TipAt(HWND window, Point at) {
  HWND tips = nullptr;
  do {
    tips = FindWindowExW(nullptr, tips, TOOLTIPS_CLASSW, nullptr);
  } while (tips && GetWindow(tips, GW_OWNER) != window);
  wchar_t text[80] = L"";
  TTHITTESTINFOW hit = {};
  hit.hwnd = window;
  hit.pt = {at.x, at.y};
  hit.ti.cbSize = TTTOOLINFOW_V2_SIZE;
  hit.ti.lpszText = text;
  if (SendMessageW(tips, TTM_HITTESTW, 0, reinterpret_cast<LPARAM>(&hit))) {
    SendMessageW(tips, TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&hit.ti));
  }
  return text;
}

TEST_F(PlayerList, ButtonsHaveTipsInTheUsersLanguage) {
  const kelvo::test::LanguageValue value;
  const Point play = {50, 97}, button = {25, 95};
  EXPECT_EQ(TipAt(player_->main(), play), L"Play");
  EXPECT_EQ(TipAt(player_->main(), {5, 40}), L"");
  EXPECT_EQ(TipAt(player_->equalizer(), {27, 24}), L"Equalizer on or off");
  EXPECT_EQ(TipAt(player_->playlist(), button), L"Add");
  player_->Drag(player_->playlist(), {270, 111}, {270, 111 + 29});
  EXPECT_EQ(TipAt(player_->playlist(), button), L"") << "it has moved";
  EXPECT_EQ(TipAt(player_->playlist(), {button.x, button.y + 29}), L"Add");
  player_->Command(kCommandLanguage + 1);
  EXPECT_EQ(TipAt(player_->main(), play), L"Abspielen");
  player_->Command(kCommandLanguage);
  player_->Command(kCommandShade);
  EXPECT_EQ(TipAt(player_->main(), play), L"");
  player_->Command(kCommandDoubleSize);
  EXPECT_EQ(TipAt(player_->main(), {250 * 2, 7 * 2}), L"Minimise");
}

// The values that a text asks for, in order.
std::string Asked(const std::wstring& text) {
  std::string asked;
  for (size_t at = 0; (at = text.find(L"%s", at)) != std::wstring::npos; at += 2) asked += "s";
  return asked;
}

TEST(PlayerTexts, EveryLanguageHasEveryText) {
  EXPECT_EQ(Text(TEXT_HINT_SEEK, {L"%s", L"2"}), L"Seek to: %s/2");
  EXPECT_EQ(WithKeys(TEXT_EXIT, L"Alt+F4"), L"Exit\tAlt+F4");
  for (const LANGID language : FindLanguages()) {
    for (int id = TEXT_FIRST; id <= TEXT_LAST; ++id) {
      const std::wstring text = TextIn(language, id);
      EXPECT_FALSE(text.empty()) << language << " " << id;
      EXPECT_EQ(Asked(text), Asked(TextIn(kEnglish, id))) << language << " " << id;
    }
  }
}

// What a control shows, and what it would need for that.
void ExpectFits(HWND control) {
  wchar_t kind[32];
  GetClassNameW(control, kind, 32);
  if (lstrcmpiW(kind, L"STATIC") != 0 && lstrcmpiW(kind, L"BUTTON") != 0) return;
  const std::wstring text = FromUtf8(User::Text(control));
  RECT room, needed = {};
  GetClientRect(control, &room);
  const HDC dc = GetDC(control);
  const auto font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
  const HGDIOBJ before = SelectObject(dc, font);
  DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(dc, before);
  ReleaseDC(control, dc);
  EXPECT_LE(needed.right, room.right) << User::Text(control);
}

TEST(PlayerTexts, DialogsAreInTheChosenLanguageAndFit) {
  kelvo::test::LanguageValue value;
  UseSink(L"silence", false);
  const kelvo::test::InstallationFolder folder;
  PlayerDriver player({{Media(L"sample.ogg")}, L"", folder.Path(L"session")});
  const std::vector<LANGID> languages = FindLanguages();
  std::set<std::wstring> captions;
  for (size_t i = 0; i <= languages.size(); ++i) {
    const size_t place = i % languages.size();  // ends with English
    player.Command(kCommandLanguage + static_cast<int>(place));
    for (const auto& [command, caption] : {std::pair{kCommandJump, TEXT_CAPTION_JUMP},
                                           std::pair{kCommandEntryInfo, TEXT_CAPTION_INFO}}) {
      player.Start(command);
      const std::wstring text = TextIn(languages[place], caption);
      captions.insert(text);
      const HWND dialog = player.user().WaitForWindow(text.c_str());
      for (HWND child = nullptr; (child = FindWindowExW(dialog, child, nullptr, nullptr));) {
        ExpectFits(child);
      }
      player.user().Answer(dialog, IDCANCEL);
    }
  }
  EXPECT_EQ(captions.size(), 2 * languages.size());
}

}  // namespace
}  // namespace velmora::test
