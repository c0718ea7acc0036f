// The player without a face: the list, what plays, and how it sounds.
//
// Thread: the user-interface thread, which also handles the messages of `window`.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "host/library.h"
#include "host/player/play_order.h"
#include "host/player/playback.h"
#include "host/player/track_list.h"
#include "host/sound_state.h"

namespace velmora {

enum class PlayState { kStopped, kPlaying, kPaused };

// A snapshot for drawing. Cheap: asked about 20 times a second.
struct PlayerStatus {
  PlayState state = PlayState::kStopped;
  uint32_t position_ms = 0;
  uint32_t length_ms = 0;
  std::wstring title;            // display title of the open track, else empty
  uint32_t bit_rate_kbit = 0;    // 0: unknown
  uint32_t sample_rate_khz = 0;  // 0: unknown
  uint32_t channels = 0;         // 0 without a track, 1 or 2
  int volume = 100;              // 0..100
  int balance = 0;               // -100 left .. 100 right
  bool shuffle = false;
  bool repeat = false;
  size_t current = kNoTrack;  // index of the current track
};

class Player {
 public:
  // `window` receives the plug-ins' end message (kMessageEndOfPlayback); call OnEndOfPlayback then.
  // The library outlives the player. Without a sound device it plays in silence.
  Player(const Library& library, HWND window);

  // The list.
  const std::vector<Track>& tracks() const { return list_.tracks(); }
  // Changes whenever the list or the current track changes.
  uint32_t list_version() const { return version_; }
  // How often the list was emptied or replaced.
  uint32_t renewals() const { return renewals_; }
  // Media files, and folders and playlists, in which they are looked for (file_search.h); others
  // are left out. False: nothing to add.
  bool Add(const std::vector<std::wstring>& paths);
  // What a search has found. Returns how many there was room for.
  size_t Append(const std::vector<std::wstring>& files);
  // Without the playing track the music goes on until its end.
  void Clear();
  void Remove(const std::vector<size_t>& indices);
  void Move(size_t from, size_t to);
  // Place i gets the track that was at order[i]; what plays goes on. False: not an order of this
  // list.
  bool Arrange(const std::vector<size_t>& order);
  // Tracks are added with their file names for titles. Asks one file more about itself; false when
  // all are known. To be called when there is time.
  bool LearnNext();

  // Transport.
  void Play();  // resumes when paused, restarts when playing, else plays the current or first track
  // Skips to the next playable track when it cannot be opened; false, and stopped, when none can.
  bool PlayTrack(size_t index, uint32_t start_ms = 0);
  void Choose(size_t index);  // makes it the current one; what plays goes on
  void TogglePause();
  void Stop();
  // While stopped these only choose the track; else what cannot be opened is skipped, each its way.
  void Next();
  void Previous();
  bool SeekMs(uint32_t ms);
  // The next track, by shuffle and repeat; stops after the last.
  void OnEndOfPlayback();
  void SetVolume(int volume);
  void SetBalance(int balance);
  void SetShuffle(bool shuffle) { order_.SetShuffle(shuffle); }
  void SetRepeat(bool repeat) { order_.SetRepeat(repeat); }
  PlayerStatus status() const;
  // There is no sound device.
  bool silent() const { return silent_; }
  // What the user should read about since the last call, as one line: what was passed over and why.
  std::wstring TakeNotice();
  void AddNotice(const std::wstring& text);
  // Path of the open track; empty when stopped.
  std::wstring open_path() const { return playback_.is_open() ? playback_.path() : L""; }

  // Sound. Changes are heard behind what waits in the output.
  const EqualizerState& equalizer() const { return equalizer_; }
  void SetEqualizer(const EqualizerState& state);
  // Whether the effects have cut sound off since the last call; the first time after a change of
  // the effects it is a notice too.
  bool TakeClipped();
  // The newest samples of the first channel, as they are heard; false: nothing new.
  bool Samples(int16_t (&samples)[kPictureSamples]);

 private:
  using Step = size_t (PlayOrder::*)();  // the way on from a track that cannot be opened

  void Changed() { ++version_; }
  void Renewed();
  void ApplyVolume();
  void PassOver(size_t index, Playback::Start failure);
  void SayPassedOver();
  bool PlayFrom(size_t index, uint32_t start_ms, Step onward);
  bool EndedUnheard();

  const Library& library_;
  TrackList list_;
  PlayOrder order_;
  Playback playback_;
  EqualizerState equalizer_;
  int volume_ = 100;
  int balance_ = 0;
  uint32_t version_ = 1;
  uint32_t renewals_ = 0;
  bool silent_ = false;
  bool clipping_said_ = false;
  std::wstring notice_;
  std::wstring passed_over_;  // the first track that was, and why
  size_t passed_over_count_ = 0;
  DWORD started_ = 0;   // tick count at the start of the open track
  size_t unheard_ = 0;  // tracks in a row that ended before anything was heard
};

}  // namespace velmora
