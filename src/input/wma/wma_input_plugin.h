// Feature 6. The host's thread calls every operation; the control's audio thread enters through the
// redirected output.
#pragma once

#include "base/files/file_system.h"
#include "base/windows/player_control.h"
#include "input/wma/audio_tap.h"
#include "input/wma/control_host.h"
#include "kelvo/effects_processor.h"
#include "kelvo/wma_input.h"

namespace kelvo {

// Not final: its own changes of state go through whatever table the object has by then.
class WmaInputPlugin : public WmaInput {
 public:
  // `files` is borrowed.
  explicit WmaInputPlugin(FileSystem& files) noexcept : files_(files) {}
  ~WmaInputPlugin() { TearDown(); }

  // To be called once the library is loaded; `effects` is borrowed until ShutDown. False when there
  // can be no player window; true also without a control or without a tap.
  bool Start(HINSTANCE instance, EffectsProcessor& effects) noexcept;
  // To be called before the library is unloaded; harmless when not started.
  void ShutDown(bool process_ends) noexcept;
  // Whether the control was made and accepted its settings. Any thread.
  bool available() const noexcept { return fields_.available != 0; }

  int32_t GetDisplayTitle(wchar_t* title) noexcept override;
  void GetMediaInfo(MediaInfo* info) noexcept override;
  int32_t GetLengthMs() noexcept override { return QueryMs(kPlayerGetDuration); }
  int32_t GetPositionMs(HostWord, HostWord) noexcept override {
    return QueryMs(kPlayerGetPosition);
  }
  uint32_t GetState() noexcept override { return fields_.state; }
  int32_t SeekMs(int32_t milliseconds) noexcept override;
  int32_t Stop() noexcept override;
  int32_t TogglePause() noexcept override;
  int32_t Play() noexcept override;
  int32_t Close(HostWord, HostWord) noexcept override { return Stop(); }
  int32_t Open(const wchar_t* path, uint32_t mode) noexcept override;
  void Destroy(uint32_t flags) noexcept override;
  int32_t GetVisualisation(int16_t* samples) noexcept override { return tap_.Read(samples); }
  int32_t GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album, MediaInfo* info,
                      uint32_t* length_ms, uint32_t* sdk_version, wchar_t* artist,
                      wchar_t* title) noexcept override;
  void SetOwnerWindow(WindowHandle window) noexcept override { fields_.owner_window = window; }

 private:
  void TearDown() noexcept;
  void ChangeState(uint32_t state) noexcept;
  int32_t StopControl() noexcept;
  int32_t QueryMs(PlayerMethod which) noexcept;

  WmaFields fields_;  // first: hosts find them behind the base's
  FileSystem& files_;
  ControlHost host_{fields_};
  AudioTap tap_;
};
static_assert(sizeof(WmaInput) == sizeof(InputPlugin));

}  // namespace kelvo
