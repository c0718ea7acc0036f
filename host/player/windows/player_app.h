// The player: its windows, its menus and what their commands do.
//
// Thread: everything runs on the user-interface thread.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/player/adding.h"
#include "host/player/bookmark_link.h"
#include "host/player/catalog_link.h"
#include "host/player/player.h"
#include "host/player/preset_bank.h"
#include "host/player/session.h"
#include "host/player/views/playlist_layout.h"
#include "host/player/windows/commands.h"
#include "host/player/windows/equalizer_window.h"
#include "host/player/windows/gdi_text.h"
#include "host/player/windows/main_window.h"
#include "host/player/windows/playlist_window.h"
#include "host/player/windows/window_group.h"

namespace velmora {

struct PlayerOptions {
  std::vector<std::wstring> files;  // to play; none: what played last goes on
  std::wstring device;              // the folder that the catalog looks through
  std::wstring session;             // the file that keeps what the user has set
};

class PlayerApp {
 public:
  PlayerApp(const Library& library, const PlayerOptions& options);
  PlayerApp(const PlayerApp&) = delete;
  PlayerApp& operator=(const PlayerApp&) = delete;

  // Opens the windows and returns when the user leaves: the program's exit code.
  int Run();

  // For the windows.
  Player& player() { return *player_; }
  const Skin& skin() const { return skin_; }
  TextPainter& list_text() { return *list_text_; }
  WindowGroup& windows() { return windows_; }
  int scale() const { return scale_; }
  bool equalizer_open() const { return equalizer_.visible(); }
  bool playlist_open() const { return playlist_.visible(); }
  std::wstring SongText() const;  // of the current track, or of what plays; empty: there is none

  // Carries a command out; also those of the ranges.
  void Do(int command);
  void ChangeVolume(int by);
  void PlayTrack(size_t index);
  void ShowHint(const std::wstring& text) { main_.ShowHint(text); }
  void Refresh();

  // Menus open at a point of the screen.
  void ShowMenu(Point at);
  void ShowPresetMenu(Point at);
  void ShowPlaylistMenu(PlaylistControl button, Point at);
  void ShowEntryMenu(Point at);

  // Skins are put on; other files and folders are added, or replace the list and play.
  void OnDropped(const std::vector<std::wstring>& paths, bool replace);
  // What a second command wants; the result of its message.
  LRESULT OnHandedOver(const COPYDATASTRUCT& data);
  // Messages to the main window that are no window's own: commands, the timer, the library's.
  // False: not known.
  bool OnMessage(UINT message, WPARAM wparam, LPARAM lparam);

 private:
  bool OpenWindows();
  void RestoreWindows(const Session& session);
  void KeepWindows(Session* session) const;
  void Start();
  std::wstring Keep();  // why the settings could not be saved; empty: they were
  void Loop();
  bool DoTransport(int command);
  bool DoList(int command);
  bool DoArrange(int command);
  bool DoEntry(int command);
  bool DoSound(int command);
  bool DoFeatures(int command);
  bool DoView(int command);
  bool DoRange(int command);
  void Open(const std::vector<std::wstring>& paths, bool replace);
  bool GoOnAdding();
  void StopAdding();
  void SaveList();
  void Arrange(const std::vector<size_t>& order);
  void Jump();
  void SeekBy(int seconds);
  bool UseSkin(const std::wstring& path);
  void ChooseSkin(const std::wstring& path);
  void SetScale(int scale);
  void Toggle(SkinWindow& window);
  void About();
  void UpdateTimer();
  bool OnTimer(UINT_PTR timer);
  void ShowNotice();
  void OnDialog(bool open);
  void SwitchLanguage(LANGID language);
  void AddBookmark();
  void SavePreset();
  void DeletePreset(size_t index);

  const Library& library_;
  const PlayerOptions options_;
  PresetBank presets_;
  Skin default_skin_;
  Skin skin_;
  std::wstring skin_path_;  // empty: the default
  std::unique_ptr<GdiText> list_text_;
  int scale_ = 1;
  bool ticking_ = false;
  bool leaving_ = false;
  // Made when the main window is there, and outliving the windows: while one of them is destroyed,
  // another may become active and draw.
  std::optional<Player> player_;
  std::optional<Adding> adding_;
  std::optional<BookmarkLink> bookmarks_;
  std::optional<CatalogLink> catalog_;
  WindowGroup windows_;
  MainWindow main_{*this};
  EqualizerWindow equalizer_{*this};
  PlaylistWindow playlist_{*this};
};

}  // namespace velmora
