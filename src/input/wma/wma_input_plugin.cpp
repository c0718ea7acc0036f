#include "input/wma/wma_input_plugin.h"

#include "base/memory/heap.h"
#include "base/text/ansi.h"
#include "base/text/format.h"
#include "input/restore_base.h"
#include "input/wma/asf_header.h"
#include "input/wma/output_redirection.h"

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

void ShowWrongSettings(WindowHandle owner, const wchar_t* path) noexcept {
  if (!owner) return;
  wchar_t text[kTextCapacity + 80];
  FormatWide(text, sizeof(text) / sizeof(text[0]),
             L"Please, change regional settings to correctly play file %s", {path});
  MessageBoxW(static_cast<HWND>(owner), text, L"Error", MB_OK);
}

}  // namespace

bool WmaInputPlugin::Start(HINSTANCE instance, EffectsProcessor& effects) noexcept {
  if (!host_.StartUp(instance)) return false;
  InstallOutputTap(GetModuleHandleW(kPlayerModule), GetModuleHandleW(kCoreModule), &effects, &tap_);
  return true;
}

void WmaInputPlugin::ShutDown(bool process_ends) noexcept {
  if (!host_.started()) return;
  // The control's thread may be on its way through the tap: it finds what it needs there until the
  // control is gone.
  if (!process_ends) RestoreOutput(GetModuleHandleW(kPlayerModule));
  host_.ShutDown(process_ends);
  if (!process_ends) ForgetOutputTap();
}

void WmaInputPlugin::TearDown() noexcept {
  ShutDown(false);
  tap_.FreeBuffer();
}

void WmaInputPlugin::Destroy(uint32_t flags) noexcept {
  if ((flags & 1) != 0) {
    HeapDelete(this);
    return;
  }
  TearDown();
  RestoreBaseOperations<WmaInput>(this);
}

int32_t WmaInputPlugin::GetDisplayTitle(wchar_t* title) noexcept {
  return GetFileInfo(fields_.current_file, title, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr);
}

void WmaInputPlugin::GetMediaInfo(MediaInfo* info) noexcept {
  GetFileInfo(fields_.current_file, nullptr, nullptr, info, nullptr, nullptr, nullptr, nullptr);
}

// The host's own table may have another SetState: it sees every change.
void WmaInputPlugin::ChangeState(uint32_t state) noexcept {
  fields_.state = state;
  SetState(state);
}

int32_t WmaInputPlugin::QueryMs(PlayerMethod which) noexcept {
  double seconds = 0;
  IUnknown* const control = fields_.control.get();
  return control && SUCCEEDED(PlayerGetSeconds(control, which, &seconds)) ? ToMs(seconds) : 0;
}

int32_t WmaInputPlugin::SeekMs(int32_t milliseconds) noexcept {
  fields_.pause_ms = milliseconds;
  IUnknown* const control = fields_.control.get();
  return control && SUCCEEDED(PlayerPutPositionSeconds(control, milliseconds * 0.001));
}

int32_t WmaInputPlugin::StopControl() noexcept {
  return fields_.control ? PlayerCommand(fields_.control.get(), kPlayerStop) : 0;
}

int32_t WmaInputPlugin::Stop() noexcept {
  ChangeState(kStopped);
  return StopControl();
}

int32_t WmaInputPlugin::Play() noexcept {
  IUnknown* const control = fields_.control.get();
  const bool playing = control && SUCCEEDED(PlayerCommand(control, kPlayerPlay));
  ChangeState(playing ? kPlaying : kStopped);
  return playing;
}

// Pausing is a stop at a remembered place, resuming a seek and a start.
int32_t WmaInputPlugin::TogglePause() noexcept {
  switch (fields_.state) {
    case kPaused:
      SeekMs(fields_.pause_ms);
      return Play();
    case kPlaying:
      ChangeState(kPaused);
      fields_.pause_ms = GetPositionMs(0, 0);
      return StopControl();
    default:
      return static_cast<int32_t>(fields_.state);
  }
}

int32_t WmaInputPlugin::Open(const wchar_t* path, uint32_t) noexcept {
  ChangeState(kStopped);
  if (!path || WideLength(path) >= kTextCapacity) return 0;
  if (!HasAnsiName(path)) {
    ShowWrongSettings(fields_.owner_window, path);
    return 0;
  }
  if (!GetFileInfo(path, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)) return 0;
  CopyWide(fields_.current_file, kTextCapacity, path);
  if (!fields_.control) return 0;
  const BSTR file = SysAllocString(path);
  const bool opened = file && SUCCEEDED(PlayerOpenFile(fields_.control.get(), file));
  SysFreeString(file);
  return opened;
}

int32_t WmaInputPlugin::GetFileInfo(const wchar_t* path, wchar_t* display_title, wchar_t* album,
                                    MediaInfo* info, uint32_t* length_ms, uint32_t* sdk_version,
                                    wchar_t* artist, wchar_t* title) noexcept {
  AsfInfo asf = {};
  OpenFile<FileReader> file;
  if (path && path[0]) file = files_.OpenRead(path, Share::kRead);
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
