// Feature 6. The host's thread calls every operation; the control's audio thread enters through the
// redirected output.
#pragma once

#include "base/text/wide.h"
#include "input/wma/audio_tap.h"
#include "input/wma/control_host.h"
#include "kelvo/effects_processor.h"
#include "kelvo/wma_input.h"

namespace kelvo {

class WmaPlugin final : public WmaInput, public ControlHost {
 public:
  WmaPlugin() noexcept = default;
  ~WmaPlugin() { TearDown(); }

  // To be called once the library is loaded; `effects` is borrowed until ShutDown. False when there
  // can be no player window; true also without a control or without a tap.
  bool Start(HINSTANCE instance, EffectsProcessor& effects) noexcept;
  // To be called before the library is unloaded, on the same thread; harmless when not started.
  void ShutDown(bool process_ends) noexcept;

  int32_t GetDisplayTitle(wchar_t* title) noexcept override;
  void GetMediaInfo(MediaInfo* info) noexcept override;
  int32_t GetLengthMs() noexcept override;
  int32_t GetPositionMs(HostWord a, HostWord b) noexcept override;
  uint32_t GetState() noexcept override { return playback_; }
  int32_t SeekMs(int32_t milliseconds) noexcept override;
  int32_t Stop() noexcept override;
  int32_t TogglePause() noexcept override;
  int32_t Play() noexcept override;
  int32_t Close(HostWord a, HostWord b) noexcept override;
  int32_t Open(const wchar_t* path, uint32_t mode) noexcept override;
  void Destroy(uint32_t flags) noexcept override;
  int32_t GetVisualisation(int16_t* samples) noexcept override { return tap_.Read(samples); }
  int32_t GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album, MediaInfo* info,
                      uint32_t* length_ms, uint32_t* sdk_version, wchar_t* artist,
                      wchar_t* title) noexcept override;
  void SetOwnerWindow(WindowHandle window) noexcept override { set_owner_window(window); }

 private:
  void TearDown() noexcept;
  int32_t StopControl() noexcept;
  int32_t AskMs(int which) noexcept;

  uint32_t playback_ = kStopped;
  wchar_t path_[kTextCapacity] = {};
  int32_t pause_ms_ = 0;
  AudioTap tap_;
};

}  // namespace kelvo
