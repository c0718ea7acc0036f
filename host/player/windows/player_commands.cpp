// What the commands do.
#include <algorithm>

#include "host/player/settings.h"
#include "host/player/windows/choices.h"
#include "host/player/windows/player_app.h"
#include "host/system.h"
#include "host/texts.h"

namespace velmora {
namespace {

constexpr int kSeekSeconds = 5;
constexpr int kVolumeStep = 4;

}  // namespace

void PlayerApp::Do(int command) {
  if (!IsWindowEnabled(main_.handle())) return;  // a dialog is open: it is to be answered first
  DoTransport(command) || DoList(command) || DoArrange(command) || DoEntry(command) ||
      DoSound(command) || DoFeatures(command) || DoView(command) || DoRange(command);
  if (!leaving_) Refresh();
}

bool PlayerApp::DoTransport(int command) {
  switch (command) {
    case kCommandPrevious:
      player_->Previous();
      return true;
    case kCommandPlay:
      player_->Play();
      return true;
    case kCommandPause:
      player_->TogglePause();
      return true;
    case kCommandPlayOrPause:
      if (player_->status().state == PlayState::kStopped) {
        player_->Play();
      } else {
        player_->TogglePause();
      }
      return true;
    case kCommandStop:
      player_->Stop();
      return true;
    case kCommandNext:
      player_->Next();
      return true;
    case kCommandBack5Seconds:
      SeekBy(-kSeekSeconds);
      return true;
    case kCommandForward5Seconds:
      SeekBy(kSeekSeconds);
      return true;
    case kCommandVolumeUp:
      ChangeVolume(kVolumeStep);
      return true;
    case kCommandVolumeDown:
      ChangeVolume(-kVolumeStep);
      return true;
    case kCommandShuffle:
      player_->SetShuffle(!player_->status().shuffle);
      return true;
    case kCommandRepeat:
      player_->SetRepeat(!player_->status().repeat);
      return true;
    default:
      return false;
  }
}

bool PlayerApp::DoList(int command) {
  const HWND parent = main_.handle();
  switch (command) {
    case kCommandOpenFiles:
      Open(AskForMedia(parent), true);
      return true;
    case kCommandAddFiles:
      Open(AskForMedia(parent), false);
      return true;
    case kCommandOpenFolder:
    case kCommandAddFolder: {
      const std::wstring folder = AskForFolder(parent, Text(TEXT_MUSIC_FOLDER));
      if (!folder.empty()) Open({folder}, command == kCommandOpenFolder);
      return true;
    }
    case kCommandClearList:
      player_->Clear();
      return true;
    case kCommandRemoveSelected:
      playlist_.RemoveSelected();
      return true;
    case kCommandCropSelected:
      playlist_.CropToSelected();
      return true;
    case kCommandSelectAll:
      playlist_.SelectAll(true);
      return true;
    case kCommandSelectNone:
      playlist_.SelectAll(false);
      return true;
    case kCommandSelectInvert:
      playlist_.InvertSelection();
      return true;
    default:
      return false;
  }
}

bool PlayerApp::DoSound(int command) {
  EqualizerState sound = player_->equalizer();
  switch (command) {
    case kCommandEqualizerOn:
      sound.on = !sound.on;
      player_->SetEqualizer(sound);
      ShowHint(sound.on ? Text(TEXT_HINT_EQUALIZER_ON) : Text(TEXT_HINT_EQUALIZER_OFF));
      return true;
    case kCommandBassNext:
      Do(kCommandBass + (sound.bass + 1) % (kMaxBass + 1));
      return true;
    case kCommandPresetSave:
      SavePreset();
      return true;
    default:
      return false;
  }
}

bool PlayerApp::DoFeatures(int command) {
  switch (command) {
    case kCommandCatalog:
      if (catalog_->available()) {
        catalog_->Show(GetModuleHandleW(nullptr), main_.handle());
      } else {
        ShowHint(Text(TEXT_HINT_NO_CATALOG));
      }
      return true;
    case kCommandBookmarks:
      bookmarks_->Show(main_.handle());
      return true;
    case kCommandBookmarkAdd:
      AddBookmark();
      return true;
    case kCommandAbout:
      About();
      return true;
    default:
      return false;
  }
}

bool PlayerApp::DoView(int command) {
  switch (command) {
    case kCommandTimeMode:
      main_.SetRemainingTime(!main_.remaining_time());
      return true;
    case kCommandEqualizerWindow:
      Toggle(equalizer_);
      return true;
    case kCommandPlaylistWindow:
      Toggle(playlist_);
      return true;
    case kCommandDoubleSize:
      SetScale(scale_ == 1 ? 2 : 1);
      return true;
    case kCommandShade:
      main_.SetShaded(!main_.shaded());
      return true;
    case kCommandMinimise:
      ShowWindow(main_.handle(), SW_MINIMIZE);
      return true;
    case kCommandVisualNext:
      main_.SetVisualMode(static_cast<VisualMode>((static_cast<int>(main_.visual_mode()) + 1) % 3));
      return true;
    case kCommandVisualOff:
      main_.SetVisualMode(VisualMode::kOff);
      return true;
    case kCommandVisualSpectrum:
      main_.SetVisualMode(VisualMode::kSpectrum);
      return true;
    case kCommandVisualWave:
      main_.SetVisualMode(VisualMode::kWave);
      return true;
    case kCommandSkinFile: {
      const std::wstring path = AskForSkin(main_.handle());
      if (!path.empty()) ChooseSkin(path);
      return true;
    }
    case kCommandSkinFolder: {
      const std::wstring path = AskForFolder(main_.handle(), Text(TEXT_SKIN_FILES_FOLDER));
      if (!path.empty()) ChooseSkin(path);
      return true;
    }
    case kCommandExit:
      leaving_ = true;
      return true;
    default:
      return false;
  }
}

bool PlayerApp::DoRange(int command) {
  int place;
  if (InRange(command, kCommandBass, kCommandLanguage, &place)) {
    EqualizerState sound = player_->equalizer();
    sound.bass = static_cast<uint8_t>(std::min<int>(place, kMaxBass));
    player_->SetEqualizer(sound);
    ShowHint(sound.bass == 0 ? Text(TEXT_HINT_BASS_OFF)
                             : Text(TEXT_HINT_BASS, {std::to_wstring(sound.bass)}));
    return true;
  }
  if (InRange(command, kCommandSkin, kCommandPresetLoad, &place)) {
    const std::vector<std::wstring> skins = FindSkins();
    if (place == 0) ChooseSkin(L"");
    if (place > 0 && static_cast<size_t>(place) <= skins.size()) ChooseSkin(skins[place - 1]);
    return true;
  }
  if (InRange(command, kCommandLanguage, kCommandSkin, &place)) {
    const std::vector<LANGID> languages = FindLanguages();
    if (static_cast<size_t>(place) < languages.size()) SwitchLanguage(languages[place]);
    return true;
  }
  if (InRange(command, kCommandPresetLoad, kCommandPresetDelete, &place)) {
    EqualizerState sound = player_->equalizer();
    if (!presets_.Load(static_cast<size_t>(place), &sound)) return true;
    sound.on = true;  // to be heard
    player_->SetEqualizer(sound);
    return true;
  }
  if (InRange(command, kCommandPresetDelete, kCommandRangeEnd, &place)) {
    DeletePreset(static_cast<size_t>(place));
    return true;
  }
  return false;
}

void PlayerApp::SwitchLanguage(LANGID language) {
  if (!ChooseLanguage(library_, language)) {
    ShowHint(Text(TEXT_HINT_NOT_STORED));
    return;
  }
  UseTexts(language);
  windows_.UpdateTips();
  if (!HasLettersOf(language)) ShowHint(TextIn(kEnglish, TEXT_HINT_NO_GLYPHS));
}

void PlayerApp::AddBookmark() {
  if (player_->status().state == PlayState::kStopped) {
    ShowHint(Text(TEXT_HINT_NOTHING_PLAYS));
  } else if (bookmarks_->AddCurrent()) {
    ShowHint(Text(TEXT_HINT_BOOKMARK_ADDED));
  } else {
    ShowHint(Text(TEXT_HINT_BOOKMARK_NOT_SAVED) + L": " + SystemReason());
  }
}

void PlayerApp::SavePreset() {
  const std::wstring why = presets_.WhyNotSaved();
  if (!why.empty()) {
    ShowHint(Text(TEXT_HINT_NO_PRESET_SAVED, {why}));
  } else if (presets_.Save(player_->equalizer(), main_.handle())) {
    ShowHint(Text(TEXT_HINT_PRESET_SAVED));
  } else {  // also when the user declines: a hint either way, never silence
    ShowHint(Text(TEXT_HINT_PRESET_NOT_SAVED));
  }
}

void PlayerApp::DeletePreset(size_t index) {
  const std::vector<std::wstring> names = presets_.List();
  if (index >= names.size()) return;
  const std::wstring question = Text(TEXT_ASK_DELETE_PRESET, {names[index]});
  if (ShowMessage(main_.handle(), question, Text(TEXT_PRESETS), MB_YESNO | MB_ICONQUESTION) ==
      IDYES) {
    if (!presets_.Delete(index)) ShowHint(Text(TEXT_HINT_NOT_DELETED, {SystemReason()}));
  }
}

void PlayerApp::ChooseSkin(const std::wstring& path) {
  if (!UseSkin(path)) ShowHint(Text(TEXT_HINT_NO_SKIN));
}

void PlayerApp::SeekBy(int seconds) {
  const PlayerStatus status = player_->status();
  if (status.state == PlayState::kStopped) return;
  const int64_t wanted = int64_t{status.position_ms} + seconds * 1000;
  player_->SeekMs(static_cast<uint32_t>(std::max<int64_t>(wanted, 0)));
}

void PlayerApp::ChangeVolume(int by) {
  player_->SetVolume(std::clamp(player_->status().volume + by, 0, 100));
  ShowHint(Text(TEXT_HINT_VOLUME, {std::to_wstring(player_->status().volume)}));
}

void PlayerApp::PlayTrack(size_t index) {
  player_->PlayTrack(index);
  Refresh();
}

}  // namespace velmora
