// One media file at a time, open and playing: the plug-in, what it reads from and what it plays on,
// called in the documented order.
#pragma once

#include <kelvo/effects_processor.h>
#include <kelvo/input_plugin.h>
#include <windows.h>

#include <optional>
#include <string>

#include "host/effects_output.h"
#include "host/input.h"
#include "host/library.h"
#include "host/player/sample_tap.h"
#include "host/wave_output.h"

namespace velmora {

class Playback {
 public:
  // `window` receives the end message; null for nobody.
  Playback(const Library& library, HWND window);
  ~Playback() { Stop(); }
  Playback(const Playback&) = delete;
  Playback& operator=(const Playback&) = delete;

  enum class Start { kPlaying, kNoPlugin, kNotPlayable, kNoOutput };
  // Stops what plays. `start_ms` beyond the end means the start.
  Start Play(std::wstring path, uint32_t start_ms);
  // Stops and closes. No end message of the file comes afterwards. At the end of a file the last of
  // its sound may still be heard, to be followed by another's: Silence ends it, Finish waits for
  // it.
  void Stop();
  void Silence() { device_.Silence(); }
  void Finish() { device_.Finish(); }

  bool is_open() const { return input_.has_value(); }
  // The rest needs an open file.
  const Input& input() const { return *input_; }
  const std::wstring& path() const { return path_; }
  const std::wstring& title() const { return title_; }
  const kelvo::MediaInfo& format() const { return format_; }
  uint32_t length_ms() const { return length_ms_; }
  uint32_t position_ms() const;
  bool paused() const { return plugin().GetState() == kelvo::kPaused; }
  void TogglePause();
  // False at or behind the end.
  bool SeekMs(uint32_t ms);

  // To be asked on the end message: a seek that came while the last buffers were played ends the
  // decoding thread all the same. Then the file goes on where the user wanted it, with true.
  bool ResumeAfterLateSeek();

  // As Player::Samples.
  bool Samples(int16_t (&samples)[kPictureSamples]);
  // Whether any sound of this file has reached the output.
  bool has_sounded();
  // Whether the device refused some of it. (An output of the plug-in's own tells nobody.)
  bool output_failed() { return device_.failed(); }
  // Whether the effects have cut sound off since the last call. (As above.)
  bool TakeClipped() { return effects_ && effects_->TakeClipped(); }

 private:
  kelvo::InputPlugin& plugin() const { return input_->plugin(); }
  bool HasStarted();
  void Describe();
  void Release();
  void DropEndMessages();
  bool OwnSamples(int16_t* samples);

  const Library& library_;
  const HWND window_;
  // From the plug-in to the device: effects, tap, device.
  WaveOutput device_;
  SampleTap tap_{device_};
  std::optional<EffectsOutput> effects_;
  MediaFile reader_;

  std::optional<Input> input_;
  std::wstring path_;
  std::wstring title_;
  kelvo::MediaInfo format_ = {};
  uint32_t length_ms_ = 0;
  uint32_t wanted_ms_ = 0;  // the last seek
  uint32_t rest_ms_ = 0;    // the place while paused
  bool sounded_ = false;
};

}  // namespace velmora
