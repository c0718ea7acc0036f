#include "input/wma/wma_plugin.h"

#include "base/files/file_system.h"
#include "base/memory/heap.h"
#include "base/text/ansi.h"
#include "base/text/format.h"
#include "input/restore_base.h"
#include "input/wma/asf_header.h"
#include "input/wma/output_redirection.h"
#include "input/wma/player_control.h"

namespace kelvo {
namespace {

constexpr wchar_t kCoreModule[] = L"coredll.dll";

int32_t ToMs(double seconds) noexcept {
  const double milliseconds = seconds * 1000.0;
  if (milliseconds >= 2147483647.0) return INT32_MAX;
  if (milliseconds <= -2147483648.0) return INT32_MIN;
  return milliseconds == milliseconds ? static_cast<int32_t>(milliseconds) : 0;  // not a number
}

void CopyOut(wchar_t* destination, const wchar_t* text) noexcept {
  if (destination) CopyWide(destination, kTextCapacity, text);
}

// The control only plays files whose names the system's code page can express.
bool HasAnsiName(const wchar_t* path) noexcept {
  char name[kTextCapacity * 4];
  bool lossy = false;
  WideToAnsi(path, kTextCapacity, name, sizeof(name), &lossy);
  return !lossy;
}

void TellWrongSettings(WindowHandle owner, const wchar_t* path) noexcept {
  if (!owner) return;
  wchar_t text[kTextCapacity + 80];
  FormatWide(text, sizeof(text) / sizeof(text[0]),
             L"Please, change regional settings to correctly play file %s", {path});
  MessageBoxW(static_cast<HWND>(owner), text, L"Error", MB_OK);
}

}  // namespace

bool WmaPlugin::Start(HINSTANCE instance, EffectsProcessor& effects) noexcept {
  if (started() || !StartUp(instance)) return false;
  InstallOutputTap(GetModuleHandleW(kPlayerModule), GetModuleHandleW(kCoreModule), &effects, &tap_);
  return true;
}

void WmaPlugin::ShutDown(bool process_ends) noexcept {
  if (!started()) return;
  if (process_ends) {
    Abandon();
  } else {
    // The control's thread may be on its way through the tap: it finds what it needs there until
    // the control is gone.
    RestoreOutput(GetModuleHandleW(kPlayerModule));
    ControlHost::Close();
    ForgetOutputTap();
  }
  LeaveApartment();
}

void WmaPlugin::TearDown() noexcept {
  ShutDown(false);
  tap_.GiveBuffer();
}

void WmaPlugin::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) {
    HeapDelete(this);
    return;
  }
  TearDown();
  RestoreBaseOperations<WmaInput>(this);
}

int32_t WmaPlugin::GetDisplayTitle(wchar_t* title) noexcept {
  return GetFileInfo(path_, title, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
}

void WmaPlugin::GetMediaInfo(MediaInfo* info) noexcept {
  GetFileInfo(path_, nullptr, nullptr, info, nullptr, nullptr, nullptr, nullptr);
}

int32_t WmaPlugin::AskMs(int which) noexcept {
  double seconds = 0;
  if (!control()) return 0;
  const HRESULT result = PlayerGetSeconds(control(), static_cast<PlayerMethod>(which), &seconds);
  return SUCCEEDED(result) ? ToMs(seconds) : 0;
}

int32_t WmaPlugin::GetLengthMs() noexcept {
  return AskMs(kPlayerGetDuration);
}

int32_t WmaPlugin::GetPositionMs(HostWord, HostWord) noexcept {
  return AskMs(kPlayerGetPosition);
}

int32_t WmaPlugin::SeekMs(int32_t milliseconds) noexcept {
  pause_ms_ = milliseconds;
  return control() && SUCCEEDED(PlayerPutPositionSeconds(control(), milliseconds * 0.001));
}

int32_t WmaPlugin::StopControl() noexcept {
  return control() ? PlayerCommand(control(), kPlayerStop) : 0;
}

int32_t WmaPlugin::Stop() noexcept {
  playback_ = kStopped;
  return StopControl();
}

int32_t WmaPlugin::Close(HostWord, HostWord) noexcept {
  return Stop();
}

int32_t WmaPlugin::Play() noexcept {
  const bool playing = control() && SUCCEEDED(PlayerCommand(control(), kPlayerPlay));
  playback_ = playing ? kPlaying : kStopped;
  return playing;
}

// Pausing is a stop at a remembered place, resuming a seek and a start.
int32_t WmaPlugin::TogglePause() noexcept {
  switch (playback_) {
    case kPaused:
      SeekMs(pause_ms_);
      return Play();
    case kPlaying:
      playback_ = kPaused;
      pause_ms_ = GetPositionMs(0, 0);
      return StopControl();
    default:
      return static_cast<int32_t>(playback_);
  }
}

int32_t WmaPlugin::Open(const wchar_t* path, uint32_t) noexcept {
  playback_ = kStopped;
  if (!path || WideLength(path) >= kTextCapacity) return 0;
  if (!HasAnsiName(path)) {
    TellWrongSettings(owner_window(), path);
    return 0;
  }
  uint32_t sdk_version;
  if (!GetFileInfo(path, nullptr, nullptr, nullptr, nullptr, &sdk_version, nullptr, nullptr)) {
    return 0;
  }
  CopyWide(path_, kTextCapacity, path);
  if (!control()) return 0;
  const BSTR file = SysAllocString(path);
  const bool opened = file && SUCCEEDED(PlayerOpenFile(control(), file));
  SysFreeString(file);
  return opened;
}

int32_t WmaPlugin::GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                               MediaInfo* info, uint32_t* length_ms, uint32_t* sdk_version,
                               wchar_t* artist, wchar_t* title) noexcept {
  AsfInfo asf;
  ClearAsfInfo(&asf);
  OpenFile<FileReader> file;
  if (path && path[0]) file = SystemFiles().OpenRead(path, Share::kRead);
  const bool readable = file && ReadAsfInfo(*file, path, &asf);
  CopyOut(display_title, asf.display_title);
  CopyOut(album, asf.album);
  CopyOut(artist, asf.author);
  CopyOut(title, asf.title);
  if (info) *info = asf.format;
  if (length_ms) *length_ms = asf.length_ms;
  if (sdk_version) *sdk_version = asf.sdk_version;
  return readable;
}

}  // namespace kelvo
