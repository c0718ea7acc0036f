// The player's menus.
#include "host/player/settings.h"
#include "host/player/windows/choices.h"
#include "host/player/windows/player_app.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr size_t kMostSkins = kCommandPresetLoad - kCommandSkin - 1;

std::wstring FileName(const std::wstring& path) {
  return path.substr(path.find_last_of(L'\\') + 1);
}

Menu SkinMenu(const std::wstring& current) {
  Menu menu;
  menu.Item(Text(TEXT_SKIN_DEFAULT), kCommandSkin, current.empty());
  const std::vector<std::wstring> skins = FindSkins();
  for (size_t i = 0; i < skins.size() && i < kMostSkins; ++i) {
    menu.Item(AsMenuText(FileName(skins[i])), kCommandSkin + 1 + static_cast<int>(i),
              lstrcmpiW(skins[i].c_str(), current.c_str()) == 0);
  }
  menu.Separator();
  menu.Item(Text(TEXT_SKIN_ARCHIVE), kCommandSkinFile);
  menu.Item(Text(TEXT_SKIN_FOLDER), kCommandSkinFolder);
  return menu;
}

Menu BassMenu(int strength) {
  Menu menu;
  menu.Item(Text(TEXT_OFF), kCommandBass, strength == 0);
  for (int i = 1; i <= kMaxBass; ++i) {
    menu.Item(std::to_wstring(i), kCommandBass + i, strength == i);
  }
  return menu;
}

std::wstring LanguageName(LANGID language) {
  wchar_t name[128] = L"";  // in that language
  GetLocaleInfoW(MAKELCID(language, SORT_DEFAULT), LOCALE_SNATIVELANGUAGENAME, name, 128);
  return name;
}

Menu LanguageMenu() {
  Menu menu;
  const LANGID chosen = ChosenLanguage();
  const std::vector<LANGID> languages = FindLanguages();
  for (size_t i = 0; i < languages.size() && i < kCommandSkin - kCommandLanguage; ++i) {
    menu.Item(LanguageName(languages[i]), kCommandLanguage + static_cast<int>(i),
              languages[i] == chosen);
  }
  return menu;
}

// As many as the range of the commands has room for.
Menu NamesMenu(const std::vector<std::wstring>& names, UserCommand first, UserCommand end) {
  Menu menu;
  const size_t most = static_cast<size_t>(end - first);
  for (size_t i = 0; i < names.size() && i < most; ++i) {
    menu.Item(AsMenuText(names[i]), first + static_cast<int>(i));
  }
  if (names.empty()) menu.Item(Text(TEXT_NONE), kCommandNone, false, false);
  return menu;
}

Menu PresetMenu(PresetBank& presets) {
  const std::vector<std::wstring> names = presets.List();
  Menu menu;
  menu.Submenu(Text(TEXT_PRESET_LOAD), NamesMenu(names, kCommandPresetLoad, kCommandPresetDelete))
      .Item(Text(TEXT_PRESET_SAVE), kCommandPresetSave)
      .Submenu(Text(TEXT_PRESET_DELETE), NamesMenu(names, kCommandPresetDelete, kCommandRangeEnd));
  return menu;
}

Menu SortMenu() {
  Menu menu;
  menu.Item(Text(TEXT_SORT_TITLE), kCommandSortTitle)
      .Item(Text(TEXT_SORT_NAME), kCommandSortName)
      .Item(Text(TEXT_SORT_PATH), kCommandSortPath)
      .Separator()
      .Item(Text(TEXT_SORT_REVERSE), kCommandSortReverse)
      .Item(Text(TEXT_SORT_SHUFFLE), kCommandSortShuffle);
  return menu;
}

Menu VisualMenu(VisualMode mode) {
  Menu menu;
  menu.Item(Text(TEXT_SPECTRUM), kCommandVisualSpectrum, mode == VisualMode::kSpectrum);
  menu.Item(Text(TEXT_OSCILLOSCOPE), kCommandVisualWave, mode == VisualMode::kWave);
  menu.Item(Text(TEXT_OFF), kCommandVisualOff, mode == VisualMode::kOff);
  return menu;
}

}  // namespace

void PlayerApp::ShowMenu(Point at) {
  Menu menu;
  menu.Item(WithKeys(TEXT_OPEN_FILES, L"L"), kCommandOpenFiles)
      .Item(WithKeys(TEXT_OPEN_FOLDER, L"Shift+L"), kCommandOpenFolder)
      .Item(WithKeys(TEXT_JUMP, L"J"), kCommandJump)
      .Separator()
      .Item(WithKeys(TEXT_CATALOG, L"Alt+C"), kCommandCatalog)
      .Item(WithKeys(TEXT_ADD_BOOKMARK, L"Ctrl+B"), kCommandBookmarkAdd)
      .Item(WithKeys(TEXT_BOOKMARKS, L"Alt+B"), kCommandBookmarks)
      .Separator()
      .Item(WithKeys(TEXT_EQUALIZER, L"Alt+E"), kCommandEqualizerWindow, equalizer_open())
      .Item(WithKeys(TEXT_PLAYLIST, L"Alt+P"), kCommandPlaylistWindow, playlist_open())
      .Submenu(Text(TEXT_PRESETS), PresetMenu(presets_))
      .Submenu(Text(TEXT_BASS), BassMenu(player_->equalizer().bass))
      .Separator()
      .Submenu(Text(TEXT_SKINS), SkinMenu(skin_path_))
      .Submenu(Text(TEXT_VISUALISATION), VisualMenu(main_.visual_mode()))
      .Submenu(Text(TEXT_LANGUAGE), LanguageMenu())
      .Item(WithKeys(TEXT_REMAINING_TIME, L"Ctrl+T"), kCommandTimeMode, main_.remaining_time())
      .Item(WithKeys(TEXT_DOUBLE_SIZE, L"Ctrl+D"), kCommandDoubleSize, scale_ == 2)
      .Separator()
      .Item(WithKeys(TEXT_ABOUT, L"F1"), kCommandAbout)
      .Item(WithKeys(TEXT_EXIT, L"Alt+F4"), kCommandExit);
  menu.Track(main_.handle(), at);
}

void PlayerApp::ShowPresetMenu(Point at) {
  PresetMenu(presets_).Track(main_.handle(), at);
}

void PlayerApp::ShowPlaylistMenu(PlaylistControl button, Point at) {
  Menu menu;
  switch (button) {
    case PlaylistControl::kAddMenu:
      menu.Item(WithKeys(TEXT_ADD_FILES, L"Ins"), kCommandAddFiles)
          .Item(Text(TEXT_ADD_FOLDER), kCommandAddFolder);
      break;
    case PlaylistControl::kRemoveMenu:
      menu.Item(WithKeys(TEXT_REMOVE_SELECTED, L"Del"), kCommandRemoveSelected)
          .Item(Text(TEXT_KEEP_SELECTED), kCommandCropSelected)
          .Item(Text(TEXT_REMOVE_ALL), kCommandClearList);
      break;
    case PlaylistControl::kSelectMenu:
      menu.Item(WithKeys(TEXT_SELECT_ALL, L"Ctrl+A"), kCommandSelectAll)
          .Item(Text(TEXT_SELECT_NONE), kCommandSelectNone)
          .Item(Text(TEXT_SELECT_INVERT), kCommandSelectInvert);
      break;
    case PlaylistControl::kMiscMenu:
      menu.Submenu(Text(TEXT_SORT), SortMenu())
          .Item(WithKeys(TEXT_JUMP, L"J"), kCommandJump)
          .Item(WithKeys(TEXT_ENTRY_INFO, L"Alt+3"), kCommandEntryInfo)
          .Separator()
          .Item(WithKeys(TEXT_CATALOG, L"Alt+C"), kCommandCatalog)
          .Item(WithKeys(TEXT_BOOKMARKS, L"Alt+B"), kCommandBookmarks);
      break;
    case PlaylistControl::kListMenu:
      menu.Item(WithKeys(TEXT_OPEN_FILES, L"L"), kCommandOpenFiles)
          .Item(WithKeys(TEXT_SAVE_LIST, L"Ctrl+S"), kCommandSaveList)
          .Item(Text(TEXT_NEW_LIST), kCommandClearList);
      break;
    default:
      return;
  }
  menu.Track(main_.handle(), at);
}

void PlayerApp::ShowEntryMenu(Point at) {
  Menu menu;
  menu.Item(Text(TEXT_ENTRY_PLAY), kCommandEntryPlay)
      .Item(WithKeys(TEXT_ENTRY_INFO, L"Alt+3"), kCommandEntryInfo)
      .Separator()
      .Item(WithKeys(TEXT_REMOVE_SELECTED, L"Del"), kCommandRemoveSelected)
      .Item(Text(TEXT_KEEP_SELECTED), kCommandCropSelected)
      .Separator()
      .Submenu(Text(TEXT_SORT), SortMenu())
      .Item(WithKeys(TEXT_JUMP, L"J"), kCommandJump)
      .Item(WithKeys(TEXT_SAVE_LIST, L"Ctrl+S"), kCommandSaveList);
  menu.Track(main_.handle(), at);
}

}  // namespace velmora
