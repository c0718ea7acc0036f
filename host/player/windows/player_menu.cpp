// The player's menus.
#include "host/player/settings.h"
#include "host/player/windows/choices.h"
#include "host/player/windows/player_app.h"

namespace velmora {
namespace {

constexpr size_t kMostSkins = kCommandPresetLoad - kCommandSkin - 1;

std::wstring FileName(const std::wstring& path) {
  return path.substr(path.find_last_of(L'\\') + 1);
}

Menu SkinMenu(const std::wstring& current) {
  Menu menu;
  menu.Item(L"Default", kCommandSkin, current.empty());
  const std::vector<std::wstring> skins = FindSkins();
  for (size_t i = 0; i < skins.size() && i < kMostSkins; ++i) {
    menu.Item(AsMenuText(FileName(skins[i])), kCommandSkin + 1 + static_cast<int>(i),
              lstrcmpiW(skins[i].c_str(), current.c_str()) == 0);
  }
  menu.Separator();
  menu.Item(L"Choose an archive...", kCommandSkinFile);
  menu.Item(L"Choose a folder...", kCommandSkinFolder);
  return menu;
}

Menu BassMenu(int strength) {
  Menu menu;
  menu.Item(L"Off", kCommandBass, strength == 0);
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
  if (names.empty()) menu.Item(L"(none)", kCommandNone, false, false);
  return menu;
}

Menu PresetMenu(PresetBank& presets) {
  const std::vector<std::wstring> names = presets.List();
  Menu menu;
  menu.Submenu(L"Load", NamesMenu(names, kCommandPresetLoad, kCommandPresetDelete))
      .Item(L"Save...", kCommandPresetSave)
      .Submenu(L"Delete", NamesMenu(names, kCommandPresetDelete, kCommandRangeEnd));
  return menu;
}

Menu VisualMenu(VisualMode mode) {
  Menu menu;
  menu.Item(L"Spectrum", kCommandVisualSpectrum, mode == VisualMode::kSpectrum);
  menu.Item(L"Oscilloscope", kCommandVisualWave, mode == VisualMode::kWave);
  menu.Item(L"Off", kCommandVisualOff, mode == VisualMode::kOff);
  return menu;
}

}  // namespace

void PlayerApp::ShowMenu(Point at) {
  Menu menu;
  menu.Item(L"Open files...\tL", kCommandOpenFiles)
      .Item(L"Open folder...\tShift+L", kCommandOpenFolder)
      .Separator()
      .Item(L"Catalog...\tAlt+C", kCommandCatalog)
      .Item(L"Add bookmark\tCtrl+B", kCommandBookmarkAdd)
      .Item(L"Bookmarks...\tAlt+B", kCommandBookmarks)
      .Separator()
      .Item(L"Equalizer\tAlt+E", kCommandEqualizerWindow, equalizer_open())
      .Item(L"Playlist\tAlt+P", kCommandPlaylistWindow, playlist_open())
      .Submenu(L"Presets", PresetMenu(presets_))
      .Submenu(L"Bass", BassMenu(player_->equalizer().bass))
      .Separator()
      .Submenu(L"Skins", SkinMenu(skin_path_))
      .Submenu(L"Visualisation", VisualMenu(main_.visual_mode()))
      .Submenu(L"Language", LanguageMenu())
      .Item(L"Remaining time\tCtrl+T", kCommandTimeMode, main_.remaining_time())
      .Item(L"Double size\tCtrl+D", kCommandDoubleSize, scale_ == 2)
      .Separator()
      .Item(L"About...\tF1", kCommandAbout)
      .Item(L"Exit\tAlt+F4", kCommandExit);
  menu.Track(main_.handle(), at);
}

void PlayerApp::ShowPresetMenu(Point at) {
  PresetMenu(presets_).Track(main_.handle(), at);
}

void PlayerApp::ShowPlaylistMenu(PlaylistControl button, Point at) {
  Menu menu;
  switch (button) {
    case PlaylistControl::kAddMenu:
      menu.Item(L"Add files...\tIns", kCommandAddFiles).Item(L"Add folder...", kCommandAddFolder);
      break;
    case PlaylistControl::kRemoveMenu:
      menu.Item(L"Remove selected\tDel", kCommandRemoveSelected)
          .Item(L"Keep only selected", kCommandCropSelected)
          .Item(L"Remove all", kCommandClearList);
      break;
    case PlaylistControl::kSelectMenu:
      menu.Item(L"Select all\tCtrl+A", kCommandSelectAll)
          .Item(L"Select none", kCommandSelectNone)
          .Item(L"Invert selection", kCommandSelectInvert);
      break;
    case PlaylistControl::kMiscMenu:
      menu.Item(L"Catalog...\tAlt+C", kCommandCatalog)
          .Item(L"Bookmarks...\tAlt+B", kCommandBookmarks);
      break;
    case PlaylistControl::kListMenu:
      menu.Item(L"Open files...\tL", kCommandOpenFiles).Item(L"New list", kCommandClearList);
      break;
    default:
      return;
  }
  menu.Track(main_.handle(), at);
}

}  // namespace velmora
